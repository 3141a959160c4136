#include "platform/windows/desktop/native_menu.h"

#include "platform/windows/base/wide.h"
#include "platform/windows/drawing/drawing.h"

namespace quorvane {
namespace {

// Paints the bitmap where the colour of its upper left pixel does not shine through.
void DrawBitmap(Surface& surface, HDC target, const RECT& area) {
    const PixelView pixels = surface.Pixels();
    const HDC memory = CreateCompatibleDC(target);
    const HBITMAP bitmap = CreateCompatibleBitmap(target, pixels.size.width, pixels.size.height);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    PaintSurface(surface, memory, 0, 0);
    const int x = static_cast<int>(area.left + area.right - pixels.size.width) / 2;
    const int y = static_cast<int>(area.top + area.bottom - pixels.size.height) / 2;
    TransparentBlt(target, x, y, pixels.size.width, pixels.size.height, memory, 0, 0, pixels.size.width,
                   pixels.size.height, GetPixel(memory, 0, 0));
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
}

} // namespace

// Each title has numbers of its own, so that they never run out however often it is filled anew.
constexpr UINT CommandsOfTitle = 1000;

NativeMenu::NativeMenu(ShownMenu bar)
    : bar_(std::move(bar))
    , handle_(CreateMenu()) {
    Fill(handle_, bar_.items);
    int position = 0;
    for (std::size_t i = 0; i < bar_.items.size(); ++i) {
        if (!bar_.items[i].visible) continue;
        const HMENU below = GetSubMenu(handle_, position++);
        if (!below) continue;
        titles_[below].place = i;
        Refresh(below, bar_);
    }
}

NativeMenu::~NativeMenu() {
    DestroyMenu(handle_);
}

void NativeMenu::Fill(HMENU handle, const std::deque<MenuItem>& items) {
    UINT position = 0;
    for (const MenuItem& item : items) {
        if (!item.visible) continue;
        std::wstring caption = Wide(item.caption.Text());
        MENUITEMINFOW info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID;
        info.fType = item.IsSeparator() ? MFT_SEPARATOR : MFT_STRING;
        info.fState = static_cast<UINT>((item.enabled ? MFS_ENABLED : MFS_GRAYED) |
                                        (item.checked ? MFS_CHECKED : MFS_UNCHECKED));
        info.wID = ++lastCommand_;
        commands_[lastCommand_] = &item;
        if (!item.IsSeparator()) {
            info.fMask |= MIIM_STRING;
            info.dwTypeData = caption.data();
        }
        if (!item.items.empty()) {
            info.fMask |= MIIM_SUBMENU;
            info.hSubMenu = CreatePopupMenu();
            Fill(info.hSubMenu, item.items);
        }
        if (item.bitmap) {
            // Painted by DrawPart, since not every system honours the opacity of a bitmap given to it.
            info.fMask |= MIIM_BITMAP | MIIM_DATA;
            info.hbmpItem = HBMMENU_CALLBACK;
            info.dwItemData = reinterpret_cast<ULONG_PTR>(item.bitmap.get());
        }
        InsertMenuItemW(handle, position++, TRUE, &info);
    }
}

bool NativeMenu::DrawPart(UINT message, LPARAM low) {
    if (message == WM_MEASUREITEM) {
        auto& wanted = *reinterpret_cast<MEASUREITEMSTRUCT*>(low);
        const auto* bitmap = reinterpret_cast<const Surface*>(wanted.itemData);
        if (wanted.CtlType != ODT_MENU || !bitmap) return false;
        constexpr UINT Room = 2;
        wanted.itemWidth = static_cast<UINT>(bitmap->Size().width) + Room;
        wanted.itemHeight = static_cast<UINT>(bitmap->Size().height) + Room;
        return true;
    }
    if (message != WM_DRAWITEM) return false;
    const auto& part = *reinterpret_cast<const DRAWITEMSTRUCT*>(low);
    auto* bitmap = reinterpret_cast<Surface*>(part.itemData);
    if (part.CtlType != ODT_MENU || !bitmap) return false;
    DrawBitmap(*bitmap, part.hDC, part.rcItem);
    return true;
}

const MenuItem* NativeMenu::Find(UINT command) const {
    const auto found = commands_.find(command);
    return found == commands_.end() ? nullptr : found->second;
}

void NativeMenu::Refresh(HMENU submenu, ShownMenu menu) {
    Title& title = titles_.at(submenu);
    while (DeleteMenu(submenu, 0, MF_BYPOSITION)) {
    }
    lastCommand_ = static_cast<UINT>(title.place + 1) * CommandsOfTitle;
    commands_.erase(commands_.upper_bound(lastCommand_),
                    commands_.upper_bound(lastCommand_ + CommandsOfTitle));
    title.shown = std::move(menu);
    if (title.place < title.shown.items.size()) Fill(submenu, title.shown.items[title.place].items);
}

const MenuItem* NativeMenu::Ask(const ShownMenu& menu, HWND owner, const POINT& at) {
    NativeMenu popup;
    popup.Fill(popup.handle_, menu.items);
    if (menu.defaultItem >= 0) SetMenuDefaultItem(popup.handle_, static_cast<UINT>(menu.defaultItem), TRUE);
    // Without the foreground the menu would not close at a click elsewhere; the message behind it is the
    // system's own advice for the same end.
    SetForegroundWindow(owner);
    const UINT direction = menu.rightToLeft ? TPM_LAYOUTRTL : 0;
    const int command = TrackPopupMenu(popup.handle_, TPM_RETURNCMD | TPM_RIGHTBUTTON | direction, at.x, at.y,
                                       0, owner, nullptr);
    PostMessageW(owner, WM_NULL, 0, 0);
    return popup.Find(static_cast<UINT>(command));
}

} // namespace quorvane
