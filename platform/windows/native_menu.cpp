#include "platform/windows/native_menu.h"

#include "platform/windows/wide.h"

#include <cstdint>
#include <cstring>

namespace quorvane {
namespace {

// The surface as a bitmap with a share of opacity in each pixel: the colour of the upper left one shines
// through.
HBITMAP ToBitmap(Surface& surface) {
    const PixelView pixels = surface.Pixels();
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = pixels.size.width;
    info.bmiHeader.biHeight = -pixels.size.height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    auto* out = static_cast<std::uint8_t*>(bits);
    if (!bitmap) return nullptr;
    for (int y = 0; y < pixels.size.height; ++y) {
        for (int x = 0; x < pixels.size.width; ++x, out += 4) {
            const std::uint8_t* pixel = pixels.Row(y) + std::ptrdiff_t{3} * x;
            if (std::memcmp(pixel, pixels.top, 3) == 0) continue; // the section begins empty
            std::memcpy(out, pixel, 3);
            out[3] = 255;
        }
    }
    return bitmap;
}

} // namespace

NativeMenu::NativeMenu(Menu& menu, Kind kind)
    : handle_(kind == Kind::Bar ? CreateMenu() : CreatePopupMenu()) {
    Fill(handle_, menu.Items());
    if (menu.DefaultItem() >= 0) SetMenuDefaultItem(handle_, static_cast<UINT>(menu.DefaultItem()), TRUE);
}

NativeMenu::~NativeMenu() {
    DestroyMenu(handle_);
    for (const HBITMAP bitmap : bitmaps_)
        DeleteObject(bitmap);
}

void NativeMenu::Fill(HMENU handle, std::deque<MenuItem>& items) {
    UINT position = 0;
    for (MenuItem& item : items) {
        if (!item.visible) continue;
        std::wstring caption = Wide(item.caption);
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
            submenus_[info.hSubMenu] = &item.items;
            Fill(info.hSubMenu, item.items);
        }
        if (item.bitmap) {
            bitmaps_.push_back(ToBitmap(*item.bitmap));
            info.fMask |= MIIM_BITMAP;
            info.hbmpItem = bitmaps_.back();
        }
        InsertMenuItemW(handle, position++, TRUE, &info);
    }
}

MenuItem* NativeMenu::Find(UINT command) {
    const auto found = commands_.find(command);
    return found == commands_.end() ? nullptr : found->second;
}

void NativeMenu::Refresh(HMENU submenu) {
    const auto found = submenus_.find(submenu);
    if (found == submenus_.end()) return;
    while (DeleteMenu(submenu, 0, MF_BYPOSITION)) {
    }
    Fill(submenu, *found->second);
}

MenuItem* NativeMenu::Ask(HWND owner) {
    POINT pointer{};
    GetCursorPos(&pointer);
    // Without the foreground the menu would not close at a click elsewhere; the message behind it is the
    // system's own advice for the same end.
    SetForegroundWindow(owner);
    const int command =
        TrackPopupMenu(handle_, TPM_RETURNCMD | TPM_RIGHTBUTTON, pointer.x, pointer.y, 0, owner, nullptr);
    PostMessageW(owner, WM_NULL, 0, 0);
    return Find(static_cast<UINT>(command));
}

} // namespace quorvane
