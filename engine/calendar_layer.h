#pragma once

#include "core/locale_strings.h"
#include "engine/composition.h"
#include "platform/desktop.h"
#include "platform/store.h"

namespace quorvane {

// Paints the calendar of the present moment, in the person's regional values as they then are, and, where the
// settings want it kept clear of panels, inside the work area of the desktop; null: there are no panels.
// Everything handed in must outlive it.
Composition::CalendarPainter CalendarLayer(const GlobalRecord& record, Clock& clock, Drawing& drawing,
                                           Store& store, System& system, const LocaleStrings& locale,
                                           Desktop* desktop);

} // namespace quorvane
