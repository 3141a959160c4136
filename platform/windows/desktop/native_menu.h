#pragma once

#include "platform/forms/menu.h"
#include "platform/windows/base/win32.h"

#include <map>

namespace quorvane {

// The system's menu of a model's menu. It holds places in the model, so it must not outlive a change of the
// entries other than through Refresh.
class NativeMenu {
  public:
    enum class Kind { Popup, Bar };

    NativeMenu(Menu& menu, Kind kind);
    NativeMenu(const NativeMenu&) = delete;
    NativeMenu& operator=(const NativeMenu&) = delete;
    ~NativeMenu();

    HMENU Handle() const { return handle_; }
    // The entry of a WM_COMMAND's number, null for a number of somebody else.
    MenuItem* Find(UINT command);
    // Reads the entries of one submenu anew, before it opens.
    void Refresh(HMENU submenu);

    // Paints a bitmap of any menu, for the window that owns it: true where the message asked for that.
    static bool DrawPart(UINT message, LPARAM low);

    // Shows a popup at the pointer and answers the chosen entry, null for none. `owner` gets the menu's
    // messages.
    MenuItem* Ask(HWND owner);

  private:
    void Fill(HMENU handle, std::deque<MenuItem>& items);

    HMENU handle_;
    UINT lastCommand_ = 0;
    std::map<UINT, MenuItem*> commands_;
    std::map<HMENU, std::deque<MenuItem>*> submenus_;
};

} // namespace quorvane
