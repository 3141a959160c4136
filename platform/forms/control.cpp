#include "platform/forms/control.h"

#include "platform/forms/form.h"
#include "platform/forms/sizes.h"

#include <algorithm>

namespace quorvane {

const char* KindName(ControlKind kind) {
    switch (kind) {
    case ControlKind::Label:
        return "Label";
    case ControlKind::TextBox:
        return "TextBox";
    case ControlKind::RichTextBox:
        return "RichTextBox";
    case ControlKind::Button:
        return "Button";
    case ControlKind::CheckBox:
        return "CheckBox";
    case ControlKind::OptionButton:
        return "OptionButton";
    case ControlKind::ComboBox:
        return "ComboBox";
    case ControlKind::ListView:
        return "ListView";
    case ControlKind::TabStrip:
        return "TabStrip";
    case ControlKind::Frame:
        return "Frame";
    case ControlKind::Slider:
        return "Slider";
    case ControlKind::ProgressBar:
        return "ProgressBar";
    case ControlKind::ScrollBar:
        return "ScrollBar";
    case ControlKind::DatePicker:
        return "DatePicker";
    case ControlKind::MonthView:
        return "MonthView";
    case ControlKind::PictureBox:
        return "PictureBox";
    }
    return "";
}

std::string PlainCaption(std::string_view caption) {
    std::string plain;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == '&' && ++i == caption.size()) break;
        plain += caption[i];
    }
    return plain;
}

std::string LiteralCaption(std::string_view text) {
    std::string caption;
    for (const char letter : text)
        caption.append(letter == '&' ? 2 : 1, letter);
    return caption;
}

Control::Control(Container& parent, std::string name, int index)
    : parent_(parent)
    , name_(std::move(name))
    , index_(index) {
    parent_.children_.push_back(this);
}

Control::~Control() {
    OwnerForm().Forget(*this);
    std::erase(parent_.children_, this);
}

std::string Control::FullName() const {
    return index_ == NoIndex ? name_ : name_ + '(' + std::to_string(index_) + ')';
}

Form& Control::OwnerForm() const {
    return parent_.OwnerForm();
}

void Control::SetCaption(Words caption) {
    const std::string before = Caption();
    caption_ = Localised(std::move(caption));
    if (Caption() != before) ChangedInSize(Aspect::Caption);
}

void Control::SetVisible(bool visible) {
    if (visible == visible_) return;
    visible_ = visible;
    Changed(Aspect::State);
    OwnerForm().ArrangeSoon();
}

void Control::SetEnabled(bool enabled) {
    if (enabled == enabled_) return;
    enabled_ = enabled;
    Changed(Aspect::State);
}

bool Control::IsShown() const {
    if (!visible_) return false;
    const Control* around = parent_.AsControl();
    return !around || around->IsShown();
}

bool Control::IsReachable() const {
    if (!visible_ || !enabled_) return false;
    const Control* around = parent_.AsControl();
    return !around || around->IsReachable();
}

void Control::SetToolTip(Words text) {
    const std::string before = ToolTip();
    toolTip_ = Localised(std::move(text));
    if (ToolTip() != before) Changed(Aspect::Look);
}

void Control::SetFont(std::optional<FontSpec> font) {
    if (font == font_) return;
    font_ = std::move(font);
    ChangedInSize(Aspect::Look);
}

void Control::SetForeColor(std::optional<Color> color) {
    if (color == foreColor_) return;
    foreColor_ = color;
    Changed(Aspect::Look);
}

void Control::SetBackColor(std::optional<Color> color) {
    if (color == backColor_) return;
    backColor_ = color;
    Changed(Aspect::Look);
}

bool Control::HasPlace() const {
    if (bounds_.width <= 0 || bounds_.height <= 0) return false;
    const Control* around = parent_.AsControl();
    return !around || around->HasPlace();
}

void Control::SetFocus() {
    OwnerForm().FocusOn(*this);
}

void Control::Localise(const LocaleStrings& words) {
    if (caption_.Localise(words)) ChangedInSize(Aspect::Caption);
    if (toolTip_.Localise(words)) Changed(Aspect::Look);
}

Words Control::Localised(Words words) const {
    words.Localise(OwnerForm().Collection().Strings());
    return words;
}

void Control::SetBounds(const TwipRect& bounds) {
    if (bounds == bounds_) return;
    bounds_ = bounds;
    Changed(Aspect::Bounds);
}

void Control::Changed(Aspect aspect) {
    if (FormView* view = OwnerForm().View()) view->Update(*this, aspect);
}

void Control::ChangedInSize(Aspect aspect) {
    Changed(aspect);
    Form& form = OwnerForm();
    if (!form.View() || !IsShown()) return;
    const TwipSize wanted = PreferredSize(*this, form.Metrics());
    if (wanted.width > bounds_.width || wanted.height > bounds_.height) form.ArrangeSoon();
}

} // namespace quorvane
