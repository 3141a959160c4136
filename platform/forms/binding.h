#pragma once

#include "platform/forms/controls.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quorvane {

// The fields that a form edits, each with its control:
//
//   bindings_.Bind(settings.PaintCalendar, Check9);
//
// Fill copies the fields into the controls, Apply the controls into the fields; a control reaches a field at
// no other time. A pair for which there is no Bind does not compile. Fields and controls must outlive the
// bindings.
class Bindings {
  public:
    void Bind(bool& field, CheckBox& control);
    void Bind(bool& field, OptionButton& control);
    void Bind(std::string& field, TextBox& control);
    void Bind(std::string& field, RichTextBox& control);
    void Bind(std::string& field, ComboBox& control); // its text
    // A number in a text box: what does not start with one counts as 0, what does not fit stays as it was.
    void Bind(std::int32_t& field, TextBox& control);
    void Bind(double& field, TextBox& control);
    void Bind(std::int32_t& field, ComboBox& control); // the position in its list
    void Bind(std::int32_t& field, Slider& control);
    void Bind(std::int32_t& field, ScrollBar& control);
    void Bind(DateTime& field, DatePicker& control);
    void Bind(DateTime& field, MonthView& control);
    // An index or a date that the control cannot show leaves the control without a choice, or as it was.
    // The field is `first` and the position of the chosen option.
    void Bind(std::int32_t& field, std::vector<OptionButton*> options, std::int32_t first = 0);

    template<typename Field, typename Kind>
    void Bind(Field& field, Kind& control) = delete;

    void Fill() const;
    void Apply() const;

    // Whether a field is bound, and how many are: for the check that no setting is forgotten.
    bool Binds(const void* field) const;
    std::size_t Size() const { return pairs_.size(); }

  private:
    template<typename Field>
    void Add(Field& field, std::function<void()> fill, std::function<void()> apply) {
        pairs_.push_back({&field, std::move(fill), std::move(apply)});
    }

    struct Pair {
        const void* field;
        std::function<void()> fill;
        std::function<void()> apply;
    };
    std::vector<Pair> pairs_;
};

} // namespace quorvane
