#include "platform/linux/desktop/event_loop.h"

#include "core/run_time_error.h"
#include "platform/linux/desktop/session.h"
#include "platform/store.h"
#include "tests/contracts/event_loop_contract.h"
#include "tests/support/process.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <chrono>
#include <csignal>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

class QtLoopMaker {
  public:
    EventLoop& Loop() { return loop_; }
    static std::int64_t Now() {
        return std::chrono::duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
    }
    static void PassTime(std::int64_t time) {
        const std::int64_t end = Now() + time;
        while (Now() < end) {
        }
    }

  private:
    int argumentCount_ = 0;
    QCoreApplication application_{argumentCount_, nullptr};
    QtEventLoop loop_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, EventLoopContract, QtLoopMaker);

class QtEventLoopTest : public ::testing::Test {
  protected:
    int argumentCount_ = 0;
    QCoreApplication application_{argumentCount_, nullptr};
    QtEventLoop loop_;
};

// Two ticks of one waking come before anything that the first of them posts.
TEST_F(QtEventLoopTest, SlowTimersShareTheirWakings) {
    std::string order;
    const auto tick = [&] {
        order += 't';
        loop_.Post([&] { order += 'p'; });
    };
    TimerId first = 0;
    TimerId second = 0;
    steady_clock::time_point start;
    do { // until the machine leaves the two as close to each other as they are to be
        loop_.StopTimer(first);
        loop_.StopTimer(second);
        start = steady_clock::now();
        first = loop_.StartTimer("a", 400, tick);
        QtLoopMaker::PassTime(8);
        second = loop_.StartTimer("b", 400, tick);
    } while (steady_clock::now() - start > milliseconds(15));
    loop_.RunWhile([&] { return order.empty(); });
    EXPECT_GE(steady_clock::now() - start, milliseconds(400)) << "never early";
    RunUntil(loop_, [&] { return order.size() >= 4; });
    EXPECT_EQ(order.substr(0, 4), "ttpp");
}

TEST_F(QtEventLoopTest, FailuresGoToTheHandlerAndOneInsideTheHandlerEnds) {
    std::vector<int> numbers;
    loop_.OnFailure([&](int number, const char*) {
        numbers.push_back(number);
        if (number == 6) throw RunTimeError::Overflow();
    });
    loop_.Post([] { throw RunTimeError::DivisionByZero(); });
    loop_.Post([] { throw std::bad_alloc(); });
    loop_.Pump();
    EXPECT_EQ(numbers, (std::vector<int>{11, 7}));
    loop_.Post([] { throw RunTimeError::Overflow(); });
    EXPECT_THROW(loop_.Pump(), ProcessEnd);
}

TEST_F(QtEventLoopTest, TheEndLeavesALoopOfTheToolkit) {
    loop_.Post([&] {
        QEventLoop foreign; // as a file dialogue of the toolkit has
        foreign.exec();
    });
    loop_.StartTimer("end", 30, [] { throw ProcessEnd{4}; });
    EXPECT_EQ(loop_.Run(), 4);
}

TEST_F(QtEventLoopTest, ASignalIsOneEndRequest) {
    LinuxSession session(loop_, 0, nullptr);
    int requests = 0;
    session.OnEndRequest([&] {
        ++requests;
        session.End(0);
    });
    raise(SIGTERM);
    raise(SIGINT);
    EXPECT_EQ(loop_.Run(), 0);
    EXPECT_EQ(requests, 1);
}

TEST_F(QtEventLoopTest, ASecondSignalEndsWhatTheFirstOneWaitsFor) {
    LinuxSession session(loop_, 0, nullptr);
    session.OnEndRequest([&] {
        loop_.Post([] { raise(SIGHUP); });
        loop_.RunWhile([] { return true; }); // a question that nobody answers
        session.End(0);
    });
    raise(SIGTERM);
    EXPECT_EQ(loop_.Run(), 1);
}

TEST_F(QtEventLoopTest, ASignalThatIsIgnoredAtTheStartStaysIgnored) {
    std::signal(SIGHUP, SIG_IGN); // as "nohup" has it
    int requests = 0;
    {
        LinuxSession session(loop_, 0, nullptr);
        session.OnEndRequest([&] { ++requests; });
        raise(SIGHUP);
        loop_.Pump();
    }
    raise(SIGHUP);
    std::signal(SIGHUP, SIG_DFL);
    EXPECT_EQ(requests, 0);
}

TEST_F(QtEventLoopTest, WithoutADisplayNothingWaits) {
    int ticks = 0;
    loop_.StartTimer("tick", 1, [&] { ++ticks; });
    QtLoopMaker::PassTime(5);
    loop_.DisplayLost();
    loop_.Pump();
    EXPECT_EQ(ticks, 0);
    EXPECT_THROW(loop_.RunWhile([] { return true; }), ProcessEnd);
}

TEST(AutostartEntryTest, QuotesTheProgramAndPassesNoOption) {
    EXPECT_NE(AutostartEntry("/opt/my quorvane").find("\nExec=\"/opt/my quorvane\"\n"), std::string::npos);
    EXPECT_NE(AutostartEntry("/a$b\"c\\d%e").find(R"(Exec="/a\\$b\\"c\\\\d%%e")"), std::string::npos);
}

TEST_F(QtEventLoopTest, AnAutostartEntryComesAndGoesInThePersonsFolder) {
    const test::TemporaryFolder folder;
    LinuxSession session(loop_, 0, nullptr);
    const auto config = folder.Path() / "config";
    setenv("XDG_CONFIG_HOME", config.c_str(), 1);
    EXPECT_EQ(session.SetAutostart(false, ""), 0) << "nothing there to take away";
    EXPECT_EQ(session.SetAutostart(true, "/win9x"), 0);
    const std::string entry = test::ReadWhole(config / "autostart/quorvane.desktop");
    EXPECT_NE(entry.find("Exec=\"" + std::filesystem::read_symlink("/proc/self/exe").string() + "\"\n"),
              std::string::npos)
        << entry;
    EXPECT_EQ(session.SetAutostart(false, ""), 0);
    EXPECT_FALSE(std::filesystem::exists(config / "autostart/quorvane.desktop"));
    setenv("XDG_CONFIG_HOME", "/proc/nowhere", 1);
    EXPECT_EQ(session.SetAutostart(true, ""), store_error::WriteFault);
    unsetenv("XDG_CONFIG_HOME");
}

TEST_F(QtEventLoopTest, TheCommandLineIsTheTextBehindTheProgramsName) {
    std::string words[] = {"quorvane", "/settings", "and more"};
    char* arguments[] = {words[0].data(), words[1].data(), words[2].data()};
    EXPECT_EQ(LinuxSession(loop_, 3, arguments).CommandLine(), "/settings and more");
}

} // namespace
} // namespace quorvane
