#pragma once

#include "platform/prompts.h"

namespace quorvane {

class WindowsEventLoop;
class WindowsFormHost;

// The system's own boxes.
class WindowsPrompts final : public Prompts {
  public:
    WindowsPrompts(WindowsFormHost& host, WindowsEventLoop& events)
        : host_(host)
        , events_(events) {}

    Answer Message(const std::string& text, const std::string& title, int style) override;
    std::optional<std::string> File(FileQuestion& question) override;
    std::optional<FontSpec> Font(const FontSpec& preset) override;
    std::optional<Color> PickColor(Color preset) override;

  private:
    WindowsFormHost& host_;
    WindowsEventLoop& events_;
};

} // namespace quorvane
