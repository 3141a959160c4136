// One draw from 50,000 candidates, with favourites and a blacklist of 10,000 entries each. The names have one
// length and one folder, which is the hardest case for comparing them.
#include "engine/selection.h"
#include "platform/memory/clock.h"
#include "platform/memory/event_loop.h"
#include "platform/memory/files.h"
#include "platform/memory/system.h"
#include "platform/shared/seeded_random.h"

#include <benchmark/benchmark.h>

namespace quorvane {
namespace {

std::string PictureName(int number) {
    return "/home/ann/Pictures/Summer in the mountains/IMG_" + std::to_string(100000 + number) + ".JPG";
}

// range: the blacklisted share of the candidates in per cent.
void Draw(benchmark::State& state) {
    GlobalRecord record;
    record.RescanWallpaperSources = true;
    record.UseFavorites = true;
    record.Favorites_Probability = 0.5;
    for (int i = 0; i < 50000; ++i) {
        record.Wallpapers.Add(PictureName(i), "");
    }
    const int blacklisted = static_cast<int>(state.range(0)) * 500;
    for (int i = 0; i < 10000; ++i) {
        record.FavoritesSources.Add({PictureName(49999 - i), true});
        record.BlacklistedSources.Add({PictureName(i < blacklisted ? i * 5 : 500000 + i), true});
    }
    CallLog calls;
    MemoryClock clock;
    MemoryEventLoop events(clock);
    MemoryFiles files;
    MemorySystem system(calls);
    Complaints complaints(system);
    FileList fileList(record, clock, events, files, complaints);
    OnceSeededRandom random;
    Selection selection(record, fileList, clock, random);
    for (auto _ : state) {
        record.LastSelectedWallpaper = selection.GetNewWallpaper();
    }
}
BENCHMARK(Draw)->Arg(0)->Arg(20)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace quorvane
