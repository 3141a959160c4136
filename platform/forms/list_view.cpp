#include "core/run_time_error.h"
#include "core/utf8.h"
#include "platform/forms/controls.h"

namespace quorvane {

ListView::ListView(Container& parent, std::string name, int index)
    : Control(parent, std::move(name), index) {}

ListView::RowData& ListView::At(int row) {
    if (row < 0 || row >= RowCount()) throw RunTimeError::SubscriptOutOfRange();
    return rows_[static_cast<std::size_t>(row)];
}

void ListView::SetColumns(std::vector<Column> columns) {
    columns_ = std::move(columns);
    ChangedInSize(Aspect::Items);
}

void ListView::SetCheckBoxes(bool shown) {
    if (shown == checkBoxes_) return;
    checkBoxes_ = shown;
    Changed(Aspect::Items);
}

void ListView::SetRows(std::vector<RowData> rows) {
    rows_ = std::move(rows);
    selected_ = -1;
    Changed(Aspect::Items);
}

int ListView::AddRow(RowData row) {
    rows_.push_back(std::move(row));
    Changed(Aspect::Items);
    return RowCount() - 1;
}

void ListView::RemoveRow(int row) {
    At(row);
    rows_.erase(rows_.begin() + row);
    if (selected_ == row) {
        selected_ = -1;
    } else if (selected_ > row) {
        --selected_;
    }
    Changed(Aspect::Items);
}

void ListView::SetCell(int row, int column, std::string text) {
    RowData& data = At(row);
    if (column < 0 || column >= static_cast<int>(columns_.size())) throw RunTimeError::SubscriptOutOfRange();
    const auto at = static_cast<std::size_t>(column);
    if (data.cells.size() <= at) data.cells.resize(at + 1);
    if (data.cells[at] == text) return;
    data.cells[at] = std::move(text);
    Changed(Aspect::Items);
}

void ListView::SetChecked(int row, bool checked) {
    RowData& data = At(row);
    if (data.checked == checked) return;
    data.checked = checked;
    Changed(Aspect::Value);
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

std::string ListView::ValueText() const {
    std::string text = std::to_string(selected_);
    for (const RowData& row : rows_) {
        text += checkBoxes_ ? (row.checked ? " [x] " : " [ ] ") : " ";
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            if (i > 0) text += '|';
            text += Quoted(i < row.cells.size() ? row.cells[i] : std::string());
        }
    }
    return text;
}

bool ListView::Take(const Act& done) {
    if (const auto* choose = std::get_if<act::Choose>(&done)) {
        SelectRow(choose->index);
        return true;
    }
    const auto* check = std::get_if<act::Check>(&done);
    if (!check) return false;
    SetChecked(check->row, check->checked);
    return true;
}

} // namespace quorvane
