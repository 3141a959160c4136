#pragma once

#include "platform/forms/controls.h"

#include <array>
#include <concepts>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace quorvane {

// The pairs of a control and a value that can be bound. ShowField puts the value into the control, TakeField
// the control into the value. What one cannot hold leaves the other as it was: an index that is not in the
// list leaves none chosen, a number that does not fit stays. A further pair is one overload of each.
void ShowField(CheckBox& control, bool value);
void TakeField(const CheckBox& control, bool& value);
// A flag of 32 bits: 1 and 0. One that is set keeps its number.
void ShowField(CheckBox& control, std::int32_t value);
void TakeField(const CheckBox& control, std::int32_t& value);
void ShowField(OptionButton& control, bool value);
void TakeField(const OptionButton& control, bool& value);
void ShowField(TextControl& control, const std::string& value);
void TakeField(const TextControl& control, std::string& value);
// A number in a text box, with a point: what does not start with one counts as 0.
void ShowField(TextBox& control, std::int32_t value);
void TakeField(const TextBox& control, std::int32_t& value);
void ShowField(TextBox& control, std::int16_t value);
void TakeField(const TextBox& control, std::int16_t& value);
void ShowField(TextBox& control, float value);
void TakeField(const TextBox& control, float& value);
void ShowField(TextBox& control, double value);
void TakeField(const TextBox& control, double& value);
void ShowField(ComboBox& control, const std::string& value); // its text
void TakeField(const ComboBox& control, std::string& value);
void ShowField(ComboBox& control, std::int32_t value); // the position in its list
void TakeField(const ComboBox& control, std::int32_t& value);
void ShowField(Slider& control, std::int32_t value);
void TakeField(const Slider& control, std::int32_t& value);
void ShowField(ScrollBar& control, std::int32_t value);
void TakeField(const ScrollBar& control, std::int32_t& value);
void ShowField(Button& control, Color value); // its back colour
void TakeField(const Button& control, Color& value);
void ShowField(DatePicker& control, const DateTime& value);
void TakeField(const DatePicker& control, DateTime& value);
void ShowField(MonthView& control, const DateTime& value);
void TakeField(const MonthView& control, DateTime& value);
// The value is `first` and the position of the chosen option.
void ShowField(const std::vector<OptionButton*>& options, std::int32_t first, std::int32_t value);
void TakeField(const std::vector<OptionButton*>& options, std::int32_t first, std::int32_t& value);

template<typename Field, typename Kind>
concept BindableTo = requires(Kind& control, Field& field) {
    ShowField(control, std::as_const(field));
    TakeField(std::as_const(control), field);
};

// The same for the cells of a list view.
std::string CellText(const std::string& value);
std::string CellText(std::int32_t value);
std::string CellText(std::int16_t value);
void TakeCell(const std::string& text, std::string& value);
void TakeCell(const std::string& text, std::int32_t& value);
void TakeCell(const std::string& text, std::int16_t& value);

// One column of a list view: what it shows of an entry.
template<typename Entry>
struct CellBinding {
    std::function<std::string(const Entry&)> show;
    std::function<void(const std::string&, Entry&)> take; // empty: the cell is shown only
};
template<typename Entry, typename Field>
CellBinding<Entry> Cell(Field Entry::*member) {
    return {[member](const Entry& entry) { return CellText(entry.*member); },
            [member](const std::string& text, Entry& entry) { TakeCell(text, entry.*member); }};
}

// The fields of a record that a form edits, each with its control:
//
//   bindings_.Bind(&Settings::PaintCalendar, Check9);
//
// Fill copies a record into the controls, Apply the controls into a record, which may be another one: a
// draft. A control reaches a field at no other time. A pair that does not fit does not compile. The controls
// must outlive the bindings.
template<typename Record>
class Bindings {
  public:
    template<typename Owner, typename Field, typename Kind>
    requires std::derived_from<Record, Owner> && BindableTo<Field, Kind>
    void Bind(Field Owner::*member, Kind& control) {
        Add(
            [member](auto& record) -> auto& { return record.*member; }, control);
    }
    // A field of a record within the record.
    template<typename Owner, typename Inner, typename Field, typename Kind>
    requires std::derived_from<Record, Owner> && BindableTo<Field, Kind>
    void Bind(Inner Owner::*inner, Field Inner::*member, Kind& control) {
        Add(
            [ inner, member ](auto& record) -> auto& { return record.*inner.*member; }, control);
    }
    // A field of one of several records within the record.
    template<typename Owner, typename Inner, std::size_t Count, typename Field, typename Kind>
    requires std::derived_from<Record, Owner> && BindableTo<Field, Kind>
    void Bind(std::array<Inner, Count> Owner::*inners, std::size_t index, Field Inner::*member,
              Kind& control) {
        Add(
            [=](auto& record) -> auto& { return (record.*inners)[index].*member; }, control);
    }
    // A choice among several options.
    template<typename Owner>
    requires std::derived_from<Record, Owner>
    void Bind(std::int32_t Owner::*member, std::vector<OptionButton*> options, std::int32_t first = 0) {
        BindBy(
            member, [=](std::int32_t value) { ShowField(options, first, value); },
            [=](std::int32_t& value) { TakeField(options, first, value); });
    }

    // A conversion that is the form's own: `show` takes the value, `take` changes it.
    template<typename Owner, typename Field, typename Show, typename Take>
    requires std::derived_from<Record, Owner> && std::invocable<Show&, const Field&> &&
        std::invocable<Take&, Field&>
    void BindBy(Field Owner::*member, Show show, Take take) {
        pairs_.push_back({[=](const Record& record) -> const void* { return &(record.*member); },
                          [=](const Record& record) { show(record.*member); },
                          [=](Record& record) { take(record.*member); }});
    }

    // A list of records, counted from 1, and the rows of a list view: a row's box is the flag `checked` of
    // its entry, its columns are the cells. What no cell shows of an entry stays with its row, wherever the
    // row goes; a row that was added begins as an empty entry. The keys of the rows belong to the binding.
    template<typename Owner, typename List, typename Entry, typename Flag>
    requires std::derived_from<Record, Owner>
    void BindRows(List Owner::*list, ListView& view, Flag Entry::*checked,
                  std::vector<CellBinding<Entry>> cells) {
        BindBy(
            list, [=, &view](const List& entries) { ShowRows(view, entries, checked, cells); },
            [=, &view](List& entries) { TakeRows(view, entries, checked, cells); });
    }

    void Fill(const Record& record) const {
        for (const Pair& pair : pairs_)
            pair.show(record);
    }
    void Apply(Record& record) const {
        for (const Pair& pair : pairs_)
            pair.take(record);
    }

    // The bound fields of a record, in the order of their binding: for the check that none is forgotten.
    std::vector<const void*> Fields(const Record& record) const {
        std::vector<const void*> fields;
        for (const Pair& pair : pairs_)
            fields.push_back(pair.field(record));
        return fields;
    }

  private:
    template<typename Access, typename Kind>
    void Add(Access access, Kind& control) {
        pairs_.push_back({[=](const Record& record) -> const void* { return &access(record); },
                          [=, &control](const Record& record) { ShowField(control, access(record)); },
                          [=, &control](Record& record) { TakeField(control, access(record)); }});
    }

    template<typename List, typename Entry, typename Flag>
    static void ShowRows(ListView& view, const List& entries, Flag Entry::*checked,
                         const std::vector<CellBinding<Entry>>& cells) {
        std::vector<ListView::RowData> rows;
        for (const Entry& entry : entries) {
            ListView::RowData& row = rows.emplace_back();
            for (const auto& cell : cells)
                row.cells.push_back(cell.show(entry));
            row.checked = entry.*checked != 0;
            row.key = std::to_string(rows.size());
        }
        view.SetRows(std::move(rows));
    }

    template<typename List, typename Entry, typename Flag>
    static void TakeRows(const ListView& view, List& entries, Flag Entry::*checked,
                         const std::vector<CellBinding<Entry>>& cells) {
        const List before = entries;
        entries.Clear();
        for (const ListView::RowData& row : view.Rows()) {
            std::int32_t number = 0;
            TakeCell(row.key, number);
            Entry& entry = entries.Add(number >= 1 && number <= before.Count() ? before[number] : Entry{});
            for (std::size_t column = 0; column < cells.size() && column < row.cells.size(); ++column) {
                if (cells[column].take) cells[column].take(row.cells[column], entry);
            }
            if ((entry.*checked != 0) != row.checked) entry.*checked = row.checked;
        }
    }

    struct Pair {
        std::function<const void*(const Record&)> field;
        std::function<void(const Record&)> show;
        std::function<void(Record&)> take;
    };
    std::vector<Pair> pairs_;
};

} // namespace quorvane
