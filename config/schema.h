#pragma once

#include "config/global_record.h"
#include "platform/store.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quorvane {

// The one declaration of everything that is stored: for each value its key, its name letter for letter (the
// misspelt ones too), its stored form, its default and its field of the record. Reading, writing, the
// defaults and the command-line companion all walk these tables; adding a setting is one line.

// Below the current user's hive.
inline constexpr std::string_view RootKey = "Software\\Quorvane";

enum class StoredForm {
    Integer,
    Flag,          // a boolean as the integer 0 or -1; any other than 0 is true
    FlagOne,       // the same, written as 0 or 1
    KeyIndex,      // a virtual-key code as the index of its row in VK_MAPPING
    Text,          // from here on all are texts
    BooleanText,   // "True" or "False"
    FirstRun,      // written as "False" always; what is there decides at the next start
    LocaleDecimal, // a double with the person's decimal sign; read under any sign
    LocaleSingle,  // a float with the person's decimal sign, and read only under the same
    PointNumber,   // a double with a point, a leading blank in front of a positive one
    ShortText,     // a 16-bit integer
    ColorText,     // a colour, read as if a "0" stood in front
};

ValueType StoredType(StoredForm form);

using FieldRef = std::variant<bool*, std::int16_t*, std::int32_t*, float*, double*, std::string*>;
using DefaultValue = std::variant<std::int32_t, double, std::string>;

// Where the program may write by itself (Files::WritableDirectory), for defaults that are paths.
struct DefaultPlace {
    std::string directory;
    char separator = '/';
};

// What a failed read of a list's value leads to besides the default.
enum class OnFailedRead { Default, Report };

template<typename Record>
struct SettingRow {
    std::string name; // in a list, what stands in front of the entry's number
    StoredForm form = StoredForm::Text;
    std::function<FieldRef(Record&)> field;
    std::function<DefaultValue(const Record&, const DefaultPlace&)> fallback;
    std::string suffix = {}; // in a list, what stands behind the number
    OnFailedRead onFailedRead = OnFailedRead::Default;
};

// The scalar settings of one key.
struct SettingGroup {
    std::string key; // below the root
    std::vector<SettingRow<GlobalRecord>> rows;
};

// A counter, and for each number from 1 the values of one record.
template<typename Record>
struct SettingList {
    std::string key;
    std::string counter;
    OneBased<Record> GlobalRecord::*list;
    std::vector<SettingRow<Record>> rows;
};

struct Schema {
    SettingGroup colors, fonts, screenCapture, hotkeys, general;
    SettingList<WallpaperSource> wallpaperSources;
    SettingList<ListedFile> favorites, blacklist;
    SettingList<CustomDay> customDays;

    std::vector<const SettingGroup*> Groups() const {
        return {&colors, &fonts, &screenCapture, &hotkeys, &general};
    }
    template<typename Visitor>
    void ForEachList(Visitor&& visit) const {
        visit(wallpaperSources);
        visit(favorites);
        visit(blacklist);
        visit(customDays);
    }
};

const Schema& SettingsSchema();

// How the value `name` of `key` (below the root) is stored; letter case does not matter. Nothing where there
// is no such setting.
std::optional<StoredForm> FindSetting(std::string_view key, std::string_view name);

} // namespace quorvane
