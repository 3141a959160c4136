#include "engine/folder_scan.h"

#include "core/numbers.h"
#include "core/text.h"

#include <utility>

namespace quorvane {

namespace {

constexpr double NoLimit = 1e308;

} // namespace

double ScanLevel(std::string_view text) {
    return FoldedName(text) == "inf" ? NoLimit : LeadingNumber(text);
}

bool FolderScan::GetFiles(const std::string& path, const std::string& pattern, double level, int depth) {
    bool whole = files_.List(path, pattern, listing_);
    if (!whole) complaints_.Tell(path, "the folder cannot be read");
    breather_.Breathe();
    const Visit visit = VisitOf(listing_, level, depth);
    if (visit == Visit::Again) return whole;
    if (level > depth && listing_.folders.size() > 0) {
        const FolderListing own = std::exchange(listing_, {}); // the subfolders need the other
        whole = EnterFolders(own.folders, path, pattern, level, depth + 1) && whole;
        if (visit == Visit::First) AddFiles(own.files, path);
    } else if (visit == Visit::First) {
        AddFiles(listing_.files, path);
    }
    return whole;
}

bool FolderScan::EnterFolders(const NameList& names, const std::string& path, const std::string& pattern,
                              double level, int depth) {
    bool whole = true;
    const std::size_t count = Counted(names, path);
    for (std::size_t i = 0; i < count; ++i) {
        std::string folder = path;
        folder.append(names[i]).push_back(files_.Separator());
        whole = GetFiles(folder, pattern, level, depth) && whole;
    }
    return whole;
}

void FolderScan::AddFiles(const NameList& names, const std::string& path) {
    const std::size_t count = Counted(names, path);
    for (std::size_t i = 0; i < count; ++i)
        target_.Add(path, names[i]);
}

// A folder that is met again less deep may reach folders below it that the level kept out before.
FolderScan::Visit FolderScan::VisitOf(const FolderListing& listing, double level, int depth) {
    if (!listing.identity) return Visit::First;
    const auto [known, isNew] = depth_.try_emplace(*listing.identity, depth);
    if (isNew) return Visit::First;
    if (depth >= known->second || level >= NoLimit) return Visit::Again;
    known->second = depth;
    return Visit::Higher;
}

std::size_t FolderScan::Counted(const NameList& names, const std::string& path) {
    if (names.size() <= ListingLimit) return names.size();
    complaints_.Tell(path, "more than " + std::to_string(ListingLimit) + " entries, the rest is left out");
    return ListingLimit;
}

} // namespace quorvane
