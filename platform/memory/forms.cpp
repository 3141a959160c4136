#include "platform/memory/forms.h"

#include "core/utf8.h"
#include "platform/event_loop.h"
#include "platform/forms/controls.h"

#include <algorithm>
#include <cmath>

namespace quorvane {

MemoryFormView::MemoryFormView(MemoryFormHost& host, Form& form)
    : host_(host)
    , form_(form) {
    for (Control* control : form.Controls())
        Update(*control, Aspect::Items);
}

MemoryFormView::~MemoryFormView() {
    host_.calls_.Add(form_.Name() + ".Destroy");
}

void MemoryFormView::Show() {
    host_.calls_.Add(form_.Name() + (form_.IsModal() ? ".Show modal" : ".Show"));
}

void MemoryFormView::Hide() {
    host_.calls_.Add(form_.Name() + ".Hide");
}

void MemoryFormView::BringToFront() {
    host_.calls_.Add(form_.Name() + ".BringToFront");
}

void MemoryFormView::Update(Control& control, Aspect aspect) {
    if (aspect != Aspect::Value && aspect != Aspect::Items && aspect != Aspect::Caption) return;
    const auto* list = dynamic_cast<const ListView*>(&control);
    if (!list) {
        shown_[&control] = control.ValueText();
        return;
    }
    ShownRows& rows = shownRows_[list];
    const int known = static_cast<int>(rows.texts.size());
    if (aspect == Aspect::Items) ShowRows(*list, {0, known, known > 0 ? known : list->RowCount()});
    rows.selected = list->SelectedRow();
}

void MemoryFormView::UpdateRows(ListView& list, const RowChange& change) {
    ShowRows(list, change);
}

void MemoryFormView::ShowRows(const ListView& list, const RowChange& change) {
    ShownRows& rows = shownRows_[&list];
    const auto first = rows.texts.begin() + change.first;
    rows.texts.erase(first, first + change.removed);
    std::vector<std::string> fresh;
    for (int row = change.first; row < change.first + change.inserted; ++row)
        fresh.push_back(list.RowText(row));
    rows.texts.insert(rows.texts.begin() + change.first, fresh.begin(), fresh.end());
    rows.selected = list.SelectedRow();
}

void MemoryFormView::UpdateForm(FormAspect aspect) {
    if (aspect != FormAspect::Look) return;
    host_.calls_.Add(form_.Name() + ".Opacity " + std::to_string(form_.Opacity()));
}

void MemoryFormView::Focus(Control& control) {
    if (Control* before = form_.ActiveControl(); before && before != &control) {
        form_.Report(before, act::Focus{false});
    }
    form_.Report(&control, act::Focus{true});
}

const MenuItem* MemoryFormView::Popup(const ShownMenu& menu, MenuPlace place) {
    MemoryFormHost& host = host_;
    host.calls_.Add(form_.Name() + (place == MenuPlace::Form ? ".Popup by key" : ".Popup"));
    if (host.whileMenu) host.whileMenu();
    if (host.menuChoices.empty()) return nullptr;
    const std::string path = std::move(host.menuChoices.front());
    host.menuChoices.pop_front();
    return FindEntry(menu, path);
}

std::uintptr_t MemoryFormView::NativeHandle(Control& control) {
    const std::vector<Control*> all = form_.Controls();
    return static_cast<std::uintptr_t>(std::find(all.begin(), all.end(), &control) - all.begin() + 1);
}

FormMetrics& MemoryFormView::Metrics() {
    return host_;
}

bool MemoryFormView::Do(Form& form, Control* control, const Act& done) {
    const bool usedUp = form.Report(control, done);
    auto* view = static_cast<MemoryFormView*>(form.View());
    if (view && control) view->Update(*control, Aspect::Value); // a widget holds what was done to it
    return usedUp;
}

std::string MemoryFormView::Shown(const Control& control) const {
    if (const auto list = shownRows_.find(&control); list != shownRows_.end()) {
        std::string text = std::to_string(list->second.selected);
        for (const std::string& row : list->second.texts)
            text += row;
        return text;
    }
    const auto found = shown_.find(&control);
    return found == shown_.end() ? std::string() : found->second;
}

std::unique_ptr<FormView> MemoryFormHost::Create(Form& form) {
    calls_.Add(form.Name() + ".Create");
    return std::make_unique<MemoryFormView>(*this, form);
}

TwipSize MemoryFormHost::TextSize(const FontSpec& font, std::string_view text, int wrapWidth) {
    const int letter = static_cast<int>(std::lround(font.size * 90 / 8));
    const int height = static_cast<int>(std::lround(font.size * 195 / 8));
    const int most = wrapWidth > 0 ? std::max(wrapWidth / letter, 1) : 0; // letters a line
    int widest = 0;
    int lines = 0;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        std::string_view line = text.substr(start, end - start);
        if (line.ends_with('\r')) line.remove_suffix(1);
        const int letters = CountLetters(line);
        widest = std::max(widest, most > 0 ? std::min(letters, most) : letters);
        lines += most > 0 ? std::max(1, (letters + most - 1) / most) : 1;
        start = end + 1;
    }
    return {widest * letter, lines * height};
}

Insets MemoryFormHost::Chrome(ControlKind kind) {
    switch (kind) {
    case ControlKind::Label:
    case ControlKind::Slider:
    case ControlKind::ProgressBar:
    case ControlKind::ScrollBar:
        return {};
    case ControlKind::TextBox:
    case ControlKind::RichTextBox:
    case ControlKind::PictureBox:
        return {45, 45, 45, 45};
    case ControlKind::Button:
        return {150, 75, 150, 75};
    case ControlKind::CheckBox:
    case ControlKind::OptionButton:
        return {285, 30, 15, 30};
    case ControlKind::ComboBox:
    case ControlKind::DatePicker:
        return {60, 60, 315, 60};
    case ControlKind::ListView:
        return {30, 30, 285, 30};
    case ControlKind::TabStrip:
        return {30, 360, 30, 30};
    case ControlKind::Frame:
        return {30, 225, 30, 30};
    case ControlKind::MonthView:
        return {60, 60, 60, 60};
    }
    return {};
}

namespace {

const MenuItem* FindItem(const std::deque<MenuItem>& items, std::string_view path) {
    const std::size_t slash = path.find('/');
    const std::string_view wanted = path.substr(0, slash);
    for (const MenuItem& item : items) {
        if (!item.visible || !item.enabled || PlainCaption(item.caption.Text()) != wanted) continue;
        if (slash == path.npos) return item.items.empty() ? &item : nullptr;
        return FindItem(item.items, path.substr(slash + 1));
    }
    return nullptr;
}

} // namespace

const MenuItem* FindEntry(const ShownMenu& menu, std::string_view path) {
    return FindItem(menu.items, path);
}

bool ChooseFromMenu(Menu& menu, std::string_view path) {
    const ShownMenu shown = menu.Open();
    const MenuItem* item = FindEntry(shown, path);
    if (item) Menu::Choose(*item);
    return item != nullptr;
}

} // namespace quorvane
