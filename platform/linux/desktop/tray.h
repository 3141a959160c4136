#pragma once

#include "platform/event_loop.h"
#include "platform/linux/desktop/balloons.h"
#include "platform/linux/desktop/tray_area.h"
#include "platform/tray.h"

#include <QElapsedTimer>
#include <QTimer>
#include <memory>
#include <optional>

class QMenu;
class QSystemTrayIcon;

namespace quorvane {

class System;

// The icon in whatever notification area the desktop has: the one that windows are embedded in, or the one
// over D-Bus. Where there is none, the program runs on, and the icon comes when an area does. Balloons go
// their own way, by the desktop's notification service.
class LinuxTray final : public Tray {
  public:
    LinuxTray(EventLoop& events, System& system);
    ~LinuxTray() override;

    bool Add(const TrayRecord& record) override;
    bool Modify(const TrayRecord& record) override;
    bool SetVersion(int) override { return icon_ != nullptr; }
    void Remove() override;
    void SetMenu(Menu* menu) override;
    void Popup(Menu& menu) override;
    void OnMessage(std::function<void(int message)> handler) override { handler_ = std::move(handler); }

  private:
    void AppearWhereThereIsAnArea();
    void ComplainOfNoArea();
    void Apply();
    void HoldTimers();
    void ReleaseTimers();
    void Activated(int reason);
    void Tell(int message);

    EventLoop& events_;
    System& system_;
    TrayRecord record_;
    bool added_ = false;
    bool popupOpen_ = false;
    Menu* menu_ = nullptr;
    std::unique_ptr<QMenu> shownMenu_;
    std::optional<BusTrayArea> busArea_;
    std::optional<WindowTrayArea> windowArea_;
    bool overBus_ = false;                  // the icon is shown there
    std::unique_ptr<QSystemTrayIcon> icon_; // exists from the first time that an area was there
    Balloons balloons_;
    QTimer patience_;                // with an area that comes up together with the program
    std::optional<TimersHeld> held_; // while the icon's own menu is open
    QTimer closed_;                  // runs out a little after the menu's closing
    QTimer look_;                    // while it is open in an area over the bus
    QElapsedTimer opened_;
    QElapsedTimer appeared_;
    QElapsedTimer lastActivation_;
    std::function<void(int message)> handler_;
};

} // namespace quorvane
