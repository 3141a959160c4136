#pragma once

#include "platform/linux/drawing/mapped_buffer.h"
#include "platform/painting/raster.h"

#include <QImage>

namespace quorvane {

class GuiSession;

struct ScreenDots {
    double x = 96; // an inch
    double y = 96;
};

class LinuxSurface final : public Surface {
  public:
    // Paints on `canvas`, or a stripe of one, with its rows in the order of memory where text is printed.
    // `pixels` is kept as long as the surface, for a canvas that lies in it.
    LinuxSurface(const Canvas& canvas, ScreenDots dots, GuiSession& gui, MappedBuffer pixels = {});

    PixelSize Size() const override { return canvas_.size; }
    void Fill(const PixelRect& area, Color color) override;
    void GradientRectangle(const GradientVertex& upperLeft, const GradientVertex& lowerRight,
                           GradientDirection direction) override;
    void GradientTriangle(const GradientVertex& a, const GradientVertex& b, const GradientVertex& c) override;
    void Line(double x1, double y1, double x2, double y2, double width, Color color) override;
    bool StretchPicture(const Picture& picture, const PixelRect& target, std::string& why) override;
    double TextWidth(const FontSpec& font, std::string_view text) override;
    double TextHeight(const FontSpec& font) override;
    void PrintText(double x, double y, const FontSpec& font, Color color, std::string_view text) override;
    PixelView Pixels() override { return canvas_.View(); }
    bool WriteBitmap(FileWriter& out) override;

  private:
    MappedBuffer pixels_;
    Canvas canvas_;
    QImage image_; // on the same pixels
    GuiSession& gui_;
};

bool FitsSurface(PixelSize size);

// Null where there is no memory for it, or the size is none.
std::unique_ptr<LinuxSurface> MakeSurface(PixelSize size, ScreenDots dots, GuiSession& gui);

} // namespace quorvane
