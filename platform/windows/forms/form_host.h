#pragma once

#include "platform/forms/form_host.h"
#include "platform/windows/base/win32.h"

#include <string>
#include <vector>

namespace quorvane {

class WindowsEventLoop;
class WindowsFormView;

// Forms as windows with native controls. All measures follow the resolution of the first screen.
class WindowsFormHost final : public FormHost {
  public:
    explicit WindowsFormHost(WindowsEventLoop& events);
    ~WindowsFormHost() override;

    std::unique_ptr<FormView> Create(Form& form) override;
    FontSpec DefaultFont() override { return defaultFont_; }
    TwipSize TextSize(const FontSpec& font, std::string_view text, int wrapWidth) override;
    Insets Chrome(ControlKind kind) override;
    TwipScale Scale() override { return scale_; }
    TwipRect WorkArea() override;

    WindowsEventLoop& Events() const { return events_; }
    int DotsPerInch() const { return dotsPerInch_; }
    // The host's font for controls that have none of their own; it lives as long as the host.
    HFONT Font() const { return font_; }
    // The window that a question to the person belongs to; null where no form is shown.
    HWND ActiveWindow() const;

  private:
    friend class WindowsFormView;
    void Joined(WindowsFormView& view) { views_.push_back(&view); }
    void Left(WindowsFormView& view);
    const std::vector<WindowsFormView*>& Views() const { return views_; }
    bool FilterMessage(MSG& message);
    Insets ChromeInPixels(ControlKind kind) const;

    WindowsEventLoop& events_;
    int dotsPerInch_;
    TwipScale scale_;
    FontSpec defaultFont_;
    HFONT font_ = nullptr;
    HDC measuring_ = nullptr;
    int lineHeight_ = 0; // of the default font, in pixels
    int filter_ = 0;
    std::vector<WindowsFormView*> views_;
};

} // namespace quorvane
