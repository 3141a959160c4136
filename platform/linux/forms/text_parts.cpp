#include "platform/linux/forms/parts_detail.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTextEdit>
#include <QTreeWidget>
#include <cstdlib>

namespace quorvane {

namespace {

class LinePart final : public PartOf<TextBox, QLineEdit> {
  public:
    using PartOf::PartOf;
    void ShowValue() override {
        const QString text = ToWidgetText(control_.Text());
        if (widget_->text() != text) widget_->setText(text);
        const int start = ToWidgetPosition(control_.Text(), control_.SelectionStart());
        const int end =
            ToWidgetPosition(control_.Text(), control_.SelectionStart() + control_.SelectionLength());
        if (start == end) {
            widget_->setCursorPosition(start);
        } else {
            widget_->setSelection(start, end - start);
        }
    }
    void ShowState() override { widget_->setReadOnly(control_.ReadOnly()); }
};

// Text boxes of several lines.
template<typename Kind, typename Shown>
class PagePart final : public PartOf<Kind, Shown> {
  public:
    PagePart(Kind& control, QWidget* parent)
        : PartOf<Kind, Shown>(control, parent) {
        this->widget_->setTabChangesFocus(true);
    }
    void ShowValue() override {
        const std::string& text = this->control_.Text();
        if (FromWidgetText(this->widget_->toPlainText()) != text)
            this->widget_->setPlainText(ToWidgetText(text));
        const int start = this->control_.SelectionStart();
        QTextCursor cursor = this->widget_->textCursor();
        cursor.setPosition(ToWidgetPosition(text, start));
        cursor.setPosition(ToWidgetPosition(text, start + this->control_.SelectionLength()),
                           QTextCursor::KeepAnchor);
        this->widget_->setTextCursor(cursor);
    }
    void ShowState() override { this->widget_->setReadOnly(this->control_.ReadOnly()); }
};

// Caret and length of a selection whose ends are widget positions.
struct Selection {
    int start = 0;
    int length = 0;
};
Selection SelectionOf(const QString& text, int anchor, int position) {
    const int start = FromWidgetPosition(text, std::min(anchor, position));
    return {start, FromWidgetPosition(text, std::max(anchor, position)) - start};
}

template<typename Shown>
void ReportPage(Shown* widget, QObject* context, const PartMaker::Report& report, TextControl& control) {
    const auto selected = [widget] {
        const QTextCursor cursor = widget->textCursor();
        return SelectionOf(widget->toPlainText(), cursor.anchor(), cursor.position());
    };
    QObject::connect(widget, &Shown::textChanged, context, [report, widget, selected, &control] {
        std::string text = FromWidgetText(widget->toPlainText());
        if (text == control.Text()) return; // the look changed
        const Selection now = selected();
        report(control, act::Type{std::move(text), now.start, now.length});
    });
    QObject::connect(widget, &Shown::selectionChanged, context, [report, selected, &control] {
        const Selection now = selected();
        report(control, act::Select{now.start, now.length});
    });
    QObject::connect(widget, &Shown::cursorPositionChanged, context, [report, widget, selected, &control] {
        if (FromWidgetText(widget->toPlainText()) != control.Text()) return; // textChanged will tell
        const Selection now = selected();
        report(control, act::Select{now.start, now.length});
    });
}

class ComboPart final : public PartOf<ComboBox, QComboBox> {
  public:
    ComboPart(ComboBox& control, QWidget* parent)
        : PartOf(control, parent) {
        widget_->setEditable(control.Editable());
        if (!control.Editable()) return;
        widget_->setInsertPolicy(QComboBox::NoInsert);
        widget_->setCompleter(nullptr);
    }
    void ShowItems() override {
        widget_->clear();
        for (const std::string& item : control_.Items())
            widget_->addItem(ToWidgetText(item));
        ShowValue();
    }
    void ShowValue() override {
        QLineEdit* line = widget_->lineEdit();
        const int caret = line ? line->cursorPosition() : 0;
        const bool atEnd = line && caret == line->text().size();
        if (widget_->currentIndex() != control_.ListIndex()) widget_->setCurrentIndex(control_.ListIndex());
        if (!line) return;
        const QString text = ToWidgetText(control_.Text());
        if (line->text() == text) return;
        line->setText(text);
        if (!atEnd) line->setCursorPosition(std::min(caret, static_cast<int>(text.size())));
    }
};

class ListPart final : public PartOf<ListView, QTreeWidget> {
  public:
    ListPart(ListView& control, QWidget* parent)
        : PartOf(control, parent) {
        widget_->setRootIsDecorated(false);
        widget_->setUniformRowHeights(true);
        widget_->setAllColumnsShowFocus(true);
        widget_->setSelectionBehavior(QAbstractItemView::SelectRows);
        widget_->setTabKeyNavigation(false);
        widget_->header()->setStretchLastSection(true);
        widget_->header()->setSectionsMovable(false);
    }
    void ShowItems() override {
        const TwipScale scale = control_.OwnerForm().Host().Scale();
        const auto& columns = control_.Columns();
        if (widget_->columnCount() != static_cast<int>(columns.size()) || columns != shownColumns_) {
            shownColumns_ = columns;
            widget_->setColumnCount(static_cast<int>(columns.size()));
            for (std::size_t i = 0; i < columns.size(); ++i) {
                widget_->headerItem()->setText(static_cast<int>(i), ToWidgetText(columns[i].caption));
                widget_->setColumnWidth(static_cast<int>(i), scale.PixelsX(columns[i].width));
            }
        }
        while (widget_->topLevelItemCount() > control_.RowCount()) {
            delete widget_->takeTopLevelItem(widget_->topLevelItemCount() - 1);
        }
        while (widget_->topLevelItemCount() < control_.RowCount()) {
            widget_->addTopLevelItem(new QTreeWidgetItem);
        }
        for (int row = 0; row < control_.RowCount(); ++row)
            ShowCells(row);
        ShowValue();
    }
    void ShowValue() override {
        for (int row = 0; row < control_.RowCount(); ++row)
            ShowCheck(row);
        const int selected = control_.SelectedRow();
        if (widget_->indexOfTopLevelItem(widget_->currentItem()) == selected) return;
        widget_->setCurrentItem(selected < 0 ? nullptr : widget_->topLevelItem(selected));
        if (selected < 0) widget_->clearSelection();
    }

  private:
    void ShowCells(int row) {
        QTreeWidgetItem* item = widget_->topLevelItem(row);
        const auto& cells = control_.Rows()[static_cast<std::size_t>(row)].cells;
        for (std::size_t i = 0; i < control_.Columns().size(); ++i) {
            const QString text = i < cells.size() ? ToWidgetText(cells[i]) : QString();
            const int column = static_cast<int>(i);
            if (item->text(column) != text) item->setText(column, text);
        }
    }
    void ShowCheck(int row) {
        QTreeWidgetItem* item = widget_->topLevelItem(row);
        if (!control_.CheckBoxes()) {
            if (item->data(0, Qt::CheckStateRole).isValid()) item->setData(0, Qt::CheckStateRole, QVariant());
            return;
        }
        const bool checked = control_.Rows()[static_cast<std::size_t>(row)].checked;
        const Qt::CheckState state = checked ? Qt::Checked : Qt::Unchecked;
        if (!item->data(0, Qt::CheckStateRole).isValid() || item->checkState(0) != state)
            item->setCheckState(0, state);
    }

    std::vector<ListView::Column> shownColumns_;
};

} // namespace

void PartMaker::Visit(TextBox& control) {
    if (control.MultiLine()) {
        auto page = std::make_unique<PagePart<TextBox, QPlainTextEdit>>(control, parent_);
        ReportPage(page->Shown(), context_, report_, control);
        part = std::move(page);
        return;
    }
    auto made = std::make_unique<LinePart>(control, parent_);
    QLineEdit* widget = made->Shown();
    const auto selected = [widget] {
        const int start = widget->hasSelectedText() ? widget->selectionStart() : widget->cursorPosition();
        return SelectionOf(widget->text(), start, start + widget->selectionLength());
    };
    QObject::connect(widget, &QLineEdit::textEdited, context_,
                     [report = report_, selected, &control](const QString& text) {
                         const Selection now = selected();
                         report(control, act::Type{FromWidgetText(text), now.start, now.length});
                     });
    const auto tellSelection = [report = report_, widget, selected, &control] {
        if (FromWidgetText(widget->text()) != control.Text()) return; // textEdited will tell
        const Selection now = selected();
        report(control, act::Select{now.start, now.length});
    };
    QObject::connect(widget, &QLineEdit::selectionChanged, context_, tellSelection);
    QObject::connect(widget, &QLineEdit::cursorPositionChanged, context_, tellSelection);
    part = std::move(made);
}

void PartMaker::Visit(RichTextBox& control) {
    auto made = std::make_unique<PagePart<RichTextBox, QTextEdit>>(control, parent_);
    made->Shown()->setAcceptRichText(false);
    ReportPage(made->Shown(), context_, report_, control);
    part = std::move(made);
}

void PartMaker::Visit(ComboBox& control) {
    auto made = std::make_unique<ComboPart>(control, parent_);
    QComboBox* widget = made->Shown();
    QObject::connect(widget, &QComboBox::activated, context_,
                     [report = report_, &control](int index) { report(control, act::Choose{index}); });
    if (QLineEdit* line = widget->lineEdit()) {
        QObject::connect(
            line, &QLineEdit::textEdited, context_, [report = report_, line, &control](const QString& text) {
                report(control,
                       act::Type{FromWidgetText(text), FromWidgetPosition(text, line->cursorPosition()), 0});
            });
    }
    part = std::move(made);
}

void PartMaker::Visit(ListView& control) {
    auto made = std::make_unique<ListPart>(control, parent_);
    QTreeWidget* widget = made->Shown();
    QObject::connect(widget, &QTreeWidget::currentItemChanged, context_,
                     [report = report_, widget, &control](QTreeWidgetItem* item) {
                         report(control, act::Choose{widget->indexOfTopLevelItem(item)});
                     });
    QObject::connect(widget, &QTreeWidget::itemChanged, context_,
                     [report = report_, widget, &control](QTreeWidgetItem* item, int column) {
                         if (column != 0 || !control.CheckBoxes()) return;
                         report(control, act::Check{item->checkState(0) == Qt::Checked,
                                                    widget->indexOfTopLevelItem(item)});
                     });
    QObject::connect(widget, &QTreeWidget::itemDoubleClicked, context_,
                     [report = report_, &control] { report(control, act::DoubleClick{}); });
    part = std::move(made);
}

} // namespace quorvane
