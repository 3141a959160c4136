#pragma once

#include <string>
#include <vector>

namespace quorvane {

class LocaleStrings;

// Words that a person reads: as the program is written, and their number in the table of the locale.
//
//     Button Command1{*this, "Command1", {"&Apply", 122}};
//
// Words without a number, a name or a number worked out, read the same in every language.
class Words {
  public:
    static constexpr int NoId = 0;

    Words() = default;
    // "%1" to "%9" in the words, translated or not, stand for the arguments.
    Words(std::string builtIn, int id = NoId, std::vector<std::string> arguments = {});
    Words(const char* builtIn, int id = NoId, std::vector<std::string> arguments = {})
        : Words(std::string(builtIn), id, std::move(arguments)) {}

    // As they read in the language of the last Localise, the built-in ones before.
    const std::string& Text() const { return text_; }
    int Id() const { return id_; }

    // Takes the words from the table. True where they read otherwise than before.
    bool Localise(const LocaleStrings& table);

    bool operator==(const Words&) const = default;

  private:
    std::string builtIn_;
    int id_ = NoId;
    std::vector<std::string> arguments_;
    std::string text_;
};

} // namespace quorvane
