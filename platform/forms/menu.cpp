#include "platform/forms/menu.h"

#include "platform/forms/form.h"

#include <vector>

namespace quorvane {

namespace {

void LocaliseEntries(std::deque<MenuItem>& items, const LocaleStrings& words) {
    for (MenuItem& item : items) {
        item.caption.Localise(words);
        LocaliseEntries(item.items, words);
    }
}

} // namespace

Menu::Menu(Form& form, std::string name)
    : form_(&form)
    , name_(std::move(name)) {
    form.menus_.push_back(this);
}

Menu::~Menu() {
    if (form_) std::erase(form_->menus_, this);
}

ShownMenu Menu::Open() {
    if (const auto handler = onOpen) handler();
    if (form_) Localise(form_->Collection().Strings());
    return Entries();
}

ShownMenu Menu::Entries() const {
    return {root_.items, defaultItem_, form_ && form_->RightToLeft()};
}

void Menu::Localise(const LocaleStrings& words) {
    LocaliseEntries(root_.items, words);
}

} // namespace quorvane
