#include "platform/linux/base/system_values.h"

#include "core/text.h"

#include <langinfo.h>
#include <locale.h>

#include <cstdint>
#include <string_view>

namespace quorvane {
namespace {

constexpr std::string_view International = "control panel\\international";

// One category of the person's locale; the neutral one where it is not installed.
class PersonsLocale {
  public:
    explicit PersonsLocale(int category)
        : locale_(newlocale(category, "", nullptr)) {
        if (!locale_) locale_ = newlocale(category, "C", nullptr);
    }
    ~PersonsLocale() {
        if (locale_) freelocale(locale_);
    }
    PersonsLocale(const PersonsLocale&) = delete;
    PersonsLocale& operator=(const PersonsLocale&) = delete;

    const char* Info(nl_item item) const { return locale_ ? nl_langinfo_l(item, locale_) : ""; }
    // Whether the person has chosen no country's habits: the C library's own locale.
    static bool Neutral(std::string_view name) {
        return name.empty() || name == "POSIX" || name == "C" || name.starts_with("C.");
    }

  private:
    locale_t locale_;
};

std::string DecimalSign() {
    const std::string sign = PersonsLocale(LC_NUMERIC_MASK).Info(RADIXCHAR);
    return sign.empty() ? "." : sign;
}

// What a letter of the C library's date format is in the letters of the store.
std::string_view DateField(char letter) {
    switch (letter) {
    case 'd':
        return "dd";
    case 'e':
        return "d";
    case 'm':
        return "MM";
    case 'b':
    case 'h':
        return "MMM";
    case 'B':
        return "MMMM";
    case 'y':
        return "yy";
    case 'Y':
        return "yyyy";
    case 'D':
        return "MM/dd/yy";
    case 'F':
        return "yyyy-MM-dd";
    default:
        return {};
    }
}

std::string ShortDate() {
    const PersonsLocale locale(LC_TIME_MASK);
    std::string pattern;
    for (const char* at = locale.Info(D_FMT); *at; ++at) {
        if (*at != '%') {
            pattern.push_back(*at);
            continue;
        }
        ++at;
        const bool unpadded = *at == '-';
        // Flags and the marks of other numerals or eras stand before the letter.
        while (*at && std::string_view("-_0^#EO").find(*at) != std::string_view::npos)
            ++at;
        if (!*at) break;
        const std::string_view field = DateField(*at);
        pattern.append(unpadded && field.size() == 2 && field != "yy" ? field.substr(1) : field);
    }
    return pattern.empty() ? "MM/dd/yy" : pattern;
}

// "0" for Monday to "6" for Sunday. A neutral locale has no habits to follow: Monday, where the columns of
// the calendar begin, although the C library answers Sunday for it.
std::string FirstDayOfWeek() {
    const PersonsLocale locale(LC_TIME_MASK);
    if (PersonsLocale::Neutral(locale.Info(NL_LOCALE_NAME(LC_TIME)))) return "0";
    // The C library gives the first day counted from 1 at a reference date, and the date as a number in place
    // of a pointer: 1997-11-30, a Sunday, or 1997-12-01, a Monday.
    const auto reference = reinterpret_cast<std::uintptr_t>(locale.Info(_NL_TIME_WEEK_1STDAY)) & 0xFFFFFFFF;
    const int first = *locale.Info(_NL_TIME_FIRST_WEEKDAY);
    const int referenceDay = reference == 19971201 ? 0 : 6;
    return std::to_string((referenceDay + (first > 0 ? first - 1 : 0)) % 7);
}

} // namespace

std::vector<SystemValue> LocaleValues() {
    const std::string key(International);
    return {{key, "sdecimal", DecimalSign},
            {key, "sshortdate", ShortDate},
            {key, "ifirstdayofweek", FirstDayOfWeek}};
}

int SystemValues::Query(const StoreKey& key, std::string_view name, StoredValue& out) {
    const int error = tree_->Query(key, name, out);
    if (error != store_error::NotFound || key.hive != Hive::CurrentUser) return error;
    const std::string path = LowerCase(key.path);
    const std::string folded = LowerCase(name);
    for (const SystemValue& value : values_) {
        if (value.key != path || value.name != folded) continue;
        out = {ValueType::Text, value.answer() + '\0'};
        return store_error::None;
    }
    return error;
}

} // namespace quorvane
