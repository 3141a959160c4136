#pragma once

#include "platform/forms/form_host.h"
#include "platform/windows/base/resolution.h"

namespace quorvane {

// The measures of screens of one resolution, with the system's fonts and borders as they were when this was
// made.
class WindowsMetrics final : public FormMetrics {
  public:
    explicit WindowsMetrics(int dotsPerInch);
    ~WindowsMetrics() override;
    WindowsMetrics(const WindowsMetrics&) = delete;
    WindowsMetrics& operator=(const WindowsMetrics&) = delete;

    FontSpec DefaultFont() override { return defaultFont_; }
    TwipSize TextSize(const FontSpec& font, std::string_view text, int wrapWidth) override;
    Insets Chrome(ControlKind kind) override;
    TwipScale Scale() override { return scale_; }

    int DotsPerInch() const { return dotsPerInch_; }
    // For controls that have no font of their own; it lives as long as this.
    HFONT Font() const { return font_; }

  private:
    Insets ChromeInPixels(ControlKind kind) const;

    int dotsPerInch_;
    TwipScale scale_;
    FontSpec defaultFont_;
    HFONT font_;
    HDC measuring_;
    int lineHeight_ = 0; // of the default font, in pixels
};

} // namespace quorvane
