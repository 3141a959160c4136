#include "platform/linux/desktop/session.h"

#include "platform/linux/base/base_folders.h"
#include "platform/linux/desktop/event_loop.h"
#include "platform/store.h"

#include <QEvent>
#include <QGuiApplication>
#include <QSessionManager>
#include <QSocketNotifier>
#include <QThread>
#include <X11/ICE/ICElib.h>
#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <unistd.h>

namespace quorvane {

namespace {

namespace fs = std::filesystem;

constexpr std::array EndSignals{SIGTERM, SIGINT, SIGHUP};
constexpr int SavingMilliseconds = 10'000; // that a thread of the toolkit gives the program's own
constexpr int NotSaved = 1;                // exit status

// What comes through the pipe.
constexpr char EndSignal = 's';
constexpr char DisplayGone = 'd';
constexpr char ManagerGone = 'm';

// A signal handler and a message handler get no argument; these two are what they reach the session by.
std::array<int, 2> signalPipe{-1, -1};
std::atomic<LinuxSession*> theSession = nullptr;
std::atomic<int> endStatus = -1; // of the process, once it only tears itself down

void TellPipe(char what) {
    [[maybe_unused]] const ssize_t written = write(signalPipe[1], &what, 1);
}

void TakeSignal(int) {
    const int saved = errno;
    TellPipe(EndSignal);
    errno = saved;
}

// Called by the library in which the session manager is talked to; its own would end the process.
void TakeManagersEnd(IceConn) {
    TellPipe(ManagerGone);
}

// A signal that is ignored when the program starts, as "nohup" has it, stays so.
void TakeUnlessIgnored(int number, const struct sigaction& action) {
    struct sigaction before {};
    sigaction(number, nullptr, &before);
    if (before.sa_handler != SIG_IGN) sigaction(number, &action, nullptr);
}

fs::path AutostartFile() {
    return fs::path(ConfigFolder()) / "autostart" / "quorvane.desktop";
}

// The number that the system's own words have for it.
int ErrorNumber(const std::error_code& error) {
    if (!error) return store_error::None;
    const bool refused = error == std::errc::permission_denied || error == std::errc::read_only_file_system;
    return refused ? store_error::AccessDenied : store_error::WriteFault;
}

} // namespace

// The toolkit turns the session manager's last word into a Quit event.
class LinuxSession::QuitFilter : public QObject {
  public:
    explicit QuitFilter(LinuxSession& session)
        : session_(session) {}
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Quit) {
            session_.RequestEnd();
            return true;
        }
        return false;
    }

  private:
    LinuxSession& session_;
};

LinuxSession::LinuxSession(QtEventLoop& events, int argumentCount, char** arguments)
    : events_(events)
    , quitFilter_(std::make_unique<QuitFilter>(*this)) {
    for (int i = 1; i < argumentCount; ++i) {
        commandLine_ += (i > 1 ? " " : "") + std::string(arguments[i]);
    }
    if (pipe2(signalPipe.data(), O_CLOEXEC | O_NONBLOCK) == 0) {
        signals_ = std::make_unique<QSocketNotifier>(signalPipe[0], QSocketNotifier::Read);
        QObject::connect(signals_.get(), &QSocketNotifier::activated, [this] { TakeFromPipe(); });
        struct sigaction action {};
        action.sa_handler = TakeSignal;
        action.sa_flags = SA_RESTART;
        for (const int number : EndSignals)
            TakeUnlessIgnored(number, action);
    }
    IceSetIOErrorHandler(TakeManagersEnd);
    QCoreApplication::instance()->installEventFilter(quitFilter_.get());
    // Started at log-on by its autostart entry or not at all.
    if (auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        QObject::connect(application, &QGuiApplication::saveStateRequest, [](QSessionManager& manager) {
            manager.setRestartHint(QSessionManager::RestartNever);
        });
    }
    theSession = this;
}

LinuxSession::~LinuxSession() {
    theSession = nullptr;
    for (const int number : EndSignals) {
        struct sigaction now {};
        sigaction(number, nullptr, &now);
        if (now.sa_handler == TakeSignal) std::signal(number, SIG_DFL);
    }
    signals_.reset();
    close(signalPipe[0]);
    close(signalPipe[1]);
}

// What came meanwhile is one request, however many signals it was.
void LinuxSession::TakeFromPipe() {
    char bytes[16];
    const ssize_t count = read(signalPipe[0], bytes, sizeof bytes);
    const auto holds = [&](char what) { return std::find(bytes, bytes + count, what) != bytes + count; };
    if (count <= 0) return;
    if (holds(DisplayGone)) EndWithoutDisplay();
    // A session manager that goes is no second request behind its own first one.
    if (holds(EndSignal) || !ending_) RequestEnd();
}

// A second request that gets here finds the first one waiting, for a person who is not there or for whatever
// it is: nothing more can be saved.
void LinuxSession::RequestEnd() {
    if (std::exchange(ending_, true)) {
        events_.Deliver([] { throw ProcessEnd{NotSaved}; });
    } else if (endRequest_) {
        events_.Deliver(endRequest_);
    }
}

void LinuxSession::EndWithoutDisplay() {
    if (ending_ || !endRequest_) _exit(NotSaved);
    events_.DisplayLost();
    RequestEnd();
    _exit(0);
}

void LinuxSession::End(int status) {
    endStatus = status;
    Session::End(status);
}

void LinuxSession::DisplayIsGone() {
    if (endStatus >= 0) _exit(endStatus);
    LinuxSession* session = theSession;
    if (!session) return;
    if (QThread::currentThread() == QCoreApplication::instance()->thread()) {
        if (!session->ending_) session->EndWithoutDisplay();
    } else {
        TellPipe(DisplayGone);
        poll(nullptr, 0, SavingMilliseconds); // the process ends meanwhile
    }
}

std::string AutostartEntry(const std::string& program) {
    std::string quoted;
    for (const char letter : program) {
        switch (letter) {
        case '"':
        case '`':
        case '$':
            quoted += std::string("\\\\") + letter;
            break;
        case '\\':
            quoted += "\\\\\\\\";
            break;
        case '%':
            quoted += "%%";
            break;
        default:
            quoted += letter;
        }
    }
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Quorvane\n"
           "Comment=Changes the wallpaper and keeps alarms and notes\n"
           "Exec=\"" +
           quoted +
           "\"\n"
           "Terminal=false\n"
           "StartupNotify=false\n"
           "X-GNOME-Autostart-enabled=true\n";
}

int LinuxSession::SetAutostart(bool enabled, const std::string&) {
    const fs::path entry = AutostartFile();
    std::error_code error;
    if (!enabled) {
        fs::remove(entry, error);
        return ErrorNumber(error);
    }
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (!error) fs::create_directories(entry.parent_path(), error);
    if (error) return ErrorNumber(error);
    const fs::path beside = entry.string() + ".new";
    std::ofstream file(beside, std::ios::trunc);
    file << AutostartEntry(program.string());
    file.close();
    if (!file) return store_error::WriteFault;
    fs::rename(beside, entry, error);
    return ErrorNumber(error);
}

} // namespace quorvane
