#include "platform/linux/desktop/event_loop.h"
#include "platform/linux/desktop/session.h"
#include "tests/support/process.h"

#include <QCoreApplication>
#include <atomic>
#include <gtest/gtest.h>
#include <string>
#include <thread>

namespace quorvane {
namespace {

// What the toolkit does on each thread that notices: it tells, and ends the process where nobody did.
void NoticeThatTheDisplayIsGone() {
    LinuxSession::DisplayIsGone();
    _exit(70);
}

class DisplayEndDeathTest : public ::testing::Test {
  protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    // A program that changes its record in each tick and saves it at the end: plain memory, no lock.
    [[noreturn]] static void RunProgram(const std::function<void(QtEventLoop&)>& beforeTheEvents) {
        int argumentCount = 0;
        QCoreApplication application(argumentCount, nullptr);
        QtEventLoop loop;
        LinuxSession session(loop, 0, nullptr);
        std::string record = "read";
        loop.StartTimer("tick", 1, [&] {
            record += '.';
            ticks_ = true;
        });
        session.OnEndRequest([&] {
            record += " saved";
            session.End(record.ends_with(" saved") ? 0 : 71);
        });
        beforeTheEvents(loop);
        _exit(loop.Run());
    }

    static inline std::atomic<bool> ticks_ = false;
};

TEST_F(DisplayEndDeathTest, NoticedByAThreadOfTheToolkitItIsTheProgramsOwnThatSaves) {
    const auto program = [] {
        std::thread toolkit;
        RunProgram([&toolkit](QtEventLoop&) {
            toolkit = std::thread([] {
                test::WaitFor([] { return ticks_.load(); });
                NoticeThatTheDisplayIsGone();
            });
        });
    };
    EXPECT_EXIT(program(), ::testing::ExitedWithCode(0), "");
}

TEST_F(DisplayEndDeathTest, NoticedByBothItIsSavedOnce) {
    const auto program = [] {
        std::thread toolkit;
        RunProgram([&toolkit](QtEventLoop& loop) {
            loop.Post([] { NoticeThatTheDisplayIsGone(); });
            toolkit = std::thread(NoticeThatTheDisplayIsGone);
        });
    };
    EXPECT_EXIT(program(), ::testing::ExitedWithCode(0), "");
}

TEST_F(DisplayEndDeathTest, AnEndThatWaitsForSomebodyIsNotHeldUpAndNotCalledSaved) {
    const auto program = [] {
        int argumentCount = 0;
        QCoreApplication application(argumentCount, nullptr);
        QtEventLoop loop;
        LinuxSession session(loop, 0, nullptr);
        std::thread toolkit;
        session.OnEndRequest([&] {
            toolkit = std::thread(NoticeThatTheDisplayIsGone);
            loop.RunWhile([] { return true; });
        });
        raise(SIGTERM);
        _exit(loop.Run());
    };
    EXPECT_EXIT(program(), ::testing::ExitedWithCode(1), "");
}

} // namespace
} // namespace quorvane
