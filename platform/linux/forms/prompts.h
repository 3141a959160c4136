#pragma once

#include "platform/forms/form_host.h"
#include "platform/prompts.h"

namespace quorvane {

// Questions in dialogues of the toolkit. Needs a QApplication.
class QtPrompts final : public Prompts {
  public:
    explicit QtPrompts(FormHost& host)
        : host_(host) {}

    Answer Message(const std::string& text, const std::string& title, int style) override;
    std::optional<std::string> File(FileQuestion& question) override;
    std::optional<FontSpec> Font(const FontSpec& preset) override;
    std::optional<Color> PickColor(Color preset) override;

  private:
    FormHost& host_;
};

} // namespace quorvane
