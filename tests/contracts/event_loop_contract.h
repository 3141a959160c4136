#pragma once

#include "core/run_time_error.h"
#include "platform/event_loop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace quorvane {

// Runs events until the condition holds; a timer of the loop itself is the limit.
template<typename Condition>
void RunUntil(EventLoop& loop, Condition condition) {
    bool late = false;
    const TimerId limit = loop.StartTimer("limit", 10'000, [&] { late = true; });
    loop.RunWhile([&] { return !condition() && !late; });
    loop.StopTimer(limit);
    EXPECT_FALSE(late);
}

// What every event loop must do. A platform's test gives a class with
//     EventLoop& Loop();
//     std::int64_t Now();                          // milliseconds of the clock that the loop goes by
//     void PassTime(std::int64_t milliseconds);    // time passes and nothing runs
// and instantiates:
//     INSTANTIATE_TYPED_TEST_SUITE_P(Memory, EventLoopContract, MemoryLoopMaker);
template<typename Maker>
class EventLoopContract : public testing::Test {
  protected:
    Maker maker_;
    EventLoop& loop_ = maker_.Loop();
};

TYPED_TEST_SUITE_P(EventLoopContract);

TYPED_TEST_P(EventLoopContract, TimersRepeatMergeAndStop) {
    int ticks = 0;
    int others = 0;
    TimerId timer = 0;
    timer = this->loop_.StartTimer("three", 10, [&] {
        if (++ticks == 3) this->loop_.StopTimer(timer);
    });
    const TimerId other = this->loop_.StartTimer("counter", 15, [&] { ++others; });
    RunUntil(this->loop_, [&] { return others >= 6; });
    EXPECT_EQ(ticks, 3);
    this->maker_.PassTime(200);
    others = 0;
    this->loop_.Pump();
    EXPECT_GE(others, 1);
    EXPECT_LE(others, 2) << "late ticks are merged";
    this->loop_.StopTimer(other);
    this->loop_.StopTimer(other);
}

TYPED_TEST_P(EventLoopContract, ANestedWaitKeepsAllTimersGoingAndTheOneItIsInToo) {
    int inner = 0;
    int outer = 0;
    bool waited = false;
    this->loop_.StartTimer("other", 20, [&] { ++inner; });
    this->loop_.StartTimer("modal", 30, [&] {
        if (++outer == 1) {
            this->loop_.RunWhile([&] { return inner < 4 || outer < 2; });
            waited = true;
        }
    });
    RunUntil(this->loop_, [&] { return waited; });
    EXPECT_GE(outer, 2);
}

TYPED_TEST_P(EventLoopContract, ATimerStoppedOrPutToSleepInsideATickFiresNoMore) {
    int stopped = 0;
    int asleep = 0;
    bool first = false;
    TimerId one = 0;
    TimerId two = 0;
    this->loop_.StartTimer("first", 20, [&] {
        first = true;
        this->loop_.StopTimer(one);
        this->loop_.Sleep(two);
    });
    one = this->loop_.StartTimer("stopped", 25, [&] { ++stopped; });
    two = this->loop_.StartTimer("asleep", 25, [&] { ++asleep; });
    RunUntil(this->loop_, [&] { return first; });
    this->maker_.PassTime(60);
    this->loop_.Pump();
    EXPECT_EQ(stopped + asleep, 0);
}

// A tick may be late on a busy machine, never early: of several ticks the most punctual one tells the grid.
TYPED_TEST_P(EventLoopContract, ATimerThatSleptKeepsToItsMultiples) {
    constexpr int Interval = 100;
    std::vector<std::int64_t> late;
    const std::int64_t start = this->maker_.Now();
    const TimerId timer = this->loop_.StartTimer(
        "grid", Interval, [&] { late.push_back((this->maker_.Now() - start) % Interval); });
    RunUntil(this->loop_, [&] { return late.size() == 2; });
    this->loop_.Sleep(timer);
    this->loop_.Sleep(timer);
    const std::int64_t slept = this->maker_.Now();
    int others = 0;
    const TimerId other = this->loop_.StartTimer("other", 50, [&] { ++others; });
    RunUntil(this->loop_, [&] { return others >= 5; });
    EXPECT_EQ(late.size(), 2U) << "asleep";
    this->loop_.StopTimer(other);
    // Woken between two of its moments.
    while ((this->maker_.Now() - start) % Interval < Interval / 2)
        this->maker_.PassTime(1);
    this->loop_.Wake(timer);
    this->loop_.Wake(timer);
    this->loop_.Pump();
    EXPECT_EQ(late.size(), 2U) << "what was slept through is not made good";
    late.clear();
    RunUntil(this->loop_, [&] { return late.size() == 6; });
    EXPECT_LT(*std::min_element(late.begin(), late.end()), 35);
    EXPECT_LT(this->maker_.Now() - slept, 10'000);
    this->loop_.StopTimer(timer);
    this->loop_.Sleep(timer);
    this->loop_.Wake(timer);
}

TYPED_TEST_P(EventLoopContract, HeldTimersTickOnceWhenTheyAreReleased) {
    int ticks = 0;
    int posted = 0;
    this->loop_.StartTimer("fast", 20, [&] { ++ticks; });
    this->loop_.Post([&] { ++posted; });
    {
        const TimersHeld outer(this->loop_);
        const TimersHeld inner(this->loop_);
        this->maker_.PassTime(100);
        this->loop_.Pump();
    }
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(posted, 1) << "everything else runs";
    this->loop_.Pump();
    EXPECT_EQ(ticks, 1);
    RunUntil(this->loop_, [&] { return ticks == 3; });
}

TYPED_TEST_P(EventLoopContract, PostedWorkRunsOnceInOrder) {
    std::string order;
    this->loop_.Post([&] {
        order += 'a';
        this->loop_.Post([&] { order += 'c'; });
    });
    this->loop_.Post([&] { order += 'b'; });
    EXPECT_EQ(order, "");
    this->loop_.StartTimer("keeps the wait going", 10, [] {});
    RunUntil(this->loop_, [&] { return order.size() >= 3; });
    EXPECT_EQ(order, "abc");
}

TYPED_TEST_P(EventLoopContract, AFailureGoesToTheHandlerAndAnEndLeavesEveryLoop) {
    std::vector<int> numbers;
    this->loop_.OnFailure([&](int number, const char*) { numbers.push_back(number); });
    this->loop_.Post([] { throw RunTimeError::DivisionByZero(); });
    this->loop_.Pump();
    EXPECT_EQ(numbers, std::vector<int>{11});

    bool innerLeft = false;
    this->loop_.StartTimer("end", 30, [] { throw ProcessEnd{4}; });
    this->loop_.Post([&] {
        try {
            this->loop_.RunWhile([] { return true; });
        } catch (const ProcessEnd&) {
            innerLeft = true;
            throw;
        }
    });
    EXPECT_EQ(this->loop_.Run(), 4);
    EXPECT_TRUE(innerLeft);
}

REGISTER_TYPED_TEST_SUITE_P(EventLoopContract, TimersRepeatMergeAndStop,
                            ANestedWaitKeepsAllTimersGoingAndTheOneItIsInToo,
                            ATimerStoppedOrPutToSleepInsideATickFiresNoMore,
                            ATimerThatSleptKeepsToItsMultiples, HeldTimersTickOnceWhenTheyAreReleased,
                            PostedWorkRunsOnceInOrder, AFailureGoesToTheHandlerAndAnEndLeavesEveryLoop);

} // namespace quorvane
