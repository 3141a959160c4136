#include "platform/forms/controls.h"

#include "core/run_time_error.h"
#include "core/utf8.h"
#include "platform/forms/form.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace quorvane {

namespace {

bool IsClick(const Act& done) {
    return std::holds_alternative<act::Click>(done);
}

void AllowDate(const DateTime& value) {
    const bool shaped = value.year >= 1753 && value.year <= 9999 && value.month >= 1 && value.month <= 12 &&
                        value.day >= 1 && value.hour >= 0 && value.hour < 24 && value.minute >= 0 &&
                        value.minute < 60 && value.second >= 0 && value.second < 60;
    const DateTime day{value.year, value.month, value.day};
    if (!shaped || CivilFromDays(DaysFromCivil(value.year, value.month, value.day)) != day)
        throw RunTimeError::InvalidCall();
}

std::string DateText(const DateTime& value, bool withTime) {
    char text[64];
    if (withTime) {
        std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", value.year, value.month, value.day,
                      value.hour, value.minute, value.second);
    } else {
        std::snprintf(text, sizeof text, "%04d-%02d-%02d", value.year, value.month, value.day);
    }
    return text;
}

} // namespace

Label::Label(Container& parent, std::string name, Words caption, int index)
    : Control(parent, std::move(name), index) {
    SetCaption(std::move(caption));
}

void Label::SetAlignment(Align alignment) {
    if (alignment == alignment_) return;
    alignment_ = alignment;
    Changed(Aspect::Look);
}

void Label::SetWrapWidth(int twips) {
    if (twips == wrapWidth_) return;
    wrapWidth_ = twips;
    ChangedInSize(Aspect::Look);
}

bool Label::Take(const Act& done) {
    if (!IsClick(done)) return false;
    Raise(onClick);
    return true;
}

Button::Button(Container& parent, std::string name, Words caption, int index)
    : Control(parent, std::move(name), index) {
    SetCaption(std::move(caption));
}

void Button::Press() {
    if (IsReachable()) Raise(onClick);
}

bool Button::Take(const Act& done) {
    if (!IsClick(done)) return false;
    Raise(onClick);
    return true;
}

CheckBox::CheckBox(Container& parent, std::string name, Words caption, int index)
    : Control(parent, std::move(name), index) {
    SetCaption(std::move(caption));
}

void CheckBox::SetValue(bool value) {
    if (value == value_) return;
    value_ = value;
    Changed(Aspect::Value);
    Raise(onClick);
}

std::string CheckBox::ValueText() const {
    return value_ ? "checked" : "clear";
}

bool CheckBox::Take(const Act& done) {
    const auto* check = std::get_if<act::Check>(&done);
    if (!check) return false;
    SetValue(check->checked);
    return true;
}

OptionButton::OptionButton(Container& parent, std::string name, Words caption, int index, int group)
    : Control(parent, std::move(name), index)
    , group_(group) {
    SetCaption(std::move(caption));
}

void OptionButton::SetValue(bool value) {
    if (value == value_) return;
    value_ = value;
    Changed(Aspect::Value);
    if (!value) return;
    for (Control* sibling : Parent().Children()) {
        auto* other = dynamic_cast<OptionButton*>(sibling);
        if (other && other != this && other->group_ == group_) other->SetValue(false);
    }
    Raise(onClick);
}

std::string OptionButton::ValueText() const {
    return value_ ? "chosen" : "clear";
}

bool OptionButton::Take(const Act& done) {
    const auto* check = std::get_if<act::Check>(&done);
    if (!check) return false;
    if (check->checked) SetValue(true); // a person clears an option by choosing another
    return true;
}

ComboBox::ComboBox(Container& parent, std::string name, int index, Style style)
    : Control(parent, std::move(name), index)
    , style_(style) {}

void ComboBox::SetItems(std::vector<Words> items) {
    items_ = std::move(items);
    for (Words& item : items_)
        item = Localised(std::move(item));
    listIndex_ = -1;
    if (!Editable()) text_.clear();
    ChangedInSize(Aspect::Items);
}

void ComboBox::AddItem(Words item) {
    items_.push_back(Localised(std::move(item)));
    ChangedInSize(Aspect::Items);
}

void ComboBox::SetListIndex(int index) {
    if (index < -1 || index >= static_cast<int>(items_.size())) throw RunTimeError::InvalidCall();
    if (index == listIndex_) return;
    listIndex_ = index;
    if (index >= 0) {
        text_ = items_[static_cast<std::size_t>(index)].Text();
    } else if (!Editable()) {
        text_.clear();
    }
    Changed(Aspect::Value);
    Raise(onClick);
}

void ComboBox::SetText(const std::string& text) {
    if (!Editable()) {
        const auto found = std::find_if(items_.begin(), items_.end(),
                                        [&text](const Words& item) { return item.Text() == text; });
        if (found == items_.end()) throw RunTimeError::InvalidCall();
        SetListIndex(static_cast<int>(found - items_.begin()));
        return;
    }
    if (text == text_) return;
    text_ = text;
    listIndex_ = -1;
    Changed(Aspect::Value);
    Raise(onChange);
}

// The choice stays, and raises nothing: it is the same entry in other words.
void ComboBox::Localise(const LocaleStrings& words) {
    Control::Localise(words);
    bool changed = false;
    for (Words& item : items_)
        changed = item.Localise(words) || changed;
    if (!changed) return;
    if (listIndex_ >= 0) text_ = items_[static_cast<std::size_t>(listIndex_)].Text();
    ChangedInSize(Aspect::Items);
}

std::string ComboBox::ValueText() const {
    return std::to_string(listIndex_) + ' ' + Quoted(text_) + " of " + std::to_string(items_.size());
}

bool ComboBox::Take(const Act& done) {
    if (const auto* choose = std::get_if<act::Choose>(&done)) {
        SetListIndex(choose->index);
        return true;
    }
    const auto* type = std::get_if<act::Type>(&done);
    if (!type || !Editable()) return false;
    SetText(type->text);
    return true;
}

Frame::Frame(Container& parent, std::string name, Words caption, int index)
    : Control(parent, std::move(name), index) {
    SetCaption(std::move(caption));
}

bool Frame::Take(const Act& done) {
    if (!IsClick(done)) return false;
    Raise(onClick);
    return true;
}

TabStrip::TabStrip(Container& parent, std::string name, int index)
    : Control(parent, std::move(name), index) {}

void TabStrip::SetTabs(std::vector<Words> captions) {
    tabs_ = std::move(captions);
    for (Words& tab : tabs_)
        tab = Localised(std::move(tab));
    rows_ = {static_cast<int>(tabs_.size())};
    selected_ = tabs_.empty() ? -1 : 0;
    ChangedInRows(Aspect::Items);
}

void TabStrip::SetTabCaption(int tab, Words caption) {
    if (tab < 0 || tab >= static_cast<int>(tabs_.size())) throw RunTimeError::SubscriptOutOfRange();
    tabs_[static_cast<std::size_t>(tab)] = Localised(std::move(caption));
    ChangedInRows(Aspect::Caption);
}

void TabStrip::Localise(const LocaleStrings& words) {
    Control::Localise(words);
    bool changed = false;
    for (Words& tab : tabs_)
        changed = tab.Localise(words) || changed;
    if (changed) ChangedInRows(Aspect::Caption);
}

// Shorter captions, too, may stand in other rows.
void TabStrip::ChangedInRows(Aspect aspect) {
    Changed(aspect);
    OwnerForm().ArrangeSoon();
}

void TabStrip::SetTabRows(std::vector<int> rows) {
    if (rows == rows_) return;
    rows_ = std::move(rows);
    Changed(Aspect::Items);
}

void TabStrip::SelectTab(int tab) {
    if (tab < 0 || tab >= static_cast<int>(tabs_.size())) throw RunTimeError::SubscriptOutOfRange();
    if (tab == selected_) return;
    selected_ = tab;
    Changed(Aspect::Value);
    Raise(onClick);
}

std::string TabStrip::ValueText() const {
    std::string text = std::to_string(selected_);
    for (const Words& tab : tabs_)
        text += ' ' + Quoted(tab.Text());
    return text;
}

bool TabStrip::Take(const Act& done) {
    const auto* choose = std::get_if<act::Choose>(&done);
    if (!choose) return false;
    SelectTab(choose->index);
    return true;
}

void RangeControl::SetRange(int minimum, int maximum) {
    if (minimum > maximum) throw RunTimeError::InvalidCall();
    if (minimum == minimum_ && maximum == maximum_) return;
    minimum_ = minimum;
    maximum_ = maximum;
    Changed(Aspect::Items);
    SetValue(value_);
}

void RangeControl::SetValue(int value) {
    value = std::clamp(value, minimum_, maximum_);
    if (value == value_ && value == atRest_) return;
    value_ = atRest_ = value;
    Changed(Aspect::Value);
    Raise(onChange);
}

std::string RangeControl::ValueText() const {
    return std::to_string(value_) + " in " + std::to_string(minimum_) + ".." + std::to_string(maximum_);
}

bool RangeControl::Take(const Act& done) {
    const auto* slide = std::get_if<act::Slide>(&done);
    if (!slide) return false;
    if (!slide->dragging) {
        SetValue(slide->value);
        return true;
    }
    const int value = std::clamp(slide->value, minimum_, maximum_);
    if (value == value_) return true;
    value_ = value;
    Dragged();
    return true;
}

Slider::Slider(Container& parent, std::string name, int index)
    : RangeControl(parent, std::move(name), index) {}

ScrollBar::ScrollBar(Container& parent, std::string name, int index, Direction direction)
    : RangeControl(parent, std::move(name), index)
    , direction_(direction) {}

ProgressBar::ProgressBar(Container& parent, std::string name, int index)
    : RangeControl(parent, std::move(name), index) {}

bool ProgressBar::Take(const Act&) {
    return false;
}

DatePicker::DatePicker(Container& parent, std::string name, int index)
    : Control(parent, std::move(name), index) {}

void DatePicker::SetValue(DateTime value) {
    AllowDate(value);
    value.millisecond = 0;
    if (value == value_) return;
    value_ = value;
    Changed(Aspect::Value);
    Raise(onChange);
}

std::string DatePicker::ValueText() const {
    return DateText(value_, true);
}

bool DatePicker::Take(const Act& done) {
    const auto* pick = std::get_if<act::PickDate>(&done);
    if (!pick) return false;
    SetValue(pick->value);
    return true;
}

MonthView::MonthView(Container& parent, std::string name, int index)
    : Control(parent, std::move(name), index) {}

void MonthView::SetValue(DateTime value) {
    value = {value.year, value.month, value.day};
    AllowDate(value);
    if (value == value_) return;
    value_ = value;
    Changed(Aspect::Value);
    Raise(onChange);
}

std::string MonthView::ValueText() const {
    return DateText(value_, false);
}

bool MonthView::Take(const Act& done) {
    const auto* pick = std::get_if<act::PickDate>(&done);
    if (!pick) return false;
    SetValue(pick->value);
    return true;
}

PictureBox::PictureBox(Container& parent, std::string name, int index)
    : Control(parent, std::move(name), index) {}

PictureBox::~PictureBox() = default;

void PictureBox::SetPreferred(TwipSize size) {
    if (size == preferred_) return;
    preferred_ = size;
    OwnerForm().ArrangeSoon();
}

void PictureBox::SetBackColor(std::optional<Color> color) {
    if (color == BackColor()) return;
    Control::SetBackColor(color);
    Refresh();
}

void PictureBox::Refresh() {
    stale_ = OwnerForm().arrangePending_;
    if (!stale_) Paint();
}

void PictureBox::Paint() {
    stale_ = false;
    Form& form = OwnerForm();
    const PixelRect area = ToPixels({0, 0, Bounds().width, Bounds().height}, form.Metrics().Scale());
    const double ratio = form.Metrics().PixelRatio();
    const PixelSize size{static_cast<int>(std::lround(area.width * ratio)),
                         static_cast<int>(std::lround(area.height * ratio))};
    if (size.width <= 0 || size.height <= 0) return;
    if (!surface_ || surface_->Size() != size) surface_ = form.Painter().CreateSurface(size);
    if (!surface_) return; // no memory for it: the box stays empty
    surface_->Fill({0, 0, size.width, size.height}, BackColor().value_or(0));
    if (onPaint) onPaint(*surface_);
    Changed(Aspect::Value);
}

void PictureBox::SetBounds(const TwipRect& bounds) {
    const bool resized = bounds.width != Bounds().width || bounds.height != Bounds().height;
    Control::SetBounds(bounds);
    if (resized || stale_) Paint();
}

bool PictureBox::Take(const Act& done) {
    if (!IsClick(done)) return false;
    Raise(onClick);
    return true;
}

} // namespace quorvane
