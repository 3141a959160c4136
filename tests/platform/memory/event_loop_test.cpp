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

TEST(MemoryEventLoop, AWaitEndsByATimerOrAPreparedActionOrFailsTheTest) {
    MemoryPlatform machine;
    const std::int64_t start = machine.clock.Ticks();
    bool open = true;
    machine.events.WhenWaiting([&] { open = false; });
    machine.events.RunWhile([&] { return open; });
    open = true;
    machine.events.StartTimer("closes", 5000, [&] { open = false; });
    machine.events.RunWhile([&] { return open; });
    EXPECT_EQ(machine.clock.Ticks() - start, 5000);
    EXPECT_THROW(machine.events.RunWhile([] { return true; }), std::logic_error);
}

} // namespace
} // namespace quorvane
