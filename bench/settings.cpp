// The whole tree with 500 sources and 2,000 entries in each of the other lists, on SQLite.
#include "config/settings.h"
#include "platform/headless.h"
#include "platform/memory/memory_platform.h"
#include "platform/store.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>

namespace quorvane {
namespace {

class StoredTree {
  public:
    StoredTree() {
        std::filesystem::remove_all(folder_);
        setenv("XDG_CONFIG_HOME", folder_.c_str(), 1);
        store = CreateStore(why);
        ReadRecord(record, Context());
        for (int i = 0; i < 500; ++i) {
            record.WallpaperSources.Add(
                {"/home/ann/pictures/holiday " + std::to_string(i), true, "*.jpg", "INF"});
        }
        for (int i = 0; i < 2000; ++i) {
            const std::string path = "/home/ann/pictures/summer/DSC0" + std::to_string(i) + ".jpg";
            record.FavoritesSources.Add({path, true});
            record.BlacklistedSources.Add({path, false});
            record.Custom_Days.Add(
                {static_cast<std::int16_t>(i % 31 + 1), static_cast<std::int16_t>(i % 12 + 1), i});
        }
    }
    ~StoredTree() {
        store.reset();
        std::filesystem::remove_all(folder_);
    }
    StoredTree(const StoredTree&) = delete;
    StoredTree& operator=(const StoredTree&) = delete;

    SettingsContext Context() { return {*store, machine.files, machine.clock, {}}; }
    void Write() { WriteRecord(record, Context()); }

    MemoryPlatform machine;
    Settings record;
    std::unique_ptr<Store> store;
    std::string why;

  private:
    std::filesystem::path folder_ = std::filesystem::temp_directory_path() / "quorvane-bench-settings";
};

void ReadTree(benchmark::State& state) {
    StoredTree tree;
    tree.Write();
    for (auto _ : state) {
        Settings record;
        ReadRecord(record, tree.Context());
        benchmark::DoNotOptimize(record);
    }
}
BENCHMARK(ReadTree)->Unit(benchmark::kMillisecond);

void WriteNewTree(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto tree = std::make_unique<StoredTree>();
        state.ResumeTiming();
        tree->Write();
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(WriteNewTree)->Unit(benchmark::kMillisecond);

void WriteSameTree(benchmark::State& state) {
    StoredTree tree;
    tree.Write();
    for (auto _ : state)
        tree.Write();
}
BENCHMARK(WriteSameTree)->Unit(benchmark::kMillisecond);

// Every path of the lists is another one than before.
void WriteChangedTree(benchmark::State& state) {
    StoredTree tree;
    tree.Write();
    for (auto _ : state) {
        state.PauseTiming();
        for (auto& entry : tree.record.FavoritesSources)
            entry.Path += "x";
        for (auto& entry : tree.record.BlacklistedSources)
            entry.Path += "x";
        for (auto& entry : tree.record.WallpaperSources)
            entry.Path += "x";
        state.ResumeTiming();
        tree.Write();
    }
}
BENCHMARK(WriteChangedTree)->Unit(benchmark::kMillisecond)->Iterations(10);

} // namespace
} // namespace quorvane
