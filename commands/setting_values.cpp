#include "commands/setting_values.h"

#include "commands/arguments.h"
#include "config/registry.h"
#include "config/schema.h"
#include "config/stored_value.h"
#include "config/vk_mapping.h"
#include "core/numbers.h"
#include "core/run_time_error.h"
#include "platform/files.h"

#include <charconv>
#include <optional>

namespace quorvane::commands {
namespace {

// No command has a display: what depends on the screen's size is told for one of 1024 by 768 pixels.
constexpr TwipSize PlainScreen{1024 * 15, 768 * 15};

// Decimal, or hexadecimal behind "0x" up to eight digits, as colours are told.
std::optional<std::int32_t> IntegerOf(const std::string& text) {
    const char* end = text.data() + text.size();
    if (text.starts_with("0x") || text.starts_with("0X")) {
        std::uint32_t bits = 0;
        const auto result = std::from_chars(text.data() + 2, end, bits, 16);
        if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
        return static_cast<std::int32_t>(bits);
    }
    std::int32_t value = 0;
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
    return value;
}

std::optional<bool> BooleanOf(const std::string& text) {
    bool value = false;
    if (!PassOver([&] { value = TextToBoolean(text); })) return std::nullopt;
    return value;
}

[[noreturn]] void RefuseData(const std::string& setting, const std::string& wanted, const std::string& data) {
    throw RefusedInput(setting + " wants " + wanted + ", not \"" + data + "\"");
}

// What a text of the form says, for a person.
std::string WantedText(StoredForm form, const std::string& decimalSign) {
    switch (form) {
    case StoredForm::BooleanText:
    case StoredForm::FirstRun:
        return "\"True\" or \"False\"";
    case StoredForm::LocaleDecimal:
        return "a number of digits and one decimal sign";
    case StoredForm::LocaleSingle:
        return "a number with the decimal sign \"" + decimalSign + "\"";
    case StoredForm::PointNumber:
        return "a number with a decimal point";
    case StoredForm::ShortText:
        return "a whole number of 16 bits";
    default:
        return "a whole number from 0 on";
    }
}

std::int32_t IntegerData(StoredForm form, const std::string& setting, const std::string& data) {
    if (const auto number = IntegerOf(data)) {
        if (form == StoredForm::KeyIndex && (*number < 0 || *number > VK_MAP_COUNT))
            RefuseData(setting, "a row of the key table, 0 to " + std::to_string(VK_MAP_COUNT), data);
        if (form == StoredForm::ShortInteger && static_cast<std::int16_t>(*number) != *number)
            RefuseData(setting, "a whole number of 16 bits", data);
        return *number;
    }
    const bool isFlag = form == StoredForm::Flag || form == StoredForm::FlagOne;
    if (!isFlag) RefuseData(setting, "a whole number of 32 bits", data);
    const auto flag = BooleanOf(data);
    if (!flag) RefuseData(setting, "a number, \"True\" or \"False\"", data);
    return *flag ? (form == StoredForm::Flag ? -1 : 1) : 0;
}

double DoubleOf(const std::string& setting, const std::string& data) {
    double number = 0;
    if (!PassOver([&] { number = LocaleTextToDouble(data, "."); }))
        RefuseData(setting, "a number with a decimal point", data);
    return number;
}

} // namespace

SettingName ParseSettingName(const std::string& text) {
    const std::size_t separator = text.rfind('\\');
    if (separator == std::string::npos)
        throw RefusedInput("\"" + text + "\" is no KEY\\NAME, as General\\Wallpaper is");
    return {std::string(RootKey) + "\\" + text.substr(0, separator), text.substr(separator + 1)};
}

void SetSetting(Store& store, const std::string& setting, const std::string& data) {
    const SettingName place = ParseSettingName(setting);
    const auto form = FindSetting(std::string_view(place.key).substr(RootKey.size() + 1), place.name);
    if (!form) throw RefusedInput("there is no setting " + setting);
    int written = 0;
    if (*form == StoredForm::EightBytes) {
        written = RegWriteValue(store, "", Hive::CurrentUser, place.key, key_access::All, place.name,
                                DoubleOf(setting, data));
    } else if (StoredType(*form) == ValueType::Integer) {
        written = RegWriteValue(store, "", Hive::CurrentUser, place.key, key_access::All, place.name,
                                IntegerData(*form, setting, data));
    } else {
        if (!ReadsAsTyped(data, *form, DecimalSign(store)))
            RefuseData(setting, WantedText(*form, DecimalSign(store)), data);
        written = RegWriteValue(store, "", Hive::CurrentUser, place.key, key_access::All, place.name, data);
    }
    if (!written) {
        throw RefusedInput(setting + " could not be written (error " + std::to_string(store.LastError()) +
                           ")");
    }
}

SettingsEvents RefusingEvents() {
    SettingsEvents events;
    events.ShowErrorDialog = [](std::int32_t number, const std::string& description) {
        throw RefusedInput("the settings lack an entry of a list (" + description + ", error " +
                           std::to_string(number) + ")");
    };
    return events;
}

SettingsContext ContextOf(Store& store, Files& files, Clock& clock) {
    return {store, files, clock, PlainScreen, RefusingEvents()};
}

void LoadRecord(GlobalRecord& record, const SettingsContext& context) {
    PresetRecord(record, context.files);
    ReadRecord(record, context);
}

} // namespace quorvane::commands
