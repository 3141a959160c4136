#include "commands/message.h"

#include <charconv>

namespace quorvane::commands {
namespace {

constexpr char Version = 1;
constexpr std::size_t MostWords = 1000;

// Texts one behind the other, each behind its length in decimal and a blank.
void Append(std::string& bytes, std::string_view text) {
    bytes.append(std::to_string(text.size())).append(" ").append(text);
}

class Texts {
  public:
    explicit Texts(std::string_view bytes)
        : rest_(bytes) {
        good_ = !rest_.empty() && rest_[0] == Version;
        if (good_) rest_.remove_prefix(1);
    }
    bool AtEnd() const { return good_ && rest_.empty(); }
    bool Good() const { return good_; }

    std::string Next() {
        std::size_t size = 0;
        const auto number = std::from_chars(rest_.data(), rest_.data() + rest_.size(), size);
        const auto digits = static_cast<std::size_t>(number.ptr - rest_.data());
        good_ = good_ && number.ec == std::errc() && digits < rest_.size() && rest_[digits] == ' ' &&
                size <= rest_.size() - digits - 1;
        if (!good_) return {};
        std::string text(rest_.substr(digits + 1, size));
        rest_.remove_prefix(digits + 1 + size);
        return text;
    }

  private:
    std::string_view rest_;
    bool good_ = false;
};

} // namespace

std::string ToBytes(const Question& question) {
    std::string bytes(1, Version);
    Append(bytes, question.folder);
    Append(bytes, question.content ? "+" + *question.content : "-");
    for (const std::string& word : question.words)
        Append(bytes, word);
    return bytes;
}

std::optional<Question> QuestionOf(std::string_view bytes) {
    Texts texts(bytes);
    Question question;
    question.folder = texts.Next();
    const std::string content = texts.Next();
    if (content.starts_with('+')) question.content = content.substr(1);
    while (texts.Good() && !texts.AtEnd() && question.words.size() <= MostWords)
        question.words.push_back(texts.Next());
    if (!texts.AtEnd()) return std::nullopt;
    return question;
}

std::string ToBytes(const Answer& answer) {
    std::string bytes(1, Version);
    Append(bytes, std::to_string(answer.status));
    Append(bytes, answer.out);
    Append(bytes, answer.problem);
    return bytes;
}

std::optional<Answer> AnswerOf(std::string_view bytes) {
    Texts texts(bytes);
    Answer answer;
    const std::string status = texts.Next();
    answer.out = texts.Next();
    answer.problem = texts.Next();
    if (!texts.AtEnd() || (status != "0" && status != "1" && status != "2")) return std::nullopt;
    answer.status = status[0] - '0';
    return answer;
}

std::string AnswerTo(std::string_view bytes, Place& place) {
    const auto question = QuestionOf(bytes);
    if (!question) return ToBytes(Answer{Refused, {}, "the running program is of another version"});
    place.folder = question->folder;
    place.content = question->content;
    return ToBytes(RunRecordCommand(question->words, place));
}

} // namespace quorvane::commands
