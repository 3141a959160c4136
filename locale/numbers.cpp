#include "locale/numbers.h"

#include "core/locale_ids.h"
#include "core/locale_strings.h"

#include <algorithm>
#include <iterator>

namespace quorvane {
namespace {

struct Range {
    int first;
    int last;
};

// Menus and the sky's words share numbers with nothing: where two lists once gave one number to two texts,
// the caption of the menu has it.
constexpr Range Used[] = {
    {5, 6},    // tabs of the settings: the first and the last
    {9, 21},   // the tray's menu
    {27, 37},  // the other tabs
    {38, 45},  // Sun and Moon
    {47, 58},  // the same; the buttons of the settings
    {73, 110}, // months and days
    {LocaleStrings::FirstLateId, locale_id::Last},
};

} // namespace

bool IsLocaleNumberUsed(int id) {
    return std::any_of(std::begin(Used), std::end(Used),
                       [id](const Range& range) { return id >= range.first && id <= range.last; });
}

} // namespace quorvane
