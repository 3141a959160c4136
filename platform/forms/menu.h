#pragma once

#include "platform/drawing.h"

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace quorvane {

// One entry of a menu, with the entries of its submenu. "&" in the caption marks the mnemonic, "-" alone is a
// separator. Plain data: a host reads it each time the menu is opened.
struct MenuItem {
    std::string name; // of the control ("mnu_popup_entry"), for tests and dumps
    int index = -1;   // in its control array
    std::string caption;
    bool enabled = true;
    bool visible = true;
    bool checked = false;
    std::shared_ptr<Surface> bitmap; // shown before the caption; the upper left pixel's colour is transparent
    std::function<void()> onClick;
    std::deque<MenuItem> items;

    bool IsSeparator() const { return caption == "-"; }

    MenuItem& Add(std::string itemName, int itemIndex, std::string itemCaption,
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

// A popup menu, or the menu bar of a form, whose top entries then are its titles.
class Menu {
  public:
    MenuItem& Add(MenuItem item) { return root_.Add(std::move(item)); }
    MenuItem& Add(std::string name, int index, std::string caption, std::function<void()> handler = {}) {
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

    // Called by whoever shows the menu, before it is shown, to bring its entries up to date.
    std::function<void()> onOpen;

    // A person chose `item`: the host's only word to a menu, said under EventLoop::Deliver. Entries that are
    // disabled or hold a submenu do nothing.
    static void Choose(MenuItem& item) {
        if (!item.enabled || !item.items.empty() || !item.onClick) return;
        const auto handler = item.onClick; // the handler may rebuild the menu
        handler();
    }

  private:
    MenuItem root_;
    int defaultItem_ = -1;
};

} // namespace quorvane
