#include "commands/place.h"

#include "commands/arguments.h"
#include "config/schema.h"
#include "config/schema_walk.h"
#include "core/program.h"
#include "platform/files.h"

#include <filesystem>

namespace quorvane::commands {

std::string WholePath(const Place& place, const std::string& path) {
    const auto native = [](const std::string& text) {
        return std::filesystem::path(std::u8string(text.begin(), text.end()));
    };
    const std::filesystem::path whole = (native(place.folder) / native(path)).lexically_normal();
    const std::u8string text =
        place.context.files.Separator() == '/' ? whole.generic_u8string() : whole.u8string();
    return {text.begin(), text.end()};
}

void Save(Place& place, const std::string& key) {
    if (place.program) {
        place.program->WriteSettings();
        return;
    }
    Store& store = place.context.store;
    Settings& settings = place.record;
    SchemaWriter<Settings> writer(settings, {store, std::string(RootKey), DecimalSign(store)});
    writer.onRefused = [](int error) {
        throw RefusedInput("the settings could not be written (error " + std::to_string(error) + ")");
    };
    for (const auto& section : SettingsSchema()) {
        if (section.key == key) writer.Write(section);
    }
    writer.End();
}

} // namespace quorvane::commands
