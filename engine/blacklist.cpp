#include "engine/blacklist.h"

#include "core/text.h"

#include <algorithm>

namespace quorvane {
namespace {

// Folds to `folded`? Compared from the end, where paths of one folder differ, and without a copy as long as
// the letters are ASCII.
bool FoldsTo(std::string_view text, std::string_view folded) {
    if (text.size() != folded.size()) return false; // folding never changes a length
    for (std::size_t at = text.size(); at-- > 0;) {
        const char c = text[at];
        if (c & 0x80) return LowerCase(text) == folded;
        if ((c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c) != folded[at]) return false;
    }
    return true;
}

} // namespace

bool Blacklist::Holds(std::string_view path) {
    const std::string folded = FoldedName(path);
    if (++asked_ <= WalksBeforeIndex) return FindByWalk(folded);
    if (index_.empty()) {
        for (const ListedFile& entry : entries_) {
            if (entry.Active) index_.insert(FoldedName(entry.Path));
        }
    }
    return index_.contains(folded);
}

bool Blacklist::FindByWalk(std::string_view folded) const {
    return std::any_of(entries_.begin(), entries_.end(), [folded](const ListedFile& entry) {
        return entry.Active && entry.Path.size() >= folded.size() && FoldsTo(Trim(entry.Path), folded);
    });
}

} // namespace quorvane
