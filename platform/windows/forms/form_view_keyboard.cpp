#include "platform/windows/base/wide.h"
#include "platform/windows/forms/form_view.h"
#include "platform/windows/forms/keys.h"

#include <algorithm>

// The keyboard on a form: its order of controls, mnemonics, default and cancel buttons.
namespace quorvane {
namespace {

// The letter behind the mark "&", in upper case; 0 for none.
wchar_t MnemonicOf(const std::string& caption) {
    const std::wstring wide = Wide(caption);
    for (std::size_t i = 0; i + 1 < wide.size(); ++i) {
        if (wide[i] != L'&') continue;
        if (wide[++i] != L'&') return static_cast<wchar_t>(towupper(wide[i]));
    }
    return 0;
}

// Letters are the kind's own: they are written, or look for a row.
bool Writes(const Control& control) {
    switch (control.Kind()) {
    case ControlKind::TextBox:
    case ControlKind::RichTextBox:
    case ControlKind::ComboBox:
    case ControlKind::ListView:
    case ControlKind::DatePicker:
        return true;
    default:
        return false;
    }
}

// Not every kind of widget lets the system see the menu key.
bool AsksForMenu(const MSG& message) {
    const bool menuKey = message.message == WM_KEYUP && message.wParam == VK_APPS;
    const bool shiftF10 = message.message == WM_SYSKEYDOWN && message.wParam == VK_F10;
    return menuKey || (shiftF10 && ShiftState() == shift_state::Shift);
}

} // namespace

int ShiftState() {
    const auto down = [](int key) { return GetKeyState(key) < 0; };
    return (down(VK_SHIFT) ? shift_state::Shift : 0) | (down(VK_CONTROL) ? shift_state::Ctrl : 0) |
           (down(VK_MENU) ? shift_state::Alt : 0);
}

bool WindowsFormView::FilterKey(const MSG& message) {
    Widget* widget = WidgetOf(message.hwnd);
    if (message.message == WM_SYSCHAR) return TakeMnemonic(static_cast<wchar_t>(message.wParam));
    if (AsksForMenu(message)) {
        SendMessageW(message.hwnd, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(message.hwnd), -1);
        return true;
    }
    // Where a letter writes nothing it is a mnemonic by itself.
    if (message.message == WM_CHAR && widget && !Writes(widget->Model()))
        return TakeMnemonic(static_cast<wchar_t>(message.wParam));
    if (message.message != WM_KEYDOWN && message.message != WM_SYSKEYDOWN) return false;
    const int code = static_cast<int>(message.wParam);
    const std::shared_ptr<bool> alive = alive_;
    Control* control = widget ? &widget->Model() : nullptr;
    const bool open = control && control->Kind() == ControlKind::ComboBox && widget->Keeps(code);
    if (open) return false;
    if (form_.Report(control, act::Key{code, ShiftState()}) || !*alive) return true;
    if (message.message == WM_SYSKEYDOWN) return false;
    if (control && control->Kind() == ControlKind::OptionButton) {
        if (code == VK_UP || code == VK_LEFT)
            return ChooseNeighbour(static_cast<OptionButton&>(*control), -1);
        if (code == VK_DOWN || code == VK_RIGHT)
            return ChooseNeighbour(static_cast<OptionButton&>(*control), 1);
    }
    return (code == VK_RETURN || code == VK_ESCAPE) && control && !widget->Keeps(code);
}

// The button that has the keyboard is the one that Enter presses; elsewhere it is the form's default button.
void WindowsFormView::FrameDefaultButton(Control& focused) {
    auto* own = dynamic_cast<Button*>(&focused);
    Button* wanted = own ? own : form_.DefaultButton();
    for (Control* control : order_) {
        if (control->Kind() == ControlKind::Button)
            entries_[control].widget->FrameAsDefault(control == wanted);
    }
}

bool WindowsFormView::ChooseNeighbour(OptionButton& option, int step) {
    std::vector<OptionButton*> group;
    for (Control* control : option.Parent().Children()) {
        auto* other = dynamic_cast<OptionButton*>(control);
        if (other && other->Group() == option.Group() && other->CanHaveFocus()) group.push_back(other);
    }
    const auto here = std::find(group.begin(), group.end(), &option) - group.begin();
    const auto count = static_cast<std::ptrdiff_t>(group.size());
    OptionButton& chosen = *group[static_cast<std::size_t>((here + step + count) % count)];
    Focus(chosen);
    Report(chosen, act::Check{true});
    return true;
}

bool WindowsFormView::TakeMnemonic(wchar_t letter) {
    const auto wanted = static_cast<wchar_t>(towupper(letter));
    for (std::size_t i = 0; i < order_.size(); ++i) {
        Control& control = *order_[i];
        if (!control.IsReachable() || !control.HasPlace()) continue;
        if (auto* tabs = dynamic_cast<TabStrip*>(&control)) {
            for (std::size_t tab = 0; tab < tabs->Tabs().size(); ++tab) {
                if (MnemonicOf(tabs->Tabs()[tab].Text()) != wanted) continue;
                Report(control, act::Choose{static_cast<int>(tab)});
                return true;
            }
        }
        if (MnemonicOf(control.Caption()) != wanted) continue;
        if (control.TakesFocus()) {
            Activate(control);
            return true;
        }
        const auto leadsTo = std::find_if(order_.begin() + static_cast<std::ptrdiff_t>(i) + 1, order_.end(),
                                          [](const Control* next) { return next->CanHaveFocus(); });
        if (leadsTo == order_.end()) return false;
        Focus(**leadsTo);
        return true;
    }
    return false;
}

// What a mnemonic does to a control of its own.
void WindowsFormView::Activate(Control& control) {
    const std::shared_ptr<bool> alive = alive_;
    Focus(control);
    if (!*alive) return;
    if (auto* box = dynamic_cast<CheckBox*>(&control)) {
        Report(control, act::Check{!box->Value()});
    } else if (dynamic_cast<OptionButton*>(&control)) {
        Report(control, act::Check{true});
    } else if (dynamic_cast<Button*>(&control)) {
        Report(control, act::Click{});
    }
}

} // namespace quorvane
