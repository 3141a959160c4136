#include "platform/memory/prompts.h"

#include <stdexcept>

namespace quorvane {

namespace {

bool AsksYesOrNo(int style) {
    return (style & 7) == 4;
}

} // namespace

MemoryPrompts::Prepared MemoryPrompts::Ask(Question question) {
    const QuestionStands stands(host_.Order());
    asked.push_back(question);
    if (whileAsking) whileAsking(question);
    const bool informs = question.kind == Kind::Message && !AsksYesOrNo(question.style);
    const bool prepared = !answers_.empty() && answers_.front().kind == question.kind;
    if (prepared && !(informs && answers_.front().answer != Answer::Ok)) {
        Prepared answer = std::move(answers_.front());
        answers_.pop_front();
        return answer;
    }
    if (informs) return {Kind::Message, Answer::Ok, {}, {}, {}};
    throw std::logic_error("nobody expected the question \"" + question.text + "\" titled \"" +
                           question.title + "\"");
}

Answer MemoryPrompts::Message(const std::string& text, const std::string& title, int style) {
    Question question;
    question.text = text;
    question.title = title;
    question.style = style;
    return Ask(std::move(question)).answer;
}

std::optional<std::string> MemoryPrompts::File(FileQuestion& file) {
    Question question;
    question.kind = Kind::File;
    question.title = file.title;
    question.file = file;
    return Ask(std::move(question)).text;
}

std::optional<FontSpec> MemoryPrompts::Font(const FontSpec& preset) {
    Question question;
    question.kind = Kind::Font;
    question.font = preset;
    return Ask(std::move(question)).font;
}

std::optional<Color> MemoryPrompts::PickColor(Color preset) {
    Question question;
    question.kind = Kind::PickColor;
    question.color = preset;
    return Ask(std::move(question)).color;
}

} // namespace quorvane
