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
    // `buffer` holds the pixels, three bytes each, row by row without gaps.
    LinuxSurface(PixelSize size, MappedBuffer buffer, ScreenDots dots, GuiSession& gui);

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

  private:
    MappedBuffer buffer_;
    Canvas canvas_;
    QImage image_; // on the same pixels
    GuiSession& gui_;
};

} // namespace quorvane
