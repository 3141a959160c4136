#pragma once

#include "platform/prompts.h"

namespace quorvane {

class Forms;
class WindowsEventLoop;
class WindowsFormHost;
class WindowsDrawing;

// The system's own boxes; the line is asked for by a small form.
class WindowsPrompts final : public Prompts {
  public:
    WindowsPrompts(WindowsFormHost& host, WindowsEventLoop& events, WindowsDrawing& drawing)
        : host_(host)
        , events_(events)
        , drawing_(drawing) {}

    Answer Message(const std::string& text, const std::string& title, int style) override;
    std::optional<std::string> Line(const std::string& text, const std::string& title,
                                    const std::string& preset) override;
    std::optional<std::string> File(FileQuestion& question) override;
    std::optional<std::string> Folder(const std::string& title, const std::string& start) override;
    std::optional<FontSpec> Font(const FontSpec& preset) override;
    std::optional<Color> PickColor(Color preset) override;

  private:
    WindowsFormHost& host_;
    WindowsEventLoop& events_;
    WindowsDrawing& drawing_;
};

} // namespace quorvane
