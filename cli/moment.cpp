#include "cli/moment.h"

#include "platform/clock.h"
#include "platform/headless.h"

namespace quorvane::cli {

DateTime MomentOf(const Arguments& arguments) {
    const auto at = arguments.At();
    return at ? *at : CreateClock()->Now();
}

} // namespace quorvane::cli
