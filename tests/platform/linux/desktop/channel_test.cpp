#include "platform/linux/desktop/channel.h"

#include "platform/headless.h"
#include "platform/linux/base/channel_socket.h"
#include "platform/linux/desktop/event_loop.h"
#include "tests/support/temporary_folder.h"

#include <QCoreApplication>
#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace quorvane {
namespace {

using Outcome = ChannelClient::Outcome;

// The program's loop runs in the test's thread, what clients do in threads beside it.
class LinuxChannelTest : public ::testing::Test {
  protected:
    LinuxChannelTest() { setenv("XDG_RUNTIME_DIR", folder_.Path().c_str(), 1); }
    ~LinuxChannelTest() override { unsetenv("XDG_RUNTIME_DIR"); }

    void Answer() {
        ASSERT_TRUE(channel_.Listen([this](const std::string& question, const Channel::Reply& reply) {
            ++questions_;
            if (question == "later") {
                kept_ = reply;
            } else if (question != "never") {
                reply(question == "long" ? std::string(channel_limit::MessageBytes, 'x')
                                         : "<" + question + ">");
            }
        }));
    }
    // Runs events while the client's work lasts.
    template<typename Work>
    void While(Work work) {
        std::atomic<bool> done = false;
        std::thread client([&] {
            work();
            done = true;
        });
        const TimerId look = loop_.StartTimer("look", 5, [] {});
        loop_.RunWhile([&] { return !done; });
        loop_.StopTimer(look);
        client.join();
    }
    ChannelClient::Result Ask(const std::string& question) {
        ChannelClient::Result result;
        While([&] { result = CreateChannelClient()->Ask(getpid(), question, 10'000); });
        return result;
    }
    // A socket of this process's channel that nobody reads or writes.
    static int Connected() {
        const int client = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
        const auto address = SocketAddress(SocketPath(ChannelFolder(), getpid()));
        EXPECT_EQ(connect(client, reinterpret_cast<const sockaddr*>(&*address), sizeof *address), 0);
        return client;
    }

    test::TemporaryFolder folder_;
    int argumentCount_ = 0;
    QCoreApplication application_{argumentCount_, nullptr};
    QtEventLoop loop_;
    LinuxChannel channel_{loop_};
    Channel::Reply kept_;
    int questions_ = 0;
};

TEST_F(LinuxChannelTest, AnswersAnyBytesUpToTheLimit) {
    EXPECT_EQ(Ask("nobody").outcome, Outcome::NotRunning);
    Answer();
    EXPECT_EQ(Ask("").answer, "<>");
    EXPECT_EQ(Ask(std::string("a\0\xFF", 3)).answer, std::string("<a\0\xFF>", 5));
    const std::string big(channel_limit::MessageBytes, 'b');
    EXPECT_EQ(Ask(big).outcome, Outcome::NoAnswer) << "the answer would be above the limit";
    EXPECT_EQ(Ask("long").answer.size(), channel_limit::MessageBytes);
    EXPECT_EQ(Ask("never").outcome, Outcome::NoAnswer) << "a reply that is dropped";
    channel_.Close();
    EXPECT_EQ(Ask("closed").outcome, Outcome::NotRunning);
}

TEST_F(LinuxChannelTest, AnswersLaterAndToNobody) {
    Answer();
    ChannelClient::Result result;
    loop_.StartTimer("works", 30, [this] {
        if (kept_) std::exchange(kept_, nullptr)("done");
    });
    EXPECT_EQ(Ask("later").answer, "done");
    While([&] { result = CreateChannelClient()->Ask(getpid(), "later", 0); });
    EXPECT_EQ(result.outcome, Outcome::NoAnswer);
    EXPECT_EQ(Ask("still there").answer, "<still there>");
}

TEST_F(LinuxChannelTest, NoClientHoldsTheProgramUp) {
    Answer();
    std::vector<std::unique_ptr<SocketHandle>> hanging;
    // More than are let in: some stop in the middle of a message, some never begin one.
    While([&] {
        for (int i = 0; i < channel_limit::Questions + 4; ++i) {
            hanging.push_back(std::make_unique<SocketHandle>(Connected()));
            if (i % 2 == 0) send(hanging.back()->Get(), "\1half", 5, MSG_NOSIGNAL);
        }
    });
    EXPECT_EQ(Ask("behind them").answer, "<behind them>");
    hanging.clear();
    // 100 MiB, and bytes that are no packets.
    While([] {
        const std::string packet = '\1' + std::string(60'000, 'x');
        const SocketHandle greedy(Connected());
        std::size_t sent = 0;
        while (sent < 100'000'000 && send(greedy.Get(), packet.data(), packet.size(), MSG_NOSIGNAL) > 0)
            sent += packet.size();
        EXPECT_LT(sent, 2 * channel_limit::MessageBytes);
        const SocketHandle odd(Connected());
        send(odd.Get(), "\7", 1, MSG_NOSIGNAL);
    });
    EXPECT_EQ(Ask("and on").answer, "<and on>");
    // A flood: all come through, and the loop's own timers with them.
    int ticks = 0;
    loop_.StartTimer("own", 20, [&] { ++ticks; });
    questions_ = 0;
    While([] {
        const auto client = CreateChannelClient();
        for (int i = 0; i < 300; ++i)
            EXPECT_EQ(client->Ask(getpid(), "q", 10'000).outcome, Outcome::Answered);
    });
    EXPECT_EQ(questions_, 300);
    EXPECT_GT(ticks, 2);
}

TEST_F(LinuxChannelTest, TheNewestCopyStandsFirstAndAKilledOneIsGone) {
    Answer();
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t other = fork();
    if (other == 0) {
        // A copy that listens and never answers, as one that is stopped; asked "k" it is killed.
        const int listener = socket(AF_UNIX, SOCK_SEQPACKET, 0);
        const auto address = SocketAddress(SocketPath(ChannelFolder(), getpid()));
        const bool good =
            bind(listener, reinterpret_cast<const sockaddr*>(&*address), sizeof *address) == 0 &&
            listen(listener, 5) == 0 && write(ready[1], "", 1) == 1;
        char bytes[8];
        while (good) {
            const int asking = accept(listener, nullptr, nullptr);
            if (recv(asking, bytes, sizeof bytes, 0) > 1 && bytes[1] == 'k') raise(SIGKILL);
        }
        _exit(1);
    }
    char byte = 0;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    const auto client = CreateChannelClient();
    auto copies = client->Copies();
    ASSERT_EQ(copies.size(), 2U);
    EXPECT_EQ(copies[0].process, other);
    EXPECT_EQ(copies[1].process, getpid());
    EXPECT_EQ(client->Ask(other, "q", 50).outcome, Outcome::NoAnswer);
    EXPECT_EQ(client->Ask(other, "k", 600'000).outcome, Outcome::NoAnswer) << "at once, not in ten minutes";
    waitpid(other, nullptr, 0);
    copies = client->Copies();
    ASSERT_EQ(copies.size(), 1U);
    EXPECT_EQ(copies[0].process, getpid());
    EXPECT_NE(access(SocketPath(ChannelFolder(), other).c_str(), F_OK), 0) << "what it left is taken away";
    close(ready[0]);
    close(ready[1]);
}

TEST_F(LinuxChannelTest, TheFolderIsThePersonsAlone) {
    Answer();
    struct stat found {};
    ASSERT_EQ(stat(ChannelFolder().c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777, 0700U);
    const std::string before = ChannelFolder();
    setenv("XDG_CONFIG_HOME", "/elsewhere", 1);
    EXPECT_NE(ChannelFolder(), before) << "another tree is another program";
    unsetenv("XDG_CONFIG_HOME");
    channel_.Close();
    setenv("XDG_RUNTIME_DIR", "/proc/nowhere", 1);
    EXPECT_FALSE(channel_.Listen([](const std::string&, const Channel::Reply&) {}));
    setenv("XDG_RUNTIME_DIR", (folder_.Path() / std::string(120, 'l')).c_str(), 1);
    EXPECT_FALSE(channel_.Listen([](const std::string&, const Channel::Reply&) {}))
        << "no room in an address";
}

} // namespace
} // namespace quorvane
