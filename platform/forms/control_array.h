#pragma once

#include "core/run_time_error.h"
#include "platform/forms/controls.h"

#include <concepts>
#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace quorvane {

template<typename Kind>
concept Captioned = std::constructible_from<Kind, Container&, std::string, Words, int>;

// Controls of one kind and one name, told apart by their index: a member of the form's class, as a control
// is.
//
//     ControlArray<OptionButton> Option1{Frame1, "Option1", {{"First", 140}, {"Second", 141}}};
//     ControlArray<TextBox> Text17{*this, "Text17", 4};
//
// Controls that stand in several containers, or whose indices leave gaps, are added one by one.
template<typename Kind>
class ControlArray {
  public:
    explicit ControlArray(std::string name)
        : name_(std::move(name)) {}
    // `count` controls, from the index `first` on.
    ControlArray(Container& parent, std::string name, int count, int first = 0)
        : name_(std::move(name)) {
        for (int i = 0; i < count; ++i)
            Add(parent, first + i);
    }
    // A control for each caption.
    ControlArray(Container& parent, std::string name, std::vector<Words> captions,
                 int first = 0) requires Captioned<Kind> : name_(std::move(name)) {
        for (Words& caption : captions)
            Add(parent, first++, std::move(caption));
    }

    // `more` is what the kind's own constructor takes behind the index.
    template<typename... More>
    Kind& Add(Container& parent, int index, Words caption, More&&... more) requires Captioned<Kind> {
        return controls_.emplace_back(parent, name_, std::move(caption), index, std::forward<More>(more)...);
    }
    template<typename... More>
    Kind& Add(Container& parent, int index, More&&... more) requires(!Captioned<Kind>) {
        return controls_.emplace_back(parent, name_, index, std::forward<More>(more)...);
    }
    Kind& Add(Container& parent, int index) requires Captioned<Kind> { return Add(parent, index, Words()); }

    // Throws SubscriptOutOfRange for an index that no control has.
    Kind& operator[](int index) {
        for (Kind& control : controls_) {
            if (control.Index() == index) return control;
        }
        throw RunTimeError::SubscriptOutOfRange();
    }
    int Count() const { return static_cast<int>(controls_.size()); }
    // In the order in which they were added.
    auto begin() { return controls_.begin(); }
    auto end() { return controls_.end(); }
    // The controls as the pieces of a layout.
    std::vector<LayoutItem> Pieces() { return {controls_.begin(), controls_.end()}; }

  private:
    std::string name_;
    std::deque<Kind> controls_; // which stay where they are
};

} // namespace quorvane
