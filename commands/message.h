#pragma once

#include "commands/record_command.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::commands {

// What goes over the channel. Both begin with a byte that tells the version of the form; what does not have
// the form is no message.

struct Question {
    std::vector<std::string> words; // of the command line, the command's name first
    std::string folder;             // in which it was given
    std::optional<std::string> content;
    bool operator==(const Question&) const = default;
};

std::string ToBytes(const Question& question);
std::optional<Question> QuestionOf(std::string_view bytes);

std::string ToBytes(const Answer& answer);
std::optional<Answer> AnswerOf(std::string_view bytes);

// The running program's part: the answer to whatever came.
std::string AnswerTo(std::string_view question, Place& place);

} // namespace quorvane::commands
