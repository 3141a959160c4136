#pragma once

#include "platform/desktop.h"
#include "platform/memory/call_log.h"

namespace quorvane {

class MemoryDesktop : public Desktop {
  public:
    explicit MemoryDesktop(CallLog& calls)
        : calls_(calls) {}

    PixelSize ScreenSize() override { return screenSize; }
    PixelRect WorkArea() override {
        return workArea.value_or(PixelRect{0, 0, screenSize.width, screenSize.height});
    }
    bool SetWallpaper(const std::string& path) override {
        calls_.Add("desktop.SetWallpaper " + path);
        if (refuseWallpaper) return false;
        wallpaper = path;
        return true;
    }
    void ShowBusyPointer(bool busy) override {
        calls_.Add(std::string("desktop.ShowBusyPointer ") + (busy ? "on" : "off"));
        busyPointer = busy;
    }

    std::optional<PixelPoint> PointerPosition() override { return pointer; }
    void Capture(CaptureArea area, Captured done) override {
        static constexpr const char* Areas[] = {"screen", "top window", "top window content"};
        calls_.Add(std::string("desktop.Capture ") + Areas[static_cast<int>(area)]);
        done(capture ? capture(area) : nullptr);
    }

    PixelSize screenSize{1024, 768};
    std::optional<PixelRect> workArea; // unset: all of the screen
    std::optional<PixelPoint> pointer = PixelPoint{512, 384};
    std::function<std::unique_ptr<Surface>(CaptureArea)> capture; // unset: nothing can be seen
    bool refuseWallpaper = false;
    bool busyPointer = false;
    std::string wallpaper; // the file handed over last

  private:
    CallLog& calls_;
};

} // namespace quorvane
