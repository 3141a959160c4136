#include "platform/linux/desktop/display.h"

#include "platform/linux/desktop/session.h"
#include "platform/linux/desktop/xcb_reply.h"

#include <QCoreApplication>
#include <QDir>
#include <QString>
#include <QtGlobal>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace quorvane {

namespace {

std::string Variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

bool AnswersX() {
    return xcb_connection_has_error(ConnectToX().get()) == 0;
}

bool AnswersWayland(const std::string& name) {
    const std::string path = name.starts_with('/') ? name : Variable("XDG_RUNTIME_DIR") + "/" + name;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) return false;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const int socketId = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool answers = connect(socketId, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(socketId);
    return answers;
}

bool HasWaylandPlugin() {
    for (const QString& folder : QCoreApplication::libraryPaths()) {
        const QDir platforms(folder + QStringLiteral("/platforms"));
        if (!platforms.entryList({QStringLiteral("libqwayland*.so")}, QDir::Files).isEmpty()) return true;
    }
    return false;
}

// Warnings are for the toolkit's own developers. One of them is the last word before the toolkit ends the
// process: that the connection to the display broke. Each thread that notices says it; once is enough.
void TakeMessage(QtMsgType type, const QMessageLogContext&, const QString& message) {
    static std::atomic<bool> said = false;
    const bool broke = message.contains(QLatin1String("connection broke"));
    if ((broke && !said.exchange(true)) || type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "quorvane: %s\n", message.toUtf8().constData());
    if (broke) LinuxSession::DisplayIsGone();
    if (type == QtFatalMsg) _exit(1);
}

} // namespace

DisplayChoice ChooseDisplay() {
    if (!Variable("QT_QPA_PLATFORM").empty()) return {};
    const std::string x = Variable("DISPLAY");
    const std::string wayland = Variable("WAYLAND_DISPLAY");
    const bool answersX = !x.empty() && AnswersX();
    if (!wayland.empty() && AnswersWayland(wayland)) {
        if (HasWaylandPlugin()) return {answersX ? "" : "wayland", ""};
        if (answersX) return {"xcb", ""};
        return {"",
                "the toolkit's plug-in for Wayland is missing, and there is no X server; please install the "
                "package qt6-wayland or xwayland"};
    }
    if (answersX) return {};
    if (x.empty() && wayland.empty())
        return {"", "there is no display to run on: neither DISPLAY nor WAYLAND_DISPLAY is set"};
    return {"", "the display \"" + (x.empty() ? wayland : x) + "\" cannot be opened"};
}

void ListenToTheToolkit() {
    qInstallMessageHandler(TakeMessage);
}

} // namespace quorvane
