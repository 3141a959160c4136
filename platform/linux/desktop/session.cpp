#include "platform/linux/desktop/session.h"

#include "platform/linux/desktop/event_loop.h"
#include "platform/store.h"

#include <QEvent>
#include <QGuiApplication>
#include <QSessionManager>
#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace quorvane {

namespace {

namespace fs = std::filesystem;

constexpr std::array EndSignals{SIGTERM, SIGINT, SIGHUP};

// A signal handler and a message handler get no argument; these two are what they reach the session by.
std::array<int, 2> signalPipe{-1, -1};
LinuxSession* theSession = nullptr;

void TellPipe(int) {
    const int saved = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(signalPipe[1], &byte, 1);
    errno = saved;
}

fs::path AutostartFile() {
    const char* base = std::getenv("XDG_CONFIG_HOME");
    const char* home = std::getenv("HOME");
    const fs::path folder = base && *base ? fs::path(base) : fs::path(home ? home : "") / ".config";
    return folder / "autostart" / "quorvane.desktop";
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
        QObject::connect(signals_.get(), &QSocketNotifier::activated, [this] {
            char bytes[16];
            [[maybe_unused]] const ssize_t count = read(signalPipe[0], bytes, sizeof bytes);
            RequestEnd();
        });
        struct sigaction action {};
        action.sa_handler = TellPipe;
        action.sa_flags = SA_RESTART;
        for (const int number : EndSignals) {
            sigaction(number, &action, nullptr);
        }
    }
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
        std::signal(number, SIG_DFL);
    }
    signals_.reset();
    close(signalPipe[0]);
    close(signalPipe[1]);
}

void LinuxSession::RequestEnd() {
    const std::function<void()> handler = std::exchange(endRequest_, nullptr);
    if (handler) events_.Deliver(handler);
}

void LinuxSession::DisplayIsGone() {
    if (theSession && theSession->endRequest_) {
        theSession->events_.DisplayLost();
        theSession->RequestEnd();
        _exit(0);
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
