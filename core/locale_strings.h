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

    bool Loaded() const { return loaded_; }
    void SetLoaded(bool loaded) { loaded_ = loaded; }

    // The empty text for a number that the file lacks or that lies outside the table.
    std::string_view Text(int id) const {
        const auto place = static_cast<std::size_t>(id);
        return id >= 1 && place < texts_.size() ? std::string_view(texts_[place]) : std::string_view();
    }
    // The table's text where a locale is loaded, even an empty one; `builtIn` otherwise.
    std::string_view TextOr(int id, std::string_view builtIn) const { return loaded_ ? Text(id) : builtIn; }

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
    std::vector<std::string> texts_;
};

} // namespace quorvane
