#include "platform/forms/binding.h"

#include "core/numbers.h"
#include "core/run_time_error.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quorvane {
namespace {

// The number at the start of a text, where it fits; else `value` stays.
template<typename Whole>
void TakeWhole(const std::string& text, Whole& value) {
    PassOver([&] {
        const std::int32_t number = ToInteger(LeadingNumber(text));
        if (number >= std::numeric_limits<Whole>::min() && number <= std::numeric_limits<Whole>::max())
            value = static_cast<Whole>(number);
    });
}

} // namespace

void ShowField(CheckBox& control, bool value) {
    control.SetValue(value);
}
void TakeField(const CheckBox& control, bool& value) {
    value = control.Value();
}

void ShowField(CheckBox& control, std::int32_t value) {
    control.SetValue(value != 0);
}
void TakeField(const CheckBox& control, std::int32_t& value) {
    if (control.Value() != (value != 0)) value = control.Value();
}

void ShowField(OptionButton& control, bool value) {
    control.SetValue(value);
}
void TakeField(const OptionButton& control, bool& value) {
    value = control.Value();
}

void ShowField(TextControl& control, const std::string& value) {
    control.SetText(value);
}
void TakeField(const TextControl& control, std::string& value) {
    value = control.Text();
}

void ShowField(TextBox& control, std::int32_t value) {
    control.SetText(CellText(value));
}
void TakeField(const TextBox& control, std::int32_t& value) {
    TakeWhole(control.Text(), value);
}

void ShowField(TextBox& control, std::int16_t value) {
    control.SetText(CellText(value));
}
void TakeField(const TextBox& control, std::int16_t& value) {
    TakeWhole(control.Text(), value);
}

void ShowField(TextBox& control, float value) {
    control.SetText(LocaleNumberText(value, "."));
}
void TakeField(const TextBox& control, float& value) {
    if (control.Text() == LocaleNumberText(value, ".")) return; // it has more digits than are shown
    const double number = LeadingNumber(control.Text());
    if (std::abs(number) <= std::numeric_limits<float>::max()) value = static_cast<float>(number);
}

void ShowField(TextBox& control, double value) {
    control.SetText(NumberText(value));
}
void TakeField(const TextBox& control, double& value) {
    if (control.Text() != NumberText(value)) value = LeadingNumber(control.Text());
}

void ShowField(ComboBox& control, const std::string& value) {
    const auto& items = control.Items();
    const bool listed =
        std::any_of(items.begin(), items.end(), [&](const Words& item) { return item.Text() == value; });
    if (control.Editable() || listed) {
        control.SetText(value);
    } else {
        control.SetListIndex(-1);
    }
}
void TakeField(const ComboBox& control, std::string& value) {
    if (control.Editable() || control.ListIndex() >= 0) value = control.Text();
}

void ShowField(ComboBox& control, std::int32_t value) {
    const bool listed = value >= 0 && value < static_cast<std::int32_t>(control.Items().size());
    control.SetListIndex(listed ? value : -1);
}
void TakeField(const ComboBox& control, std::int32_t& value) {
    if (control.ListIndex() >= 0) value = control.ListIndex();
}

void ShowField(Slider& control, std::int32_t value) {
    control.SetValue(value);
}
void TakeField(const Slider& control, std::int32_t& value) {
    value = control.Value();
}

void ShowField(ScrollBar& control, std::int32_t value) {
    control.SetValue(value);
}
void TakeField(const ScrollBar& control, std::int32_t& value) {
    value = control.Value();
}

void ShowField(Button& control, Color value) {
    control.SetBackColor(value);
}
void TakeField(const Button& control, Color& value) {
    if (control.BackColor()) value = *control.BackColor();
}

void ShowField(DatePicker& control, const DateTime& value) {
    PassOver([&] { control.SetValue(value); });
}
void TakeField(const DatePicker& control, DateTime& value) {
    value = control.Value();
}

void ShowField(MonthView& control, const DateTime& value) {
    PassOver([&] { control.SetValue(value); });
}
void TakeField(const MonthView& control, DateTime& value) {
    value = control.Value();
}

void ShowField(const std::vector<OptionButton*>& options, std::int32_t first, std::int32_t value) {
    for (std::size_t i = 0; i < options.size(); ++i)
        options[i]->SetValue(static_cast<std::int64_t>(i) + first == value);
}
void TakeField(const std::vector<OptionButton*>& options, std::int32_t first, std::int32_t& value) {
    for (std::size_t i = 0; i < options.size(); ++i)
        if (options[i]->Value()) value = first + static_cast<std::int32_t>(i);
}

std::string CellText(const std::string& value) {
    return value;
}
std::string CellText(std::int32_t value) {
    return std::to_string(value);
}
std::string CellText(std::int16_t value) {
    return std::to_string(value);
}
void TakeCell(const std::string& text, std::string& value) {
    value = text;
}
void TakeCell(const std::string& text, std::int32_t& value) {
    TakeWhole(text, value);
}
void TakeCell(const std::string& text, std::int16_t& value) {
    TakeWhole(text, value);
}

} // namespace quorvane
