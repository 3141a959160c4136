#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// The file patterns of a listing: one or more patterns of "*" (any run of letters, also none) and "?" (one
// letter) with ";" between them, without regard to case. "*.*" takes every name, one without a point too.
// Blanks around a pattern and empty patterns do not count; a text with nothing else in it takes every name.
class NamePattern {
  public:
    explicit NamePattern(std::string_view patterns);

    bool Fits(std::string_view name) const;

  private:
    // Nearly every pattern in use is "*.something": its tail is compared without folding the whole name.
    struct Alternative {
        std::string folded;
        bool isTail = false; // `folded` is a plain ASCII tail, its star taken off
    };

    bool takesAll_ = false;
    bool needsFolding_ = false;
    std::vector<Alternative> alternatives_;
};

} // namespace quorvane
