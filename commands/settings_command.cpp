#include "commands/json.h"
#include "commands/record_command.h"
#include "commands/setting_values.h"
#include "config/reg_file.h"
#include "config/registry.h"
#include "config/schema.h"
#include "config/settings.h"
#include "config/stored_value.h"
#include "config/tree.h"
#include "core/numbers.h"
#include "core/program.h"
#include "platform/shared/memory_store.h"

namespace quorvane::commands {
namespace {

const char* TypeName(ValueType type) {
    if (type == ValueType::Text) return "text";
    return type == ValueType::Integer ? "integer" : "bytes";
}

// A text without its terminator, a number in decimal (one of eight bytes is a double), other bytes in
// hexadecimal.
std::string DataText(const StoredValue& value) {
    if (value.type == ValueType::Text)
        return value.data.substr(0, value.data.empty() ? 0 : value.data.size() - 1);
    if (value.type == ValueType::Integer && value.data.size() == 4)
        return std::to_string(DataInteger(value.data));
    if (value.type == ValueType::Integer && value.data.size() == 8) return NumberText(DataDouble(value.data));
    std::string text;
    for (const char c : value.data) {
        text.push_back("0123456789abcdef"[static_cast<unsigned char>(c) >> 4]);
        text.push_back("0123456789abcdef"[static_cast<unsigned char>(c) & 0xF]);
    }
    return text;
}

// The key as a person writes it, below the program's root.
std::string ShortKey(const std::string& key) {
    return key.size() > RootKey.size() ? key.substr(RootKey.size() + 1) : std::string();
}

std::string ValueJson(const std::string& key, const std::string& name, const StoredValue& value) {
    JsonObject json;
    json.Add("key", ShortKey(key)).Add("name", name).Add("type", TypeName(value.type));
    if (value.type == ValueType::Integer && value.data.size() == 4) {
        json.Add("data", static_cast<std::int64_t>(DataInteger(value.data)));
    } else if (value.type == ValueType::Integer && value.data.size() == 8) {
        json.Add("data", DataDouble(value.data));
    } else {
        json.Add("data", DataText(value));
    }
    return json.Text();
}

// The tree to read: the stored one, over which a running program lays what its record holds now.
class Tree {
  public:
    explicit Tree(Place& place)
        : stored_(place.context.store) {
        if (!place.program) return;
        CopyTree(stored_, live_.emplace(), Hive::CurrentUser, RootKey);
        SettingsContext context = place.context;
        SettingsContext onTree{*live_, context.files, context.clock, context.screen, context.events};
        CopyTree(stored_, *live_, Hive::CurrentUser, "Control Panel\\International");
        WriteRecord(place.record, onTree);
    }
    Store& operator*() { return live_ ? *live_ : stored_; }

  private:
    Store& stored_;
    std::optional<MemoryStore> live_;
};

std::string Get(const Arguments& arguments, Place& place) {
    ExpectInputs(arguments, 2);
    const std::string& setting = InputAt(arguments, 1, "KEY\\NAME");
    const SettingName at = ParseSettingName(setting);
    Tree tree(place);
    StoredValue value;
    if ((*tree).Query({"", Hive::CurrentUser, at.key}, at.name, value) != store_error::None)
        throw RefusedInput(setting + " is not stored");
    return (arguments.Json() ? ValueJson(at.key, at.name, value) : DataText(value)) + arguments.ResultEnd();
}

std::string List(const Arguments& arguments, Place& place) {
    ExpectInputs(arguments, 2);
    Tree tree(place);
    std::string key(RootKey);
    if (arguments.Inputs().size() > 1) key += "\\" + arguments.Inputs()[1];
    std::vector<std::string> names;
    if ((*tree).ValueNames({"", Hive::CurrentUser, key}, names) != store_error::None) {
        // A tree that was never written is an empty one, not a wrong name.
        if (arguments.Inputs().size() < 2) return {};
        throw RefusedInput("there is no key " + arguments.Inputs()[1]);
    }
    std::string out;
    VisitTree(*tree, Hive::CurrentUser, key,
              [&](const std::string& at, const std::string& name, const StoredValue& value) {
                  const std::string shortKey = ShortKey(at);
                  out += arguments.Json()
                             ? ValueJson(at, name, value)
                             : shortKey + (shortKey.empty() ? "" : "\\") + name + "=" + DataText(value);
                  out += arguments.ResultEnd();
              });
    return out;
}

// A running program first writes what it has, so that the tree is the whole truth, and then takes it back;
// where it could not start on that, its record stays and overwrites it.
template<typename Change>
void ChangeTree(Place& place, Change change) {
    if (!place.program) return change(place.context.store);
    place.program->WriteSettings();
    change(place.context.store);
    Settings fresh = place.record;
    try {
        ReadRecord(fresh, place.context);
    } catch (const RefusedInput&) {
        place.program->WriteSettings();
        throw;
    }
    if (fresh.ChangeWallpaperInterval != place.record.ChangeWallpaperInterval)
        fresh.ChangeWallpaperIntervalCurrent = fresh.ChangeWallpaperInterval;
    static_cast<Settings&>(place.record) = std::move(fresh);
    place.record.RESCANWALLPAPERSOURCESNOW = true;
}

std::string Set(const Arguments& arguments, Place& place) {
    ExpectInputs(arguments, 3);
    const std::string& setting = InputAt(arguments, 1, "KEY\\NAME");
    const std::string& data = InputAt(arguments, 2, "DATA");
    ChangeTree(place, [&](Store& store) { SetSetting(store, setting, data); });
    return {};
}

std::string Import(const Arguments& arguments, Place& place) {
    ExpectInputs(arguments, 2);
    const std::string& path = InputAt(arguments, 1, "FILE");
    if (!place.content) throw RefusedInput("the file \"" + path + "\" cannot be read");
    ChangeTree(place, [&](Store& store) {
        try {
            ImportRegFile(*place.content, store, RegScope::Program);
        } catch (const RegFileError& error) {
            throw RefusedInput(path + ", " + error.what() + "; nothing was changed");
        }
    });
    return {};
}

std::string Run(const Arguments& arguments, Place& place) {
    const std::string& action = InputAt(arguments, 0, "what to do");
    if (action == "get") return Get(arguments, place);
    if (action == "set") return Set(arguments, place);
    if (action == "list") return List(arguments, place);
    if (action == "import") return Import(arguments, place);
    throw UsageError("unknown action \"" + action + "\"");
}

} // namespace

RecordCommand SettingsCommand() {
    return {"settings",
            "settings export [--utf16] FILE | import FILE | get [-0] 'KEY\\NAME' | set 'KEY\\NAME' DATA | "
            "list [-0] [KEY]",
            {},
            {"0"},
            Works::Anywhere,
            Run};
}

} // namespace quorvane::commands
