#include "config/stored_value.h"

#include "config/registry.h"
#include "config/vk_mapping.h"
#include "core/numbers.h"
#include "core/run_time_error.h"
#include "core/text.h"

#include <cmath>
#include <limits>
#include <optional>

namespace quorvane {
namespace {

template<typename Value>
Value& As(FieldRef field) {
    return *std::get<Value*>(field);
}

bool ReadInteger(const ValuePlace& place, std::int32_t& value) {
    return RegReadValue(place.store, "", Hive::CurrentUser, place.key, key_access::All, place.name, value) !=
           0;
}

bool ReadText(const ValuePlace& place, std::string& value) {
    return RegReadValue(place.store, "", Hive::CurrentUser, place.key, key_access::All, place.name, value) !=
           0;
}

template<typename Value>
bool Write(const ValuePlace& place, const Value& value) {
    return RegWriteValue(place.store, "", Hive::CurrentUser, place.key, key_access::All, place.name, value) !=
           0;
}

bool FitsShort(std::int32_t number) {
    return number >= std::numeric_limits<std::int16_t>::min() &&
           number <= std::numeric_limits<std::int16_t>::max();
}

bool StoreKeyCode(std::int32_t index, FieldRef field) {
    if (index < 0 || index > VK_MAP_COUNT) return false;
    As<std::int32_t>(field) = VK_MAPPING[static_cast<std::size_t>(index)].ID;
    return true;
}

bool StoreShort(std::int32_t number, FieldRef field) {
    if (!FitsShort(number)) return false;
    As<std::int16_t>(field) = static_cast<std::int16_t>(number);
    return true;
}

// A whole number is as good in the four bytes of an integer as in its own eight.
bool ReadEightBytes(const ValuePlace& place, double& value) {
    if (RegReadValue(place.store, "", Hive::CurrentUser, place.key, key_access::All, place.name, value) != 0)
        return true;
    std::int32_t number = 0;
    if (!ReadInteger(place, number)) return false;
    value = number;
    return true;
}

bool ReadCount(const ValuePlace& place, std::int32_t& count) {
    StoredValue stored;
    const StoreKey key{"", Hive::CurrentUser, place.key, key_access::All};
    if (place.store.Query(key, place.name, stored) != store_error::None) return false;
    if (stored.type == ValueType::Integer) return ReadInteger(place, count);
    return PassOver([&] { count = ToInteger(std::trunc(LeadingNumber(stored.data))); });
}

// Every row of the code is written, so the last one stands; a code without a row leaves what is stored.
bool WriteKeyIndex(const ValuePlace& place, std::int32_t code) {
    for (std::int32_t index = 0; index <= VK_MAP_COUNT; ++index) {
        if (VK_MAPPING[static_cast<std::size_t>(index)].ID == code && !Write(place, index)) return false;
    }
    return true;
}

std::int16_t ShortOf(std::string_view text, std::string_view decimalSign) {
    const std::int32_t number = TextToInteger(text, decimalSign);
    if (!FitsShort(number)) throw RunTimeError::Overflow();
    return static_cast<std::int16_t>(number);
}

float SingleOf(double number) {
    if (std::abs(number) > std::numeric_limits<float>::max()) throw RunTimeError::Overflow();
    return static_cast<float>(number);
}

// The number that the whole of a text says to a person, with a point, a comma or the person's own decimal
// sign; nothing where it is no number.
std::optional<double> TypedNumber(const std::string& text, std::string_view decimalSign) {
    std::string pointed = Replace(text, ",", ".");
    if (!decimalSign.empty()) pointed = Replace(pointed, decimalSign, ".");
    double number = 0;
    if (!PassOver([&] { number = LocaleTextToDouble(pointed, "."); })) return std::nullopt;
    return number;
}

// Throws RunTimeError where the text does not say what the form wants.
void Understand(const std::string& text, std::string_view decimalSign, StoredForm form, FieldRef field) {
    switch (form) {
    case StoredForm::BooleanText:
    case StoredForm::FirstRun:
        As<bool>(field) = TextToBoolean(text);
        return;
    case StoredForm::LocaleDecimal:
        As<double>(field) = ParseDecimal(text, decimalSign);
        return;
    case StoredForm::LocaleSingle:
        As<float>(field) = SingleOf(LocaleTextToDouble(text, decimalSign));
        return;
    case StoredForm::PointNumber:
        As<double>(field) = LeadingNumber(text);
        return;
    case StoredForm::ShortText:
        As<std::int16_t>(field) = ShortOf(text, decimalSign);
        return;
    case StoredForm::ColorText:
        As<std::int32_t>(field) = ToInteger(LeadingNumber("0" + text));
        return;
    default:
        throw RunTimeError::TypeMismatch();
    }
}

} // namespace

bool ReadValue(const ValuePlace& place, StoredForm form, FieldRef field) {
    if (form == StoredForm::Text) return ReadText(place, As<std::string>(field));
    if (form == StoredForm::Integer) return ReadInteger(place, As<std::int32_t>(field));
    if (form == StoredForm::EightBytes) return ReadEightBytes(place, As<double>(field));
    if (form == StoredForm::CountText) return ReadCount(place, As<std::int32_t>(field));
    if (StoredType(form) == ValueType::Integer) {
        std::int32_t number = 0;
        if (!ReadInteger(place, number)) return false;
        if (form == StoredForm::KeyIndex) return StoreKeyCode(number, field);
        if (form == StoredForm::ShortInteger) return StoreShort(number, field);
        As<bool>(field) = number != 0;
        return true;
    }
    std::string text;
    return ReadText(place, text) && PassOver([&] { Understand(text, place.decimalSign, form, field); });
}

bool WriteValue(const ValuePlace& place, StoredForm form, FieldRef field) {
    switch (form) {
    case StoredForm::Integer:
        return Write(place, As<std::int32_t>(field));
    case StoredForm::Flag:
        return Write(place, As<bool>(field) ? -1 : 0);
    case StoredForm::FlagOne:
        return Write(place, As<bool>(field) ? 1 : 0);
    case StoredForm::KeyIndex:
        return WriteKeyIndex(place, As<std::int32_t>(field));
    case StoredForm::ShortInteger:
        return Write(place, static_cast<std::int32_t>(As<std::int16_t>(field)));
    case StoredForm::EightBytes:
        return Write(place, As<double>(field));
    case StoredForm::Text:
        return Write(place, As<std::string>(field));
    case StoredForm::BooleanText:
        return Write(place, BooleanText(As<bool>(field)));
    case StoredForm::FirstRun:
        return Write(place, BooleanText(false));
    case StoredForm::LocaleDecimal:
        return Write(place, LocaleNumberText(As<double>(field), place.decimalSign));
    case StoredForm::LocaleSingle:
        return Write(place, LocaleNumberText(As<float>(field), place.decimalSign));
    case StoredForm::PointNumber:
        return Write(place, SignedNumberText(As<double>(field)));
    case StoredForm::ShortText:
        return Write(place, std::to_string(As<std::int16_t>(field)));
    case StoredForm::ColorText:
    case StoredForm::CountText:
        return Write(place, std::to_string(As<std::int32_t>(field)));
    }
    return false;
}

bool ReadsAsTyped(const std::string& text, StoredForm form, std::string_view decimalSign) {
    bool flag = false;
    std::int16_t small = 0;
    std::int32_t whole = 0;
    float single = 0;
    double number = 0;
    const auto understand = [&](FieldRef field) {
        return PassOver([&] { Understand(text, decimalSign, form, field); });
    };
    const auto typed = TypedNumber(text, decimalSign);
    switch (form) {
    case StoredForm::BooleanText:
    case StoredForm::FirstRun:
        return understand(&flag);
    case StoredForm::LocaleDecimal:
    case StoredForm::PointNumber:
        return understand(&number) && typed == number;
    case StoredForm::LocaleSingle:
        return understand(&single) && typed && static_cast<float>(*typed) == single;
    case StoredForm::ShortText:
        return understand(&small) && typed == small;
    case StoredForm::ColorText:
        return understand(&whole) && typed == whole;
    case StoredForm::CountText:
        return typed && *typed >= 0 && *typed <= std::numeric_limits<std::int32_t>::max() &&
               std::trunc(*typed) == *typed;
    default:
        return true;
    }
}

void StoreDefault(const DefaultValue& value, StoredForm form, FieldRef field) {
    const auto number = [&] { return std::get<std::int32_t>(value); };
    if (form == StoredForm::KeyIndex) {
        StoreKeyCode(number(), field);
    } else if (auto* text = std::get_if<std::string*>(&field)) {
        **text = std::get<std::string>(value);
    } else if (auto* flag = std::get_if<bool*>(&field)) {
        **flag = number() != 0;
    } else if (auto* small = std::get_if<std::int16_t*>(&field)) {
        **small = static_cast<std::int16_t>(number());
    } else if (auto* integer = std::get_if<std::int32_t*>(&field)) {
        **integer = number();
    } else if (auto* single = std::get_if<float*>(&field)) {
        **single = static_cast<float>(std::get<double>(value));
    } else {
        As<double>(field) = std::get<double>(value);
    }
}

} // namespace quorvane
