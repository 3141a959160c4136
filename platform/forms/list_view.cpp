#include "core/run_time_error.h"
#include "core/utf8.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"

namespace quorvane {

ListView::ListView(Container& parent, std::string name, int index)
    : Control(parent, std::move(name), index) {}

ListView::RowData& ListView::At(int row) {
    if (row < 0 || row >= RowCount()) throw RunTimeError::SubscriptOutOfRange();
    return rows_[static_cast<std::size_t>(row)];
}

void ListView::RowsChanged(int first, int removed, int inserted) {
    if (FormView* view = OwnerForm().View()) view->UpdateRows(*this, {first, removed, inserted});
}

void ListView::SetColumns(std::vector<Column> columns) {
    for (Column& column : columns)
        column.caption = Localised(std::move(column.caption));
    if (columns == columns_) return;
    columns_ = std::move(columns);
    ChangedInSize(Aspect::Items);
}

void ListView::Localise(const LocaleStrings& words) {
    Control::Localise(words);
    bool changed = false;
    for (Column& column : columns_)
        changed = column.caption.Localise(words) || changed;
    if (changed) Changed(Aspect::Items);
}

void ListView::SetCheckBoxes(bool shown) {
    if (shown == checkBoxes_) return;
    checkBoxes_ = shown;
    Changed(Aspect::Items);
}

void ListView::SetRows(std::vector<RowData> rows) {
    const int before = RowCount();
    rows_ = std::move(rows);
    selected_ = -1;
    RowsChanged(0, before, RowCount());
}

int ListView::AddRow(RowData row) {
    InsertRow(RowCount(), std::move(row));
    return RowCount() - 1;
}

void ListView::InsertRow(int row, RowData data) {
    if (row < 0 || row > RowCount()) throw RunTimeError::SubscriptOutOfRange();
    rows_.insert(rows_.begin() + row, std::move(data));
    if (selected_ >= row) ++selected_;
    RowsChanged(row, 0, 1);
}

void ListView::RemoveRow(int row) {
    At(row);
    rows_.erase(rows_.begin() + row);
    if (selected_ == row) {
        selected_ = -1;
    } else if (selected_ > row) {
        --selected_;
    }
    RowsChanged(row, 1, 0);
}

void ListView::SetCell(int row, int column, std::string text) {
    RowData& data = At(row);
    if (column < 0 || column >= static_cast<int>(columns_.size())) throw RunTimeError::SubscriptOutOfRange();
    const auto at = static_cast<std::size_t>(column);
    if (data.cells.size() <= at) data.cells.resize(at + 1);
    if (data.cells[at] == text) return;
    data.cells[at] = std::move(text);
    RowsChanged(row, 1, 1);
}

void ListView::SetChecked(int row, bool checked) {
    RowData& data = At(row);
    if (data.checked == checked) return;
    data.checked = checked;
    RowsChanged(row, 1, 1);
    if (onItemCheck) {
        const auto handler = onItemCheck;
        handler(row);
    }
}

void ListView::SelectRow(int row) {
    if (row != -1) At(row);
    if (row == selected_) return;
    selected_ = row;
    Changed(Aspect::Value);
    Raise(onItemClick);
}

std::string ListView::RowText(int row) const {
    const RowData& data = rows_[static_cast<std::size_t>(row)];
    std::string text = checkBoxes_ ? (data.checked ? " [x] " : " [ ] ") : " ";
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (i > 0) text += '|';
        text += Quoted(i < data.cells.size() ? data.cells[i] : std::string());
    }
    return text;
}

std::string ListView::ValueText() const {
    std::string text = std::to_string(selected_);
    for (int row = 0; row < RowCount(); ++row)
        text += RowText(row);
    return text;
}

bool ListView::Take(const Act& done) {
    if (const auto* choose = std::get_if<act::Choose>(&done)) {
        if (choose->index >= 0) {
            SelectRow(choose->index);
        } else {
            Changed(Aspect::Value); // a person who points beside the rows chooses no other
        }
        return true;
    }
    const auto* check = std::get_if<act::Check>(&done);
    if (!check) return false;
    SetChecked(check->row, check->checked);
    return true;
}

} // namespace quorvane
