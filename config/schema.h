#pragma once

#include "config/settings_record.h"
#include "platform/store.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quorvane {

// The declaration of everything that is stored: for each value its key, its name letter for letter (the
// misspelt ones too), its stored form, its default and its field. Reading, writing, the profiles, the
// defaults and the command-line companion all walk it (config/schema_walk.h); adding a setting is one row,
// adding a list one section. A record other than the settings is declared the same way, by the same parts
// (config/schema_rows.h).

// Below the current user's hive.
inline constexpr std::string_view RootKey = "Software\\Quorvane";

enum class StoredForm {
    Integer,
    Flag,          // a boolean as the integer 0 or -1; any other than 0 is true
    FlagOne,       // the same, written as 0 or 1
    KeyIndex,      // a virtual-key code as the index of its row in VK_MAPPING
    ShortInteger,  // a 16-bit field as an integer
    EightBytes,    // a double as an integer of eight bytes; four bytes are read as the number they are
    Text,          // from here on all are texts
    BooleanText,   // "True" or "False"
    FirstRun,      // written as "False" always; what is there decides at the next start
    LocaleDecimal, // a double with the person's decimal sign; read under any sign
    LocaleSingle,  // a float with the person's decimal sign, and read only under the same
    PointNumber,   // a double with a point, a leading blank in front of a positive one
    ShortText,     // a 16-bit integer
    ColorText,     // a colour, read as if a "0" stood in front
    CountText,     // a count, cut to a whole number; an integer in its place is read as well
};

ValueType StoredType(StoredForm form);

using FieldRef = std::variant<bool*, std::int16_t*, std::int32_t*, float*, double*, std::string*>;
using DefaultValue = std::variant<std::int32_t, double, std::string>;

// What defaults are made of besides constants.
struct DefaultSources {
    std::string directory; // where the program may write by itself (Files::WritableDirectory)
    char separator = '/';
    std::int32_t screenWidth = 0; // twips
    std::int32_t screenHeight = 0;
    std::string now; // the present date and time as the system writes it
};

// Which of the values that one row stands for: the number of the list's entry, and that of the value where
// the entry repeats it.
struct ValueAt {
    std::int32_t entry = 0;
    std::int32_t repeat = 0;
};

// What a failed read of a list's value leads to besides the default.
enum class OnFailedRead { Default, Report };

template<typename Record>
struct SettingRow {
    std::string name; // in a list, what stands in front of the entry's number
    StoredForm form = StoredForm::Text;
    std::function<FieldRef(Record&, ValueAt)> field;
    std::function<DefaultValue(const Record&, const DefaultSources&, ValueAt)> fallback;
    std::string suffix = {}; // in a list, what stands behind the number
    OnFailedRead onFailedRead = OnFailedRead::Default;
    // How often the entry repeats the value: 0, 1 and so on stand behind its name. Empty for a single one.
    std::int32_t (*repeats)(const Record&, ValueAt) = nullptr;
};

// Where a list's number of entries stands. The key is whole, below the root.
struct SettingCounter {
    std::string key;
    std::string name;
    StoredForm form = StoredForm::Integer;
};

// What makes a section a list.
template<typename Record>
struct SettingList {
    // The first is read, each is written. None: the list always has the length that it has.
    std::vector<SettingCounter> counters;
    std::function<std::int32_t(const Record&)> count;
    std::function<void(Record&, std::int32_t)> resize; // empty for a list of one length
    std::int32_t first = 1;                            // the number of the first entry
    // A longer list is not somebody's but damage, and is read so far.
    std::int32_t most = 1'000'000;
    // Each entry's values stand in a subkey of its number, under their plain names.
    bool subkeys = false;
    bool letsEventsRun = false; // after each entry that is written
};

// The values of one key, or those of each entry of a list in it.
template<typename Record>
struct SettingSection {
    std::string key; // below the root
    std::vector<SettingRow<Record>> rows = {};
    std::optional<SettingList<Record>> list = {};
    int bar = 0;                   // where the splash bar stands once it is read; 0 leaves it
    bool inProfiles = true;        // a profile holds it, too
    bool settlesAutostart = false; // the start at log-on is settled once it is written
    bool onlyWhereSet = false;     // a value of 0 is written only over another that stands there
};

// In the order of reading and writing.
template<typename Record>
using Schema = std::vector<SettingSection<Record>>;

const Schema<Settings>& SettingsSchema();

// How the value `name` of `key` (below the root) is stored; letter case does not matter. Nothing where there
// is no such setting.
std::optional<StoredForm> FindSetting(std::string_view key, std::string_view name);

} // namespace quorvane
