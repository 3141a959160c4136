#include "platform/forms/binding.h"

#include "core/numbers.h"
#include "core/run_time_error.h"

#include <algorithm>

namespace quorvane {

void Bindings::Bind(bool& field, CheckBox& control) {
    Add(
        field, [&] { control.SetValue(field); }, [&] { field = control.Value(); });
}

void Bindings::Bind(bool& field, OptionButton& control) {
    Add(
        field, [&] { control.SetValue(field); }, [&] { field = control.Value(); });
}

void Bindings::Bind(std::string& field, TextBox& control) {
    Add(
        field, [&] { control.SetText(field); }, [&] { field = control.Text(); });
}

void Bindings::Bind(std::string& field, RichTextBox& control) {
    Add(
        field, [&] { control.SetText(field); }, [&] { field = control.Text(); });
}

void Bindings::Bind(std::string& field, ComboBox& control) {
    Add(
        field,
        [&] {
            const auto& items = control.Items();
            const bool listed = std::any_of(items.begin(), items.end(),
                                            [&](const Words& item) { return item.Text() == field; });
            if (control.Editable() || listed) {
                control.SetText(field);
            } else {
                control.SetListIndex(-1);
            }
        },
        [&] { field = control.Text(); });
}

void Bindings::Bind(std::int32_t& field, TextBox& control) {
    Add(
        field, [&] { control.SetText(std::to_string(field)); },
        [&] { PassOver([&] { field = ToInteger(LeadingNumber(control.Text())); }); });
}

void Bindings::Bind(double& field, TextBox& control) {
    Add(
        field, [&] { control.SetText(NumberText(field)); }, [&] { field = LeadingNumber(control.Text()); });
}

void Bindings::Bind(std::int32_t& field, ComboBox& control) {
    Add(
        field,
        [&] {
            const bool listed = field >= 0 && field < static_cast<std::int32_t>(control.Items().size());
            control.SetListIndex(listed ? field : -1);
        },
        [&] {
            if (control.ListIndex() >= 0) field = control.ListIndex();
        });
}

void Bindings::Bind(std::int32_t& field, Slider& control) {
    Add(
        field, [&] { control.SetValue(field); }, [&] { field = control.Value(); });
}

void Bindings::Bind(std::int32_t& field, ScrollBar& control) {
    Add(
        field, [&] { control.SetValue(field); }, [&] { field = control.Value(); });
}

void Bindings::Bind(DateTime& field, DatePicker& control) {
    Add(
        field, [&] { PassOver([&] { control.SetValue(field); }); }, [&] { field = control.Value(); });
}

void Bindings::Bind(DateTime& field, MonthView& control) {
    Add(
        field, [&] { PassOver([&] { control.SetValue(field); }); }, [&] { field = control.Value(); });
}

void Bindings::Bind(std::int32_t& field, std::vector<OptionButton*> options, std::int32_t first) {
    const auto fill = [&field, options, first] {
        for (std::size_t i = 0; i < options.size(); ++i) {
            options[i]->SetValue(static_cast<std::int64_t>(i) + first == field);
        }
    };
    const auto apply = [&field, options, first] {
        for (std::size_t i = 0; i < options.size(); ++i) {
            if (options[i]->Value()) field = first + static_cast<std::int32_t>(i);
        }
    };
    Add(field, fill, apply);
}

void Bindings::Fill() const {
    for (const Pair& pair : pairs_)
        pair.fill();
}

void Bindings::Apply() const {
    for (const Pair& pair : pairs_)
        pair.apply();
}

bool Bindings::Binds(const void* field) const {
    return std::any_of(pairs_.begin(), pairs_.end(),
                       [field](const Pair& pair) { return pair.field == field; });
}

} // namespace quorvane
