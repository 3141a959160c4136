#pragma once

#include "platform/linux/drawing/surface.h"

#include <functional>
#include <vector>

namespace quorvane {

class LinuxPicture;

// Notes what is painted and paints it when the bitmap is written, stripe by stripe, with the picture flowing
// through from its decoder. What cannot be had that way (the pixels themselves, several pictures, one that
// lies on its side) is painted on a whole surface, which from then on is painted at once.
class StripedSurface final : public Surface {
  public:
    StripedSurface(PixelSize size, ScreenDots dots, GuiSession& gui);

    PixelSize Size() const override { return size_; }
    void Fill(const PixelRect& area, Color color) override;
    void GradientRectangle(const GradientVertex& upperLeft, const GradientVertex& lowerRight,
                           GradientDirection direction) override;
    void GradientTriangle(const GradientVertex& a, const GradientVertex& b, const GradientVertex& c) override;
    void Line(double x1, double y1, double x2, double y2, double width, Color color) override;
    bool StretchPicture(const Picture& picture, const PixelRect& target, std::string& why) override;
    double TextWidth(const FontSpec& font, std::string_view text) override;
    double TextHeight(const FontSpec& font) override;
    void PrintText(double x, double y, const FontSpec& font, Color color, std::string_view text) override;
    PixelView Pixels() override;
    bool WriteBitmap(FileWriter& out) override;
    std::string LateFailure() const override { return lateFailure_; }

  private:
    struct Step {
        std::function<void(Surface& surface)> paint;
        // The rows of a line of text; none for what may be painted a few rows at a time.
        int top = 0;
        int end = 0;
        bool IsText() const { return top < end; }
    };

    void Paint(Step step);
    bool PaintWhole();
    int EndOfStripe(int from) const;
    void PaintStripe(const std::vector<Step>& steps, const Canvas& stripe) const;

    PixelSize size_;
    ScreenDots dots_;
    GuiSession& gui_;
    std::uint8_t dot_[4] = {};
    LinuxSurface measuring_;
    std::vector<Step> under_; // the picture
    const LinuxPicture* picture_ = nullptr;
    PixelRect target_; // of the picture
    std::vector<Step> over_;
    std::unique_ptr<LinuxSurface> whole_; // once it is painted
    std::string lateFailure_;
};

} // namespace quorvane
