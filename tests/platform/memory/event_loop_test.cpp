#include "core/run_time_error.h"
#include "platform/memory/memory_platform.h"
#include "tests/contracts/event_loop_contract.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

class MemoryLoopMaker {
  public:
    EventLoop& Loop() { return machine_.events; }
    std::int64_t Now() { return machine_.clock.Ticks(); }
    void PassTime(std::int64_t milliseconds) { machine_.clock.MoveTicks(milliseconds); }

  private:
    MemoryPlatform machine_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, EventLoopContract, MemoryLoopMaker);

class MemoryEventLoopTest : public ::testing::Test {
  protected:
    MemoryPlatform machine_;
    std::int64_t start_ = machine_.clock.Ticks();
};

TEST_F(MemoryEventLoopTest, TickThatPumpsCanBeEnteredAgainAndOneThatDoesNotCannot) {
    int depth = 0;
    int deepest = 0;
    bool pumps = true;
    machine_.events.StartTimer("slow", 100, [&] {
        deepest = std::max(deepest, ++depth);
        machine_.clock.MoveTicks(250);
        if (pumps && depth < 3) machine_.events.Pump();
        --depth;
    });
    machine_.events.Advance(100);
    EXPECT_EQ(deepest, 3);
    pumps = false;
    deepest = 0;
    machine_.events.Advance(1000);
    EXPECT_EQ(deepest, 1);
}

TEST_F(MemoryEventLoopTest, WaitEndsByATimerOrAPreparedActionOrFailsTheTest) {
    bool open = true;
    machine_.events.WhenWaiting([&] { open = false; });
    machine_.events.RunWhile([&] { return open; });
    open = true;
    machine_.events.StartTimer("closes", 5000, [&] { open = false; });
    machine_.events.RunWhile([&] { return open; });
    EXPECT_EQ(machine_.clock.Ticks() - start_, 5000);
    EXPECT_THROW(machine_.events.RunWhile([] { return true; }), std::logic_error);
}

TEST_F(MemoryEventLoopTest, WallClockIsSetApartFromTheTicks) {
    machine_.clock.SetNow({2024, 2, 28, 23, 59, 59, 500});
    machine_.clock.MoveWall(500);
    EXPECT_EQ(machine_.clock.Now(), (DateTime{2024, 2, 29, 0, 0, 0, 0}));
    machine_.clock.SetNow({1969, 12, 31, 23, 59, 59, 999});
    EXPECT_EQ(machine_.clock.Now(), (DateTime{1969, 12, 31, 23, 59, 59, 999}));
    EXPECT_EQ(machine_.clock.Ticks(), start_);
}

} // namespace
} // namespace quorvane
