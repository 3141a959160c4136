#pragma once

#include "platform/desktop.h"

namespace quorvane {

class WindowsDesktop final : public Desktop {
  public:
    PixelSize ScreenSize() override;
    PixelRect WorkArea() override;
    bool SetWallpaper(const std::string& path) override;
    void ShowBusyPointer(bool busy) override;
    std::optional<PixelPoint> PointerPosition() override;
};

} // namespace quorvane
