#pragma once

#include "platform/forms/form_host.h"
#include "platform/prompts.h"

#include <QTranslator>

namespace quorvane {

// Questions in dialogues of the toolkit. Needs a QApplication.
class QtPrompts final : public Prompts {
  public:
    explicit QtPrompts(FormHost& host);
    ~QtPrompts() override;
    QtPrompts(const QtPrompts&) = delete;
    QtPrompts& operator=(const QtPrompts&) = delete;

    Answer Message(const std::string& text, const std::string& title, int style) override;
    std::optional<std::string> File(FileQuestion& question) override;
    std::optional<FontSpec> Font(const FontSpec& preset) override;
    std::optional<Color> PickColor(Color preset) override;

  private:
    // The toolkit's buttons in the words of the system's own boxes.
    class ButtonWords final : public QTranslator {
      public:
        bool isEmpty() const override { return false; }
        QString translate(const char* context, const char* source, const char* disambiguation,
                          int number) const override;
    };

    FormHost& host_;
    ButtonWords words_;
};

} // namespace quorvane
