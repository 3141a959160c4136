#pragma once

#include "platform/drawing.h"
#include "platform/windows/base/win32.h"

#include <wincodec.h>

namespace quorvane {

// GDI for surfaces and text, the imaging component (WIC) for the formats that the system knows, metafiles
// played by the system itself. Twips and points follow the resolution of the screen.
class WindowsDrawing final : public Drawing {
  public:
    WindowsDrawing();
    ~WindowsDrawing() override;

    std::unique_ptr<Surface> CreateSurface(PixelSize size) override;
    std::unique_ptr<Picture> LoadPicture(const std::string& path, std::string& why) override;
    bool WritePng(const PixelView& pixels, FileWriter& out) override;
    double TwipsPerPixelX() const override;
    double TwipsPerPixelY() const override;

  private:
    // Null where the component is missing.
    IWICImagingFactory* Imaging();

    bool ownsCom_ = false;
    bool looked_ = false;
    IWICImagingFactory* imaging_ = nullptr;
};

// The font of a description in pixels of a screen of `dotsPerInch`, for surfaces and, in the quality that the
// person chose, for windows. The caller deletes it.
HFONT CreateFontFor(const FontSpec& font, int dotsPerInch);
HFONT CreateWindowFont(const FontSpec& font, int dotsPerInch);

// Puts the surface's pixels on a device context at (x, y).
void PaintSurface(Surface& surface, HDC target, int x, int y);

} // namespace quorvane
