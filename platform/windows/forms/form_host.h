#pragma once

#include "platform/forms/form_host.h"
#include "platform/windows/base/win32.h"
#include "platform/windows/forms/metrics.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace quorvane {

class WindowsEventLoop;
class WindowsFormView;

// Forms as windows with native controls.
class WindowsFormHost final : public FormHost {
  public:
    explicit WindowsFormHost(WindowsEventLoop& events);
    ~WindowsFormHost() override;

    std::unique_ptr<FormView> Create(Form& form) override;
    FontSpec DefaultFont() override { return first_->DefaultFont(); }
    TwipSize TextSize(const FontSpec& font, std::string_view text, int wrapWidth) override {
        return first_->TextSize(font, text, wrapWidth);
    }
    Insets Chrome(ControlKind kind) override { return first_->Chrome(kind); }
    TwipScale Scale() override { return first_->Scale(); }
    TwipRect WorkArea() override;

    WindowsEventLoop& Events() const { return events_; }
    int DotsPerInch() const { return first_->DotsPerInch(); }
    std::shared_ptr<WindowsMetrics> MetricsFor(int dotsPerInch);
    // The window that a question to the person belongs to; null where no form is shown.
    HWND ActiveWindow() const;

  private:
    friend class WindowsFormView;
    void Joined(WindowsFormView& view) { views_.push_back(&view); }
    void Left(WindowsFormView& view);
    const std::vector<WindowsFormView*>& Views() const { return views_; }
    bool FilterMessage(MSG& message);
    void Remeasure();

    WindowsEventLoop& events_;
    std::shared_ptr<WindowsMetrics> first_; // of the first screen
    std::map<int, std::weak_ptr<WindowsMetrics>> others_;
    int filter_ = 0;
    std::shared_ptr<WindowsFormHost*> self_ = std::make_shared<WindowsFormHost*>(this);
    std::vector<WindowsFormView*> views_;
};

} // namespace quorvane
