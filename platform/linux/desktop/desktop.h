#pragma once

#include "platform/desktop.h"

#include <QTimer>

namespace quorvane {

class EventLoop;
class Files;
class Store;
class System;

// Needs a QGuiApplication, for the screens and the pointer.
class LinuxDesktop final : public Desktop {
  public:
    LinuxDesktop(Store& store, System& system, EventLoop& events, Files& files);

    // Of the primary screen, in its own pixels whatever scale is set.
    PixelSize ScreenSize() override;
    PixelRect WorkArea() override;
    bool SetWallpaper(const std::string& path) override;
    void ShowBusyPointer(bool busy) override;
    // On X11 alone: what a Wayland session lets X programs know of the pointer is out of date.
    std::optional<PixelPoint> PointerPosition() override;

  private:
    void WatchScreens();

    Store& store_;
    System& system_;
    EventLoop& events_;
    Files& files_;
    std::string painted_; // the file that the root window of plain X shows, once it does
    QTimer settle_;       // after a change of the screens, which comes in several steps
    bool busy_ = false;
    bool complained_ = false; // that nothing could be told to this desktop
};

} // namespace quorvane
