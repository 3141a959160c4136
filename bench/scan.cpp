// A scan beside its floor: a bare walk of the same folders that matches the names in the same way, counts
// them and keeps nothing. The tree, 100,000 empty files in 520 folders, is made once under the temporary
// folder.
#include "engine/folder_scan.h"
#include "platform/headless.h"
#include "platform/memory/event_loop.h"
#include "platform/shared/name_pattern.h"

#include <benchmark/benchmark.h>

#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace quorvane {
namespace {

constexpr const char* Patterns = "*.jpg;*.png";

std::string MakeTree() {
    const std::filesystem::path root = std::filesystem::temp_directory_path() / "quorvane-bench-scan";
    if (std::filesystem::exists(root / "whole")) return root.string() + "/";
    for (int file = 0; file < 100000; ++file) {
        const auto folder =
            root / ("year " + std::to_string(file / 5000)) / ("trip " + std::to_string(file / 200));
        if (file % 200 == 0) std::filesystem::create_directories(folder);
        std::ofstream(folder / ("IMG_" + std::to_string(10000000 + file) + (file % 3 ? ".JPG" : ".txt")));
    }
    std::ofstream(root / "whole");
    return root.string() + "/";
}

std::size_t Walk(int parent, const char* name, const NamePattern& pattern) {
    std::size_t count = 0;
    const int folder = openat(parent, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR* listing = fdopendir(folder);
    while (const dirent* entry = readdir(listing)) {
        if (entry->d_type == DT_DIR && entry->d_name[0] != '.') count += Walk(folder, entry->d_name, pattern);
        if (entry->d_type == DT_REG && pattern.Fits(entry->d_name)) ++count;
    }
    closedir(listing);
    return count;
}

void BareWalk(benchmark::State& state) {
    const std::string root = MakeTree();
    const NamePattern pattern(Patterns);
    for (auto _ : state) {
        benchmark::DoNotOptimize(Walk(AT_FDCWD, root.c_str(), pattern));
    }
}
BENCHMARK(BareWalk)->Unit(benchmark::kMillisecond);

void ScanOfTheSameFolders(benchmark::State& state) {
    const std::string root = MakeTree();
    const auto files = CreateFiles();
    const auto clock = CreateClock();
    const auto system = CreateSystem();
    MemoryClock still;
    MemoryEventLoop events(still);
    Complaints complaints(*system);
    for (auto _ : state) {
        PathList paths;
        Breather breather(*clock, events);
        FolderScan(*files, breather, complaints, paths).GetFiles(root, Patterns, ScanLevel("inf"), 0);
        benchmark::DoNotOptimize(paths.Count());
    }
}
BENCHMARK(ScanOfTheSameFolders)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quorvane
