#pragma once

#include "platform/tray.h"

#include <QElapsedTimer>
#include <QTimer>
#include <memory>

class QMenu;
class QSystemTrayIcon;

namespace quorvane {

class EventLoop;
class System;

// The icon in whatever notification area the desktop has: the one that windows are embedded in, or the one
// over D-Bus. Where there is none, the program runs on, and the icon comes when an area does.
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
    void Search();
    bool AppearWhereThereIsAnArea();
    void Apply();
    void Activated(int reason);
    void Tell(int message);

    EventLoop& events_;
    System& system_;
    TrayRecord record_;
    bool added_ = false;
    bool complained_ = false;
    bool popupOpen_ = false;
    Menu* menu_ = nullptr;
    std::unique_ptr<QMenu> shownMenu_;
    std::unique_ptr<QSystemTrayIcon> icon_; // exists from the first time that an area was there
    QTimer search_;                         // for an area, while there is none
    QElapsedTimer lastActivation_;
    std::function<void(int message)> handler_;
};

} // namespace quorvane
