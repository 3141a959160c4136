#pragma once

#include "platform/forms/form_host.h"
#include "platform/prompts.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace quorvane {

// Questions answered from a queue, in order and by kind. Every question is kept with its exact words. One
// that nobody expected is an error of the test: it throws std::logic_error with the words of the question,
// and so does an answer of another kind than the question. A message box that only informs (no Yes and No)
// needs no answer.
class MemoryPrompts final : public Prompts {
  public:
    explicit MemoryPrompts(FormHost& host)
        : host_(host) {}

    enum class Kind { Message, File, Font, PickColor };
    struct Question {
        Kind kind = Kind::Message;
        std::string text;
        std::string title;
        int style = 0;     // of a message
        FileQuestion file; // as it was asked
        FontSpec font;     // preset
        Color color = 0;   // preset
    };

    // The answer given and the question asked are both std::nullopt for "cancelled".
    void WillAnswer(Answer answer) { Prepare({Kind::Message, answer, {}, {}, {}}); }
    void WillChooseFile(std::optional<std::string> path) {
        Prepare({Kind::File, {}, std::move(path), {}, {}});
    }
    void WillChooseFont(std::optional<FontSpec> font) { Prepare({Kind::Font, {}, {}, std::move(font), {}}); }
    void WillChooseColor(std::optional<Color> color) { Prepare({Kind::PickColor, {}, {}, {}, color}); }

    // What happens while a question waits for its answer: timers fire, windows close.
    std::function<void(const Question& question)> whileAsking;

    std::vector<Question> asked;
    bool AllAnswered() const { return answers_.empty(); } // every prepared answer was asked for

    Answer Message(const std::string& text, const std::string& title, int style) override;
    std::optional<std::string> File(FileQuestion& question) override;
    std::optional<FontSpec> Font(const FontSpec& preset) override;
    std::optional<Color> PickColor(Color preset) override;

  private:
    struct Prepared {
        Kind kind;
        Answer answer = Answer::Ok;
        std::optional<std::string> text;
        std::optional<FontSpec> font;
        std::optional<Color> color;
    };
    void Prepare(Prepared answer) { answers_.push_back(std::move(answer)); }
    Prepared Ask(Question question);

    FormHost& host_;
    std::deque<Prepared> answers_;
};

} // namespace quorvane
