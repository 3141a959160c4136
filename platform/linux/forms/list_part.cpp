#include "platform/linux/forms/parts_detail.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMouseEvent>
#include <QStyleOptionViewItem>
#include <QTreeView>
#include <algorithm>

namespace quorvane {

namespace {

// The rows of a list view as the toolkit asks for them: what is on the screen is read, and nothing is kept
// but how many there are.
class RowModel final : public QAbstractTableModel {
  public:
    RowModel(ListView& list, PartMaker::Report report, QObject* parent)
        : QAbstractTableModel(parent)
        , list_(list)
        , report_(std::move(report))
        , rowCount_(list.RowCount())
        , columns_(list.Columns())
        , mirrored_(list.OwnerForm().RightToLeft()) {}

    const std::vector<ListView::Column>& Columns() const { return columns_; }
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rowCount_; }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(columns_.size());
    }

    QVariant data(const QModelIndex& index, int role) const override {
        if (detached_ || index.row() >= list_.RowCount()) return {}; // a row that is just going
        const ListView::RowData& row = list_.Rows()[static_cast<std::size_t>(index.row())];
        if (role == Qt::CheckStateRole && index.column() == 0 && list_.CheckBoxes())
            return row.checked ? Qt::Checked : Qt::Unchecked;
        const auto column = static_cast<std::size_t>(index.column());
        if (role != Qt::DisplayRole || column >= row.cells.size()) return {};
        return ToWidgetText(row.cells[column]);
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        const auto column = static_cast<std::size_t>(section);
        if (orientation != Qt::Horizontal || column >= columns_.size()) return {};
        if (role == Qt::TextAlignmentRole) // which the header does not mirror
            return QVariant((mirrored_ ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute |
                            Qt::AlignVCenter);
        return role == Qt::DisplayRole ? ToWidgetText(columns_[column].caption.Text()) : QVariant();
    }
    Qt::ItemFlags flags(const QModelIndex& index) const override {
        const Qt::ItemFlags common = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
        return !detached_ && index.column() == 0 && list_.CheckBoxes() ? common | Qt::ItemIsUserCheckable
                                                                       : common;
    }
    bool setData(const QModelIndex& index, const QVariant& value, int role) override {
        if (role != Qt::CheckStateRole) return false;
        report_(list_, act::Check{value.toInt() == Qt::Checked, index.row()});
        return true;
    }

    void Detach() { detached_ = true; }
    void ShowColumns() {
        const std::vector<ListView::Column>& wanted = list_.Columns();
        if (wanted.size() != columns_.size()) {
            beginResetModel();
            columns_ = wanted;
            endResetModel();
            return;
        }
        columns_ = wanted;
        if (!wanted.empty()) emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    }
    void ShowRows(const RowChange& change) {
        const int changed = std::min(change.removed, change.inserted);
        if (changed > 0) ShowCells(change.first, change.first + changed - 1);
        const int first = change.first + changed;
        if (change.removed > changed) {
            beginRemoveRows({}, first, change.first + change.removed - 1);
            rowCount_ -= change.removed - changed;
            endRemoveRows();
        } else if (change.inserted > changed) {
            beginInsertRows({}, first, change.first + change.inserted - 1);
            rowCount_ += change.inserted - changed;
            endInsertRows();
        }
    }
    void ShowCells(int first, int last) {
        if (first <= last && !columns_.empty())
            emit dataChanged(index(first, 0), index(last, columnCount() - 1));
    }

  private:
    ListView& list_;
    PartMaker::Report report_;
    int rowCount_;
    std::vector<ListView::Column> columns_;
    bool mirrored_;
    bool detached_ = false; // from the list, which may be gone
};

// A click on a row's box ticks it and chooses nothing.
class RowWidget final : public QTreeView {
  public:
    using QTreeView::QTreeView;

  protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override {
        if (event &&
            (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease) &&
            IsOnBox(index, static_cast<const QMouseEvent*>(event)->position().toPoint())) {
            return QItemSelectionModel::NoUpdate;
        }
        return QTreeView::selectionCommand(index, event);
    }

  private:
    bool IsOnBox(const QModelIndex& index, const QPoint& at) const {
        if (!index.isValid() || !(index.flags() & Qt::ItemIsUserCheckable)) return false;
        QStyleOptionViewItem option;
        initViewItemOption(&option);
        option.rect = visualRect(index);
        option.features |= QStyleOptionViewItem::HasCheckIndicator;
        return style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this).contains(at);
    }
};

class ListPart final : public PartOf<ListView, RowWidget> {
  public:
    ListPart(ListView& control, QWidget* parent, const PartMaker::Report& report)
        : PartOf(control, parent)
        , model_(new RowModel(control, report, widget_)) {
        widget_->setModel(model_);
        widget_->setRootIsDecorated(false);
        widget_->setItemsExpandable(false);
        widget_->setUniformRowHeights(true);
        widget_->setAllColumnsShowFocus(true);
        widget_->setSelectionMode(QAbstractItemView::SingleSelection);
        widget_->setSelectionBehavior(QAbstractItemView::SelectRows);
        widget_->setTabKeyNavigation(false);
        widget_->header()->setStretchLastSection(true);
        widget_->header()->setSectionsMovable(false);
    }
    int Chosen() const {
        const QModelIndexList rows = widget_->selectionModel()->selectedRows();
        return rows.empty() ? -1 : rows.front().row();
    }
    // A column that stays as it was keeps the width that the person gave it.
    void ShowItems() override {
        const TwipScale scale = control_.OwnerForm().Host().Scale();
        model_->ShowColumns();
        for (int column = 0; column < model_->columnCount(); ++column) {
            const auto at = static_cast<std::size_t>(column);
            const int width = control_.Columns()[at].width;
            if (at < widths_.size() && widths_[at] == width) continue;
            widget_->setColumnWidth(column, scale.PixelsX(width));
        }
        widths_.clear();
        for (const ListView::Column& column : control_.Columns())
            widths_.push_back(column.width);
        model_->ShowCells(0, model_->rowCount() - 1); // their boxes come and go
    }
    void ShowRows(const RowChange& change) override {
        model_->ShowRows(change);
        ShowChosen(false);
    }
    void ShowValue() override { ShowChosen(true); }
    void Detach() override { model_->Detach(); }

  private:
    void ShowChosen(bool inSight) {
        const int wanted = control_.SelectedRow();
        if (Chosen() == wanted) return;
        QItemSelectionModel& selection = *widget_->selectionModel();
        const QModelIndex row = model_->index(wanted, 0);
        if (!row.isValid()) {
            selection.clear();
            return;
        }
        selection.setCurrentIndex(row, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        if (inSight) widget_->scrollTo(row);
    }

    RowModel* model_;
    std::vector<int> widths_;
};

} // namespace

void PartMaker::Visit(ListView& control) {
    auto made = std::make_unique<ListPart>(control, parent_, report_);
    const ListPart* list = made.get();
    QObject::connect(list->Shown()->selectionModel(), &QItemSelectionModel::selectionChanged, context_,
                     [report = report_, list, &control] { report(control, act::Choose{list->Chosen()}); });
    QObject::connect(list->Shown(), &QTreeView::doubleClicked, context_,
                     [report = report_, &control] { report(control, act::DoubleClick{}); });
    part = std::move(made);
}

} // namespace quorvane
