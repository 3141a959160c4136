#pragma once

#include "platform/session.h"

#include <QObject>
#include <memory>

class QSocketNotifier;

namespace quorvane {

class QtEventLoop;

// The ways in which a Linux session ends a program: SIGTERM, SIGINT and SIGHUP, the session manager's word,
// and a display that goes away. Each is an end request. There is one session in a process.
class LinuxSession final : public Session {
  public:
    LinuxSession(QtEventLoop& events, int argumentCount, char** arguments);
    ~LinuxSession() override;

    std::string CommandLine() override { return commandLine_; }
    // An XDG autostart entry. The switches are left out: nothing but a person passes an option.
    int SetAutostart(bool enabled, const std::string& switches) override;
    void OnEndRequest(std::function<void()> handler) override { endRequest_ = std::move(handler); }
    [[noreturn]] void End(int status) override;

    // The display is gone, and the toolkit is about to end the process in the middle of its own work, on
    // whichever of its threads noticed. On the program's own thread what is left is done here, and the
    // process ends; another one has it done there and waits. Comes back where nothing is left to do.
    static void DisplayIsGone();

  private:
    class QuitFilter;

    void TakeFromPipe();
    void RequestEnd();
    void EndWithoutDisplay();

    QtEventLoop& events_;
    std::string commandLine_;
    std::function<void()> endRequest_;
    bool ending_ = false; // the first request has been taken up
    std::unique_ptr<QSocketNotifier> signals_;
    std::unique_ptr<QuitFilter> quitFilter_;
};

// The text of an autostart entry that starts the program of this path.
std::string AutostartEntry(const std::string& program);

} // namespace quorvane
