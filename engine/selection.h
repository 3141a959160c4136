#pragma once

#include "config/global_record.h"
#include "engine/blacklist.h"
#include "engine/file_list.h"
#include "platform/clock.h"
#include "platform/random.h"

#include <cstdint>
#include <string>

namespace quorvane {

// The draw of the next wallpaper: now and then a favourite, otherwise one of the candidates, never one of the
// blacklist, and never the one in use.
class Selection {
  public:
    Selection(GlobalRecord& record, FileList& fileList, Clock& clock, Random& random)
        : record_(record)
        , fileList_(fileList)
        , clock_(clock)
        , random_(random) {}

    // A path, or the empty text where nothing can be chosen. Whether the file is still there is not asked.
    std::string GetNewWallpaper();

  private:
    static constexpr int CandidateHits = 51; // blacklist hits that end a draw from the candidates
    static constexpr int FavoriteHits = 11;  // and one from the favourites
    // How often the picture in use comes up again before the draw asks whether there is any other.
    static constexpr int RepeatsBeforeDoubt = 16;

    std::string Draw();
    std::string DrawCandidate();
    std::string DrawFavorite();
    std::int32_t ActiveFavorites() const;
    bool CanBeChosen(std::string_view path, Blacklist& blacklist) const;
    bool AnyCandidateCanBeChosen(Blacklist& blacklist) const;
    bool AnyFavoriteCanBeChosen(Blacklist& blacklist) const;
    std::int32_t RandomIndex(std::int32_t count); // 1 to count

    GlobalRecord& record_;
    FileList& fileList_;
    Clock& clock_;
    Random& random_;
};

} // namespace quorvane
