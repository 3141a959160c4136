#pragma once

#include "platform/forms/menu.h"
#include "platform/windows/base/win32.h"

#include <map>

namespace quorvane {

// The system's menu of a model's menu: the bar of a form, or a popup while it is asked for. It keeps the
// entries as they were when they were shown.
class NativeMenu {
  public:
    explicit NativeMenu(ShownMenu bar);
    NativeMenu(const NativeMenu&) = delete;
    NativeMenu& operator=(const NativeMenu&) = delete;
    ~NativeMenu();

    HMENU Handle() const { return handle_; }
    // The entry of a WM_COMMAND's number, null for a number of somebody else.
    const MenuItem* Find(UINT command) const;
    // What hangs below a title of the bar: its entries are to be brought up to date before it opens.
    bool IsTitle(HMENU submenu) const { return titles_.count(submenu) > 0; }
    void Refresh(HMENU submenu, ShownMenu menu);

    // Shows a popup at a place of the screen and answers the entry of `menu` that was chosen, null for none.
    // `owner` gets the menu's messages.
    static const MenuItem* Ask(const ShownMenu& menu, HWND owner, const POINT& at);
    // Paints a bitmap of any menu, for the window that owns it: true where the message asked for that.
    static bool DrawPart(UINT message, LPARAM low);

  private:
    struct Title {
        std::size_t place; // in the bar
        ShownMenu shown;   // holds what hangs below it, from its first opening on
    };

    NativeMenu() = default;
    void Fill(HMENU handle, const std::deque<MenuItem>& items);

    ShownMenu bar_;
    HMENU handle_ = CreatePopupMenu();
    UINT lastCommand_ = 0;
    std::map<UINT, const MenuItem*> commands_;
    std::map<HMENU, Title> titles_;
};

} // namespace quorvane
