#pragma once

#include "platform/event_loop.h"

#include <QBasicTimer>
#include <QObject>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

namespace quorvane {

// The events of a QApplication, which must exist before. One timer of the toolkit wakes for all: those that
// fall due close to each other run in one waking, and one that runs inside another's nested loop is not held
// back.
class QtEventLoop final : public EventLoop {
  public:
    QtEventLoop();

    TimerId StartTimer(std::string_view name, int intervalMilliseconds, std::function<void()> tick) override;
    void StopTimer(TimerId timer) override;
    void Sleep(TimerId timer) override;
    void Wake(TimerId timer) override;
    void HoldTimers() override;
    void ReleaseTimers() override;
    void Post(std::function<void()> work) override;
    void Deliver(const std::function<void()>& work) override;
    void Pump() override;
    void RunWhile(const std::function<bool()>& condition) override;
    int Run() override;
    void OnFailure(std::function<void(int number, const char* description)> handler) override;

    // The connection to the display is gone: from now on no event runs and no wait waits, so that what is
    // left of the program can save and end. A wait ends the process.
    void DisplayLost() { displayLost_ = true; }

  private:
    struct Timer {
        TimerId id;
        int interval;
        std::int64_t due; // of the steady clock, in milliseconds
        std::function<void()> tick;
        bool asleep = false;

        void SetNextDue(std::int64_t now);
    };

    // What queued calls hang on, and what the waking comes to.
    class Context : public QObject {
      public:
        explicit Context(QtEventLoop& loop)
            : loop_(loop) {}

      protected:
        void timerEvent(QTimerEvent*) override {
            loop_.wake_.stop();
            loop_.RunDue();
        }

      private:
        QtEventLoop& loop_;
    };

    std::shared_ptr<Timer> Find(TimerId timer) const;
    void RunOnePosted();
    void RunDue();
    void DestroyUnloaded();
    void Arm();
    void Fail(int number, const char* description);
    void End(int status);
    void LeaveWhereEnded() const;

    Context context_{*this};
    QBasicTimer wake_;
    std::vector<std::shared_ptr<Timer>> timers_; // in the order of their ids
    std::deque<std::function<void()>> posted_;
    std::function<void(int, const char*)> failureHandler_;
    std::optional<int> ended_; // the exit status, once the process is to end
    TimerId lastId_ = 0;
    int held_ = 0;              // HoldTimers without its answer
    std::int64_t armedFor_ = 0; // the moment that wake_ was last set to
    int delivering_ = 0;        // depth of Deliver
    bool failing_ = false;
    bool displayLost_ = false;
};

} // namespace quorvane
