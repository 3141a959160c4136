#include "platform/forms/dump.h"

#include "core/utf8.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"

#include <cstdio>

namespace quorvane {

namespace {

std::string Indent(int depth) {
    return std::string(static_cast<std::size_t>(depth) * 2, ' ');
}

// With the number by which a locale knows them.
std::string WordsText(const Words& words) {
    if (words.Text().empty() && words.Id() == Words::NoId) return {};
    return ' ' + Quoted(words.Text()) + (words.Id() == Words::NoId ? "" : " #" + std::to_string(words.Id()));
}

std::string ColorText(const char* name, const std::optional<Color>& color) {
    if (!color) return {};
    char text[40];
    std::snprintf(text, sizeof text, " %s %d,%d,%d", name, Red(*color), Green(*color), Blue(*color));
    return text;
}

std::string FontText(const std::optional<FontSpec>& font) {
    if (!font) return {};
    char size[20];
    std::snprintf(size, sizeof size, "%g", static_cast<double>(font->size));
    return " font " + Quoted(font->name) + ' ' + size + (font->bold ? " bold" : "") +
           (font->italic ? " italic" : "") + (font->underline ? " underline" : "") +
           (font->strikethrough ? " strikethrough" : "");
}

// Look and state.
std::string StateText(const Control& control) {
    std::string out;
    if (!control.TipWords().Text().empty()) out += " tip" + WordsText(control.TipWords());
    out += FontText(control.Font()) + ColorText("fore", control.ForeColor()) +
           ColorText("back", control.BackColor());
    const Form& form = control.OwnerForm();
    if (form.DefaultButton() == &control) out += " default";
    if (form.CancelButton() == &control) out += " cancel";
    const auto* text = dynamic_cast<const TextControl*>(&control);
    if (text && text->ReadOnly()) out += " read-only";
    if (!control.Visible()) out += " hidden";
    if (!control.Enabled()) out += " disabled";
    return out;
}

void DumpControls(const Container& container, int depth, std::string& out) {
    for (const Control* control : container.Children()) {
        out += Indent(depth) + KindName(control->Kind()) + ' ' + control->FullName();
        out += WordsText(control->CaptionWords());
        const std::string value = control->ValueText();
        if (!value.empty()) out += " = " + value;
        out += StateText(*control) + '\n';
        if (const auto* inner = dynamic_cast<const Container*>(control)) DumpControls(*inner, depth + 1, out);
    }
}

void DumpEntries(const std::deque<MenuItem>& items, int byDefault, int depth, std::string& out) {
    int position = 0;
    for (const MenuItem& item : items) {
        out += Indent(depth) + "MenuItem";
        if (!item.name.empty()) out += ' ' + item.name;
        if (item.index >= 0) out += '(' + std::to_string(item.index) + ')';
        out += WordsText(item.caption);
        if (item.bitmap) out += " bitmap";
        if (position++ == byDefault) out += " default";
        if (item.checked) out += " checked";
        if (!item.visible) out += " hidden";
        if (!item.enabled) out += " disabled";
        out += '\n';
        DumpEntries(item.items, -1, depth + 1, out);
    }
}

const char* BorderText(BorderStyle border) {
    switch (border) {
    case BorderStyle::None:
        return " bare";
    case BorderStyle::Fixed:
        return "";
    case BorderStyle::Tool:
        return " tool";
    case BorderStyle::Sizable:
        return " sizable";
    }
    return "";
}

std::string FormLine(const Form& form) {
    std::string out = "Form " + form.Name() + WordsText(form.CaptionWords()) + BorderText(form.Border());
    if (form.Opacity() != 255) out += " opacity " + std::to_string(form.Opacity());
    out += ColorText("back", form.BackColor()) + ColorText("transparent", form.TransparentColor());
    if (form.AlwaysOnTop()) out += " on top";
    if (!form.ShownInTaskBar()) out += " no task bar";
    if (form.Minimized()) out += " minimized";
    if (!form.IsLoaded()) out += " unloaded";
    if (!form.IsVisible()) out += " hidden";
    return out + '\n';
}

} // namespace

std::string DumpMenu(const Menu& menu) {
    std::string out;
    DumpEntries(menu.Items(), menu.DefaultItem(), 0, out);
    return out;
}

std::string DumpForm(const Form& form) {
    std::string out = FormLine(form);
    for (const Menu* menu : form.Menus()) {
        out += "  Menu " + menu->Name() + (form.MenuBar() == menu ? " bar\n" : "\n");
        DumpEntries(menu->Items(), menu->DefaultItem(), 2, out);
    }
    DumpControls(form, 1, out);
    for (const Timer* timer : form.Timers()) {
        out += "  Timer " + timer->Name() + " = " + std::to_string(timer->Interval());
        out += timer->Enabled() ? "\n" : " disabled\n";
    }
    return out;
}

} // namespace quorvane
