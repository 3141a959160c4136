#include "platform/windows/desktop/channel.h"

#include "platform/headless.h"
#include "platform/windows/base/channel_message.h"
#include "platform/windows/desktop/event_loop.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace quorvane {
namespace {

using Outcome = ChannelClient::Outcome;

class WindowsChannelTest : public ::testing::Test {
  protected:
    WindowsChannelTest() {
        channel_.Listen([this](const std::string& question, const Channel::Reply& reply) {
            ++questions_;
            if (question != "never") reply("<" + question + ">");
        });
    }
    // Runs events while the client's work lasts.
    template<typename Work>
    void While(Work work) {
        std::atomic<bool> done = false;
        std::thread client([&] {
            work();
            done = true;
        });
        const TimerId look = loop_.StartTimer("look", 10, [] {});
        loop_.RunWhile([&] { return !done; });
        loop_.StopTimer(look);
        client.join();
    }
    ChannelClient::Result Ask(const std::string& question) {
        ChannelClient::Result result;
        While([&] {
            result = CreateChannelClient()->Ask(static_cast<std::int32_t>(GetCurrentProcessId()), question,
                                                10'000);
        });
        return result;
    }

    WindowsEventLoop loop_;
    WindowsChannel channel_{loop_};
    int questions_ = 0;
};

TEST_F(WindowsChannelTest, AnswersAnyBytesUpToTheLimitAndTellsOfNone) {
    EXPECT_EQ(Ask(std::string("a\0\xFF", 3)).answer, std::string("<a\0\xFF>", 5));
    EXPECT_EQ(Ask(std::string(channel_limit::MessageBytes + 1, 'x')).outcome, Outcome::NoAnswer);
    EXPECT_EQ(questions_, 1);
    EXPECT_EQ(Ask("never").outcome, Outcome::NoAnswer);
    EXPECT_EQ(Ask("on").answer, "<on>");
    EXPECT_EQ(CreateChannelClient()->Ask(1, "nobody", 100).outcome, Outcome::NotRunning);
    const auto copies = CreateChannelClient()->Copies();
    ASSERT_EQ(copies.size(), 1U);
    EXPECT_EQ(copies[0].process, static_cast<std::int32_t>(GetCurrentProcessId()));
}

TEST_F(WindowsChannelTest, NoClientHoldsTheProgramUp) {
    // Clients whose windows never take an answer, more than are let in; messages that are no questions.
    HWND deaf = nullptr;
    int taken = 0;
    std::thread client;
    std::atomic<bool> sent = false;
    std::atomic<bool> over = false;
    client = std::thread([&] {
        deaf = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
        std::string question = "hello";
        for (int i = 0; i < channel_limit::Questions + 4; ++i)
            taken += SendChannelMessage(deaf, loop_.Window(), channel_message::Question, question, SMTO_BLOCK,
                                        5000) == Sending::Taken;
        SendChannelMessage(deaf, loop_.Window(), 77, question, SMTO_BLOCK, 5000);
        sent = true;
        while (!over)
            Sleep(1); // it looks at no message
        DestroyWindow(deaf);
    });
    int ticks = 0;
    const TimerId timer = loop_.StartTimer("own", 20, [&] { ++ticks; });
    loop_.RunWhile([&] { return !sent || ticks < 10; });
    loop_.StopTimer(timer);
    EXPECT_EQ(taken, channel_limit::Questions);
    over = true;
    client.join();
    EXPECT_EQ(questions_, channel_limit::Questions);
    ChannelClient::Result result;
    for (int tries = 0; tries < 100 && result.outcome != Outcome::Answered; ++tries)
        result = Ask("behind them");
    EXPECT_EQ(result.answer, "<behind them>");
}

} // namespace
} // namespace quorvane
