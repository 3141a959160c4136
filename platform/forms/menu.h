#pragma once

#include "core/words.h"
#include "platform/drawing.h"

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace quorvane {

class Form;
class LocaleStrings;

// One entry of a menu, with the entries of its submenu. "&" in the caption marks the mnemonic, "-" alone is a
// separator. Plain data.
struct MenuItem {
    std::string name; // of the control ("mnu_popup_entry"), for tests and dumps
    int index = -1;   // in its control array
    Words caption;
    bool enabled = true;
    bool visible = true;
    bool checked = false;
    std::shared_ptr<Surface> bitmap; // shown before the caption; the upper left pixel's colour is transparent
    std::function<void()> onClick;
    std::deque<MenuItem> items;

    bool IsSeparator() const { return caption.Text() == "-"; }

    MenuItem& Add(std::string itemName, int itemIndex, Words itemCaption,
                  std::function<void()> handler = {}) {
        MenuItem item;
        item.name = std::move(itemName);
        item.index = itemIndex;
        item.caption = std::move(itemCaption);
        item.onClick = std::move(handler);
        return Add(std::move(item));
    }
    // References to entries stay good while entries are added behind them.
    MenuItem& Add(MenuItem item) { return items.emplace_back(std::move(item)); }
    MenuItem& AddSeparator() {
        MenuItem separator;
        separator.caption = "-";
        return Add(std::move(separator));
    }
};

// What a host shows of a menu: its entries as they were then. The menu itself may be built anew meanwhile.
struct ShownMenu {
    std::deque<MenuItem> items;
    int defaultItem = -1;
    bool rightToLeft = false;
};

// A popup menu, or the menu bar of a form, whose top entries then are its titles.
class Menu {
  public:
    // A menu without a form is in nobody's language and in no dump.
    Menu() = default;
    // A member of the form's class, as controls are.
    Menu(Form& form, std::string name);
    Menu(const Menu&) = delete;
    Menu& operator=(const Menu&) = delete;
    ~Menu();

    const std::string& Name() const { return name_; }

    MenuItem& Add(MenuItem item) { return root_.Add(std::move(item)); }
    MenuItem& Add(std::string name, int index, Words caption, std::function<void()> handler = {}) {
        return root_.Add(std::move(name), index, std::move(caption), std::move(handler));
    }
    MenuItem& AddSeparator() { return root_.AddSeparator(); }
    void Clear() {
        root_.items.clear();
        defaultItem_ = -1;
    }

    std::deque<MenuItem>& Items() { return root_.items; }
    const std::deque<MenuItem>& Items() const { return root_.items; }

    // Position of the entry that a double click stands for and that is shown in bold; -1 for none.
    int DefaultItem() const { return defaultItem_; }
    void SetDefaultItem(int position) { defaultItem_ = position; }

    // Brings the entries up to date; called by Open alone.
    std::function<void()> onOpen;
    // Puts the captions into the words of the table.
    void Localise(const LocaleStrings& words);

    // A person opens the menu, or one of the titles of a menu bar: to be said once each time, under
    // EventLoop::Deliver. Answers what is to be shown.
    ShownMenu Open();
    // What the menu holds, unopened.
    ShownMenu Entries() const;
    // A person chose `item` of a menu that was shown: to be said under EventLoop::Deliver. Entries that are
    // disabled or hold a submenu do nothing.
    static void Choose(const MenuItem& item) {
        if (!item.enabled || !item.items.empty() || !item.onClick) return;
        const auto handler = item.onClick; // the handler may rebuild the menu
        handler();
    }

  private:
    Form* form_ = nullptr;
    std::string name_;
    MenuItem root_;
    int defaultItem_ = -1;
};

} // namespace quorvane
