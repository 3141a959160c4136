#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <optional>

class QDBusPendingCallWatcher;

namespace quorvane {

// Messages of the notification area: one at a time, each in the place of the last, by the desktop's
// notification service.
class Balloons : public QObject {
  public:
    struct Balloon {
        QString title;
        QString text;
        int milliseconds = 0;
    };

    // `withoutService` shows a balloon where nobody answers for it on the bus.
    explicit Balloons(std::function<void(const Balloon&)> withoutService)
        : withoutService_(std::move(withoutService)) {}

    void Show(const Balloon& balloon);

  private:
    void AskWhatTextMeans();
    void Send(const Balloon& balloon);
    void Sent(QDBusPendingCallWatcher& answer, const Balloon& balloon);

    std::function<void(const Balloon&)> withoutService_;
    std::optional<bool> textIsMarkup_;
    uint last_ = 0;               // the number of the one that stands, for the service
    bool busy_ = false;           // a question to the service is open
    std::optional<Balloon> next_; // what came meanwhile
};

} // namespace quorvane
