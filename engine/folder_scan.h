#pragma once

#include "config/path_list.h"
#include "engine/complaints.h"
#include "platform/files.h"
#include "platform/shared/breather.h"

#include <map>
#include <string>
#include <string_view>

namespace quorvane {

// How many levels of subfolders a source's text asks for: a number, or "inf" in any letter case for no limit.
// A text that is no number is 0. Throws Overflow for a number beyond double precision.
double ScanLevel(std::string_view text);

// Adds the files of folders to a list of paths. Events run in the middle of it.
class FolderScan {
  public:
    // A listing counts its folders, and its files, up to here; what lies beyond is left out and told of.
    static constexpr std::size_t ListingLimit = 32767;

    FolderScan(Files& files, Breather& breather, Complaints& complaints, PathList& target)
        : files_(files)
        , breather_(breather)
        , complaints_(complaints)
        , target_(target) {}

    // The files of `path`, behind those of its subfolders, which are entered while `level` is greater than
    // `depth`. `path` ends in a separator. A folder that links lead to in several ways gives its files once
    // in the life of this object. False where a folder could not be read; the others are there.
    bool GetFiles(const std::string& path, const std::string& pattern, double level, int depth);

  private:
    enum class Visit { First, Higher, Again };

    Visit VisitOf(const FolderListing& listing, double level, int depth);
    bool EnterFolders(const NameList& names, const std::string& path, const std::string& pattern,
                      double level, int depth);
    void AddFiles(const NameList& names, const std::string& path);
    std::size_t Counted(const NameList& names, const std::string& path);

    Files& files_;
    Breather& breather_;
    Complaints& complaints_;
    PathList& target_;
    FolderListing listing_;               // used again and again, so that it is made once
    std::map<FolderIdentity, int> depth_; // at which each folder was entered
};

} // namespace quorvane
