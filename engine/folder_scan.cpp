#include "engine/folder_scan.h"

#include "core/numbers.h"
#include "core/text.h"

namespace quorvane {

double ScanLevel(std::string_view text) {
    return FoldedName(text) == "inf" ? 1e308 : LeadingNumber(text);
}

bool FolderScan::GetFiles(const std::string& path, const std::string& pattern, double level, int depth) {
    FolderListing listing;
    bool whole = files_.List(path, pattern, listing);
    if (!whole) complaints_.Tell(path, "the folder cannot be read");
    breather_.Breathe();
    if (level > depth) {
        const std::size_t folders = Counted(listing.folders, path);
        for (std::size_t i = 0; i < folders; ++i) {
            std::string folder = path;
            folder.append(listing.folders[i]).push_back(files_.Separator());
            whole = GetFiles(folder, pattern, level, depth + 1) && whole;
        }
    }
    const std::size_t files = Counted(listing.files, path);
    for (std::size_t i = 0; i < files; ++i) {
        target_.Add(path, listing.files[i]);
    }
    return whole;
}

std::size_t FolderScan::Counted(const NameList& names, const std::string& path) {
    if (names.size() <= ListingLimit) return names.size();
    complaints_.Tell(path, "more than " + std::to_string(ListingLimit) + " entries, the rest is left out");
    return ListingLimit;
}

} // namespace quorvane
