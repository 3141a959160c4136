#include "engine/selection.h"

#include "core/run_time_error.h"

#include <algorithm>
#include <cmath>

namespace quorvane {

std::string Selection::GetNewWallpaper() {
    try {
        return Draw();
    } catch (const RunTimeError&) {
        return {}; // the neutral answer
    }
}

std::string Selection::Draw() {
    random_.Seed(SecondsOfDay(clock_.Now()));
    const bool favoritesTakePart = ActiveFavorites() > 0 && record_.UseFavorites;
    const float r = random_.Next();
    if (favoritesTakePart && static_cast<float>(record_.Favorites_Probability) >= r) return DrawFavorite();
    fileList_.BuildFileList(); // a scan that failed in part leaves what it found
    if (record_.Wallpapers_Cnt() > 0) return DrawCandidate();
    return favoritesTakePart ? DrawFavorite() : std::string();
}

std::int32_t Selection::ActiveFavorites() const {
    const auto& favorites = record_.FavoritesSources;
    return static_cast<std::int32_t>(std::count_if(favorites.begin(), favorites.end(),
                                                   [](const ListedFile& file) { return file.Active; }));
}

std::string Selection::DrawCandidate() {
    Blacklist blacklist(record_.BlacklistedSources);
    int hits = 0;
    int repeats = 0;
    for (;;) {
        std::string candidate = record_.Wallpapers[RandomIndex(record_.Wallpapers_Cnt())];
        if (blacklist.Holds(candidate)) {
            if (++hits == CandidateHits) return {};
        } else if (candidate != record_.LastSelectedWallpaper) {
            return candidate;
        } else if (record_.Wallpapers_Cnt() == 1) {
            return {};
        } else if (++repeats == RepeatsBeforeDoubt && !AnyCandidateCanBeChosen(blacklist)) {
            return {};
        }
    }
}

std::string Selection::DrawFavorite() {
    const std::int32_t active = ActiveFavorites(); // counted anew: events ran if the scan came first
    if (active == 0) return {};
    Blacklist blacklist(record_.BlacklistedSources);
    int hits = 0;
    int repeats = 0;
    for (;;) {
        const ListedFile& favorite = record_.FavoritesSources[RandomIndex(record_.FavoritesSrcCnt())];
        if (!favorite.Active) continue;
        if (blacklist.Holds(favorite.Path)) {
            if (++hits == FavoriteHits) return {};
        } else if (favorite.Path != record_.LastSelectedWallpaper) {
            return favorite.Path;
        } else if (active == 1) {
            return {};
        } else if (++repeats == RepeatsBeforeDoubt && !AnyFavoriteCanBeChosen(blacklist)) {
            return {};
        }
    }
}

bool Selection::CanBeChosen(std::string_view path, Blacklist& blacklist) const {
    return path != record_.LastSelectedWallpaper && !blacklist.Holds(path);
}

bool Selection::AnyCandidateCanBeChosen(Blacklist& blacklist) const {
    for (std::int32_t index = 1; index <= record_.Wallpapers_Cnt(); ++index) {
        if (CanBeChosen(record_.Wallpapers[index], blacklist)) return true;
    }
    return false;
}

bool Selection::AnyFavoriteCanBeChosen(Blacklist& blacklist) const {
    return std::any_of(
        record_.FavoritesSources.begin(), record_.FavoritesSources.end(),
        [&](const ListedFile& favorite) { return favorite.Active && CanBeChosen(favorite.Path, blacklist); });
}

std::int32_t Selection::RandomIndex(std::int32_t count) {
    return static_cast<std::int32_t>(std::floor(static_cast<double>(random_.Next()) * count)) + 1;
}

} // namespace quorvane
