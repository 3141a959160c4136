// Any bytes as a locale file.

#include "locale/locale_text.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    quorvane::LocaleStrings strings;
    quorvane::LoadLocaleStrings(content, strings);
    quorvane::ReadLocaleHeader(content);
    return 0;
}
