#pragma once

#include <functional>
#include <string>

namespace quorvane {

class Menu;

// Characters of a notification's fields; the platform cuts what is longer.
namespace tray_field {
inline constexpr int Tip = 128;
inline constexpr int BalloonTitle = 64;
inline constexpr int BalloonText = 256;
} // namespace tray_field

// What the notification area shows for the program.
struct TrayRecord {
    std::string tip;
    std::string balloonTitle;
    std::string balloonText; // empty: no balloon
    int balloonIcon = 0;     // 1 information, 2 warning, 3 error
    int balloonTimeoutMilliseconds = 30000;
    int flags = 23; // 1 message, 2 icon, 4 tip, 8 state, 16 balloon
    int version = 3;
};

namespace tray_message {
inline constexpr int LeftDoubleClick = 515;
inline constexpr int RightButtonUp = 517;
} // namespace tray_message

class Tray {
  public:
    virtual ~Tray() = default;

    // The three operations answer whether there is a notification area to do it in. An icon that was added
    // comes back by itself when the area does.
    virtual bool Add(const TrayRecord& record) = 0;
    virtual bool Modify(const TrayRecord& record) = 0;
    virtual bool SetVersion(int version) = 0;
    virtual void Remove() = 0;

    // The menu of the icon, for areas that want to know it beforehand. Owned by the caller, null for none.
    virtual void SetMenu(Menu* menu) = 0;
    // Opens a menu at the pointer and waits until it is closed and what was picked is done. The event loop's
    // timers are held while it is open. A second call while one is open does nothing.
    virtual void Popup(Menu& menu) = 0;
    // Told of what a person does with the icon, as a tray_message.
    virtual void OnMessage(std::function<void(int message)> handler) = 0;
};

} // namespace quorvane
