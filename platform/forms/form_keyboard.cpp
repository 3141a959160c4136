#include "platform/forms/controls.h"
#include "platform/forms/form.h"

#include <algorithm>

// The keyboard on a form: what a key does, and the order of the Tab key.
namespace quorvane {

bool Form::TakeKey(Control* control, const act::Key& key) {
    if (onKeyDown && onKeyDown(key)) return true;
    if (control && control->onKeyDown && control->onKeyDown(key)) return true;
    if (key.code == key_code::Tab && (key.shift & ~shift_state::Shift) == 0) return TakeTab(key.shift != 0);
    if (key.shift != 0) return false;
    Button* pressed = nullptr;
    if (key.code == key_code::Enter) {
        const auto* text = dynamic_cast<const TextControl*>(control);
        if (text && text->MultiLine()) return false;
        auto* button = dynamic_cast<Button*>(control);
        pressed = button ? button : defaultButton_;
    } else if (key.code == key_code::Escape) {
        pressed = cancelButton_;
    }
    if (!pressed) return false;
    pressed->Press();
    return true;
}

bool Form::TakeTab(bool backwards) {
    Control* next = NextInTabOrder(backwards);
    if (!next) return false;
    FocusOn(*next);
    auto* text = dynamic_cast<TextBox*>(next);
    if (text && !text->MultiLine()) text->SetSelection(0, static_cast<int>(text->Text().size()));
    return true;
}

namespace {

bool IsTabStop(const Control& control) {
    const auto* option = dynamic_cast<const OptionButton*>(&control);
    if (!option || !control.CanHaveFocus()) return control.CanHaveFocus();
    const OptionButton* ofGroup = nullptr;
    for (const Control* sibling : control.Parent().Children()) {
        const auto* other = dynamic_cast<const OptionButton*>(sibling);
        const bool inGroup = other && other->Group() == option->Group() && other->CanHaveFocus();
        if (inGroup && (!ofGroup || other->Value())) ofGroup = other;
    }
    return ofGroup == option;
}

} // namespace

Control* Form::NextInTabOrder(bool backwards) const {
    std::vector<Control*> stops;
    for (Control* control : Controls())
        if (control == focus_ || IsTabStop(*control)) stops.push_back(control);
    if (stops.empty()) return nullptr;
    const auto here = std::find(stops.begin(), stops.end(), focus_);
    if (here == stops.end()) return backwards ? stops.back() : stops.front();
    const std::size_t place = static_cast<std::size_t>(here - stops.begin());
    return stops[(place + (backwards ? stops.size() - 1 : 1)) % stops.size()];
}

} // namespace quorvane
