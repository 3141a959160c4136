#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvane {

// The translated texts of the interface by their number, 1 to 4096, as a locale file gave them. Until a file
// has been read nothing is loaded, and every caller shows its own built-in words.
class LocaleStrings {
  public:
    static constexpr int MaxId = 4096;
    // The numbers below are those of every locale file, and what a file leaves out there reads as nothing.
    // The numbers from here on came later: what an older file lacks keeps its built-in words.
    static constexpr int FirstLateId = 120;

    bool Loaded() const { return loaded_; }
    void SetLoaded(bool loaded) { loaded_ = loaded; }

    // Whether the language is written from right to left.
    bool RightToLeft() const { return loaded_ && rightToLeft_; }
    void SetRightToLeft(bool rightToLeft) { rightToLeft_ = rightToLeft; }

    // The empty text for a number that the file lacks or that lies outside the table.
    std::string_view Text(int id) const {
        const auto place = static_cast<std::size_t>(id);
        return id >= 1 && place < texts_.size() ? std::string_view(texts_[place]) : std::string_view();
    }
    // The words to show for a number whose built-in ones are `builtIn`.
    std::string_view TextOr(int id, std::string_view builtIn) const {
        const std::string_view text = loaded_ ? Text(id) : builtIn;
        return text.empty() && id >= FirstLateId ? builtIn : text;
    }

    // False, with nothing done, for a number outside the table.
    bool Set(int id, std::string text) {
        if (id < 1 || id > MaxId) return false;
        const auto place = static_cast<std::size_t>(id);
        if (place >= texts_.size()) texts_.resize(place + 1);
        texts_[place] = std::move(text);
        return true;
    }

  private:
    bool loaded_ = false;
    bool rightToLeft_ = false;
    std::vector<std::string> texts_;
};

} // namespace quorvane
