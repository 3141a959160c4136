#include "cli/batch.h"
#include "cli/commands.h"
#include "cli/json.h"
#include "cli/settings_source.h"

#include "config/reg_file.h"
#include "config/registry.h"
#include "config/schema.h"
#include "config/tree.h"
#include "core/numbers.h"
#include "platform/files.h"
#include "platform/headless.h"

#include <ostream>

namespace quorvane::cli {
namespace {

using Words = std::vector<std::string>;

const std::string& InputAt(const Arguments& arguments, std::size_t index, const char* what) {
    if (arguments.Inputs().size() <= index) throw UsageError(std::string(what) + " is missing");
    return arguments.Inputs()[index];
}

void ExpectInputs(const Arguments& arguments, std::size_t most) {
    if (arguments.Inputs().size() > most)
        throw UsageError("\"" + arguments.Inputs()[most] + "\" is one word too many");
}

// The stored tree, for what changes it.
std::unique_ptr<Store> OpenStoredTree(const Arguments& arguments) {
    for (const std::string& option : SettingsOptions) {
        if (arguments.Has(option))
            throw UsageError("--" + option + " does not go with a change of the stored tree");
    }
    std::string why;
    auto store = CreateStore(why);
    if (!store->Lasting()) throw RefusedInput("nothing was changed");
    return store;
}

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

int Get(const Arguments& arguments, Streams& streams) {
    ExpectInputs(arguments, 2);
    const auto files = CreateFiles();
    const auto store = OpenSettings(arguments, *files);
    const std::string& input = InputAt(arguments, 1, "KEY\\NAME");
    return ForEachInput(arguments, input, "setting", streams, [&](const std::string& setting) {
        const SettingName place = ParseSettingName(setting);
        StoredValue value;
        if (store->Query({"", Hive::CurrentUser, place.key}, place.name, value) != store_error::None)
            throw RefusedInput(setting + " is not stored");
        streams.out << (arguments.Json() ? ValueJson(place.key, place.name, value)
                                         : Shown(DataText(value), streams))
                    << arguments.ResultEnd();
        return Done;
    });
}

int Set(const Arguments& arguments, Streams&) {
    ExpectInputs(arguments, 3);
    const std::string& setting = InputAt(arguments, 1, "KEY\\NAME");
    const std::string& data = InputAt(arguments, 2, "DATA");
    SetSetting(*OpenStoredTree(arguments), setting, data);
    return Done;
}

int List(const Arguments& arguments, Streams& streams) {
    ExpectInputs(arguments, 2);
    const auto files = CreateFiles();
    const auto store = OpenSettings(arguments, *files);
    std::string key(RootKey);
    if (arguments.Inputs().size() > 1) key += "\\" + arguments.Inputs()[1];
    std::vector<std::string> names;
    if (store->ValueNames({"", Hive::CurrentUser, key}, names) != store_error::None) {
        // A tree that was never written is an empty one, not a wrong name.
        if (arguments.Inputs().size() < 2) return Done;
        throw RefusedInput("there is no key " + arguments.Inputs()[1]);
    }
    VisitTree(*store, Hive::CurrentUser, key,
              [&](const std::string& at, const std::string& name, const StoredValue& value) {
                  if (arguments.Json()) {
                      streams.out << ValueJson(at, name, value);
                  } else {
                      const std::string shortKey = ShortKey(at);
                      streams.out << shortKey << (shortKey.empty() ? "" : "\\") << name << '='
                                  << Shown(DataText(value), streams);
                  }
                  streams.out << arguments.ResultEnd();
              });
    return Done;
}

int Export(const Arguments& arguments, Streams&) {
    ExpectInputs(arguments, 2);
    const std::string& path = InputAt(arguments, 1, "FILE");
    const auto files = CreateFiles();
    const auto store = OpenSettings(arguments, *files);
    const RegEncoding encoding = arguments.Has("utf16") ? RegEncoding::Utf16 : RegEncoding::Utf8;
    const std::string content = ExportRegFile(*store, RootKey, encoding);
    std::string why;
    const auto writer = files->Replace(path, why);
    const bool written = writer && writer->Write(content.data(), content.size()) && writer->Commit();
    if (!written)
        throw RefusedInput("the file \"" + path + "\" cannot be written (" + (writer ? writer->Why() : why) +
                           ")");
    return Done;
}

int Import(const Arguments& arguments, Streams&) {
    ExpectInputs(arguments, 2);
    const std::string& path = InputAt(arguments, 1, "FILE");
    const auto content = CreateFiles()->Read(path);
    if (!content) throw RefusedInput("the file \"" + path + "\" cannot be read");
    const auto store = OpenStoredTree(arguments);
    try {
        ImportRegFile(*content, *store, RegScope::Program);
    } catch (const RegFileError& error) {
        throw RefusedInput(path + ", " + error.what() + "; nothing was changed");
    }
    return Done;
}

int Settings(const Arguments& arguments, Streams& streams) {
    const std::string& action = InputAt(arguments, 0, "what to do");
    if (action == "export") return Export(arguments, streams);
    if (action == "import") return Import(arguments, streams);
    if (action == "get") return Get(arguments, streams);
    if (action == "set") return Set(arguments, streams);
    if (action == "list") return List(arguments, streams);
    throw UsageError("unknown action \"" + action + "\"");
}

} // namespace

Command SettingsCommand() {
    return {"settings",
            "settings export [--utf16] FILE | import FILE | get [-0] 'KEY\\NAME' | set 'KEY\\NAME' DATA | "
            "list [-0] [KEY]",
            SettingsOptions,
            {"0", "utf16"},
            Settings};
}

} // namespace quorvane::cli
