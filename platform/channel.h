#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

// The way by which a running program answers the shell: one message each way, for programs of the same person
// on the same machine and nobody else. A message is any bytes up to the limit.
namespace channel_limit {
inline constexpr std::size_t MessageBytes = 4 * 1024 * 1024;
// Who asks more than that many questions at a time is turned away.
inline constexpr int Questions = 8;
// How long either side waits for the other one in the middle of a message.
inline constexpr int MilliSecondsBetween = 2000;
} // namespace channel_limit

// The running program's side. Nothing that a client does or fails to do holds the program up.
class Channel {
  public:
    virtual ~Channel() = default;

    // Gives the answer to one question, at once or later; dropped, the client learns that there will be none.
    using Reply = std::function<void(std::string answer)>;
    // From now on questions are heard. The handler is called from the event loop, under its rule for
    // callbacks. False where this machine has no place to be heard at.
    virtual bool Listen(std::function<void(std::string question, Reply reply)> handler) = 0;
    // Nothing is heard any more; answers that are under way still go out while the loop runs.
    virtual void Close() = 0;
};

// One copy of the program that listens.
struct RunningCopy {
    std::int32_t process = 0;
    std::int64_t started = 0; // orders copies by their start; the unit has no meaning
};

// The side of whoever asks.
class ChannelClient {
  public:
    virtual ~ChannelClient() = default;

    // The copies that this person runs, the one that started last first.
    virtual std::vector<RunningCopy> Copies() = 0;

    enum class Outcome { Answered, NotRunning, NoAnswer };
    struct Result {
        Outcome outcome = Outcome::NotRunning;
        std::string answer;
    };
    // Waits for the answer, at most `patienceMilliseconds` from the end of the question on.
    virtual Result Ask(std::int32_t process, const std::string& question, int patienceMilliseconds) = 0;
};

} // namespace quorvane
