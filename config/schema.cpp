#include "config/schema.h"

#include "core/text.h"

#include <algorithm>

namespace quorvane {
namespace {

// Takes a number as a list's entries are numbered off the front of `text`: no sign, no leading zero.
bool TakeNumber(std::string_view& text, std::int32_t first) {
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    if (digits == 0 || digits > 9) return false;
    const bool isZero = text[0] == '0';
    if (isZero && (digits > 1 || first > 0)) return false;
    text.remove_prefix(digits);
    return true;
}

bool TakeWord(std::string_view& text, const std::string& word) {
    const std::string folded = LowerCase(word);
    if (!text.starts_with(folded)) return false;
    text.remove_prefix(folded.size());
    return true;
}

// Takes the key of a profile and the "\\" behind it off the front of a folded key.
bool TakeProfile(std::string_view& key) {
    std::string_view rest = key;
    if (!TakeWord(rest, "Profiles\\")) return false;
    if (!TakeWord(rest, "default") && !TakeNumber(rest, 1)) return false;
    if (!TakeWord(rest, "\\")) return false;
    key = rest;
    return true;
}

// Whether the folded `key` and `name` are those of a value of the row.
bool Fits(const SettingSection<Settings>& section, const SettingRow<Settings>& row, std::string_view key,
          std::string_view name) {
    const bool inSubkeys = section.list && section.list->subkeys;
    if (!TakeWord(key, section.key)) return false;
    if (inSubkeys && !(TakeWord(key, "\\") && TakeNumber(key, section.list->first))) return false;
    if (!key.empty() || !TakeWord(name, row.name)) return false;
    if (section.list && !inSubkeys && !TakeNumber(name, section.list->first)) return false;
    if (!TakeWord(name, row.suffix)) return false;
    return (!row.repeats || TakeNumber(name, 0)) && name.empty();
}

} // namespace

ValueType StoredType(StoredForm form) {
    return form < StoredForm::Text ? ValueType::Integer : ValueType::Text;
}

std::optional<StoredForm> FindSetting(std::string_view key, std::string_view name) {
    const std::string folded = LowerCase(key);
    const std::string foldedName = LowerCase(name);
    std::string_view foldedKey = folded;
    const bool inProfile = TakeProfile(foldedKey);
    for (const auto& section : SettingsSchema()) {
        if (inProfile && !section.inProfiles) continue;
        for (const auto& row : section.rows)
            if (Fits(section, row, foldedKey, foldedName)) return row.form;
        if (!section.list) continue;
        for (const SettingCounter& counter : section.list->counters)
            if (LowerCase(counter.key) == foldedKey && LowerCase(counter.name) == foldedName)
                return counter.form;
    }
    return std::nullopt;
}

} // namespace quorvane
