#pragma once

#include "config/global_record.h"

#include <string>
#include <string_view>
#include <unordered_set>

namespace quorvane {

// The blacklist as one draw asks it: whole paths, trimmed and without regard to case, active entries only.
// Nothing is kept from draw to draw, since everybody may change the record's list. The first questions walk
// the list as it stands, which for the usual one question beats any preparation; a draw that asks more often
// gets an index.
class Blacklist {
  public:
    explicit Blacklist(const OneBased<ListedFile>& entries)
        : entries_(entries) {}

    bool Holds(std::string_view path);

  private:
    static constexpr int WalksBeforeIndex = 4;

    bool FindByWalk(std::string_view folded) const;

    const OneBased<ListedFile>& entries_;
    std::unordered_set<std::string> index_; // folded paths of the active entries
    int asked_ = 0;
};

} // namespace quorvane
