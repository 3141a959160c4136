#pragma once

#include "platform/desktop.h"

namespace quorvane {

class EventLoop;
class Store;
class System;

// Needs a QGuiApplication, for the screens and the pointer.
class LinuxDesktop final : public Desktop {
  public:
    LinuxDesktop(Store& store, System& system, EventLoop& events);

    // Of the primary screen, in its own pixels.
    PixelSize ScreenSize() override;
    bool SetWallpaper(const std::string& path) override;
    void ShowBusyPointer(bool busy) override;
    // On X11 alone: what a Wayland session lets X programs know of the pointer is out of date.
    std::optional<PixelPoint> PointerPosition() override;

  private:
    Store& store_;
    System& system_;
    EventLoop& events_;
    bool busy_ = false;
    bool complained_ = false; // that nothing could be told to this desktop
};

} // namespace quorvane
