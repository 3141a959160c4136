#pragma once

#include "platform/drawing.h"
#include "platform/linux/drawing/gui_session.h"

namespace quorvane {

// Needs no display; where the program has one, the screen's resolution is its.
class LinuxDrawing final : public Drawing {
  public:
    LinuxDrawing();

    std::unique_ptr<Surface> CreateSurface(PixelSize size) override;
    std::unique_ptr<Surface> CreateCanvas(PixelSize size) override;
    std::unique_ptr<Picture> LoadPicture(const std::string& path, std::string& why) override;
    bool WritePng(const PixelView& pixels, FileWriter& out) override;
    double TwipsPerPixelX() const override;
    double TwipsPerPixelY() const override;

  private:
    GuiSession gui_;
};

} // namespace quorvane
