#include "cli/settings_source.h"

#include "config/reg_file.h"
#include "config/schema.h"
#include "config/tree.h"
#include "platform/files.h"
#include "platform/headless.h"

namespace quorvane::cli {
namespace {

void ReadFile(const std::string& path, Files& files, Store& store) {
    const auto content = files.Read(path);
    if (!content) throw RefusedInput("the file \"" + path + "\" cannot be read");
    try {
        ImportRegFile(*content, store, RegScope::UserHives);
    } catch (const RegFileError& error) {
        throw RefusedInput(path + ", " + error.what());
    }
}

} // namespace

std::unique_ptr<Store> OpenSettings(const Arguments& arguments, Files& files) {
    const auto file = arguments.Value("settings");
    const auto values = arguments.Values("set");
    std::unique_ptr<Store> store;
    if (file) {
        store = CreateScratchStore();
        ReadFile(*file, files, *store);
    } else {
        store = ReadStore();
        if (values.empty()) return store;
        auto scratch = CreateScratchStore();
        CopyTree(*store, *scratch, Hive::CurrentUser, RootKey);
        store = std::move(scratch);
    }
    for (const std::string& value : values) {
        const std::size_t equals = value.find('=');
        if (equals == std::string::npos)
            throw UsageError("--set wants KEY\\NAME=DATA, not \"" + value + "\"");
        SetSetting(*store, value.substr(0, equals), value.substr(equals + 1));
    }
    return store;
}

} // namespace quorvane::cli
