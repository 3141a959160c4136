#include "platform/linux/desktop/patience.h"

#include "platform/event_loop.h"

#include <QTimer>

namespace quorvane {

bool Patience::Until(const std::function<bool()>& done) {
    QTimer alarm; // its event alone is wanted: it wakes the loop when the time is up
    alarm.setSingleShot(true);
    alarm.start(static_cast<int>(deadline_.remainingTime()));
    events_.RunWhile([&] { return !done() && !deadline_.hasExpired(); });
    return done();
}

} // namespace quorvane
