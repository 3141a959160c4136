#include "platform/forms/dump.h"

#include "core/utf8.h"
#include "platform/forms/form.h"

namespace quorvane {

namespace {

void DumpControls(const Container& container, int depth, std::string& out) {
    for (const Control* control : container.Children()) {
        out.append(static_cast<std::size_t>(depth) * 2, ' ');
        out += std::string(KindName(control->Kind())) + ' ' + control->FullName();
        if (!control->Caption().empty()) out += ' ' + Quoted(control->Caption());
        const std::string value = control->ValueText();
        if (!value.empty()) out += " = " + value;
        if (!control->Visible()) out += " hidden";
        if (!control->Enabled()) out += " disabled";
        out += '\n';
        if (const auto* inner = dynamic_cast<const Container*>(control)) DumpControls(*inner, depth + 1, out);
    }
}

void DumpMenu(const std::deque<MenuItem>& items, int depth, std::string& out) {
    for (const MenuItem& item : items) {
        out.append(static_cast<std::size_t>(depth) * 2, ' ');
        out += "MenuItem " + Quoted(item.caption);
        if (item.checked) out += " checked";
        if (!item.visible) out += " hidden";
        if (!item.enabled) out += " disabled";
        out += '\n';
        DumpMenu(item.items, depth + 1, out);
    }
}

} // namespace

std::string DumpForm(const Form& form) {
    std::string out = "Form " + form.Name() + ' ' + Quoted(form.Caption());
    if (!form.IsLoaded()) out += " unloaded";
    if (!form.IsVisible()) out += " hidden";
    out += '\n';
    if (const Menu* bar = form.MenuBar()) DumpMenu(bar->Items(), 1, out);
    DumpControls(form, 1, out);
    for (const Timer* timer : form.Timers()) {
        out += "  Timer " + timer->Name() + " = " + std::to_string(timer->Interval());
        out += timer->Enabled() ? "\n" : " disabled\n";
    }
    return out;
}

} // namespace quorvane
