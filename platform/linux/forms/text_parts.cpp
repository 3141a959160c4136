#include "platform/linux/forms/parts_detail.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTextEdit>
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
        for (const Words& item : control_.Items())
            widget_->addItem(ToWidgetText(item.Text()));
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

} // namespace quorvane
