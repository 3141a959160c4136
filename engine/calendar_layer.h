#pragma once

#include "core/locale_strings.h"
#include "engine/composition.h"
#include "platform/store.h"

namespace quorvane {

// Paints the calendar of the present moment, in the person's regional values as they then are. Everything
// handed in must outlive it.
Composition::CalendarPainter CalendarLayer(const GlobalRecord& record, Clock& clock, Drawing& drawing,
                                           Store& store, System& system, const LocaleStrings& locale);

} // namespace quorvane
