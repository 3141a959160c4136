#include "platform/linux/desktop/desktop.h"

#include "platform/event_loop.h"
#include "platform/linux/base/base_folders.h"
#include "platform/linux/desktop/outputs.h"
#include "platform/linux/desktop/patience.h"
#include "platform/linux/desktop/root_numbers.h"
#include "platform/linux/desktop/root_pixmap.h"
#include "platform/linux/desktop/wallpaper_table.h"
#include "platform/linux/desktop/work_area.h"
#include "platform/linux/desktop/xcb_reply.h"
#include "platform/store.h"
#include "platform/system.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <cstdlib>
#include <filesystem>
#include <malloc.h>

namespace quorvane {

namespace {

constexpr int HandoverMilliseconds = 10'000; // for all that a desktop is asked at once
constexpr int SettleMilliseconds = 300;

bool IsX11() {
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

std::string Variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::string PublishedStyle(Store& store) {
    StoredValue value;
    const StoreKey key{"", Hive::CurrentUser, "Control Panel\\Desktop"};
    store.Query(key, "WallpaperStyle", value);
    return value.data.substr(0, value.data.find('\0'));
}

// 1 where no window manager tells.
int WorkspaceCount() {
    const std::vector<std::int32_t> count = RootNumbers("_NET_NUMBER_OF_DESKTOPS");
    return count.size() == 1 ? std::clamp(count[0], 1, 64) : 1;
}

std::vector<PixelRect> Places(const std::vector<Output>& outputs) {
    std::vector<PixelRect> places;
    for (const Output& output : outputs) {
        places.push_back({output.x, output.y, output.size.width, output.size.height});
    }
    return places;
}

} // namespace

LinuxDesktop::LinuxDesktop(Store& store, System& system, EventLoop& events, Files& files)
    : store_(store)
    , system_(system)
    , events_(events)
    , files_(files) {
    settle_.setSingleShot(true);
    settle_.setInterval(SettleMilliseconds);
    QObject::connect(&settle_, &QTimer::timeout, [this] {
        PaintRootWindow(painted_, ToWallpaperStyle(PublishedStyle(store_)), Places(FindOutputs()));
    });
}

PixelSize LinuxDesktop::ScreenSize() {
    const std::vector<Output> outputs = FindOutputs();
    if (!outputs.empty()) return outputs.front().size;
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return {};
    const QSizeF size = QSizeF(screen->size()) * screen->devicePixelRatio();
    return {qRound(size.width()), qRound(size.height())};
}

PixelRect LinuxDesktop::WorkArea() {
    const std::vector<Output> outputs = FindOutputs();
    const PixelSize size = ScreenSize();
    if (outputs.empty()) return {0, 0, size.width, size.height};
    Patience patience(events_, HandoverMilliseconds);
    return FindWorkArea(outputs.front(), patience);
}

bool LinuxDesktop::SetWallpaper(const std::string& path) {
    const std::vector<Output> outputs = FindOutputs();
    std::error_code error;
    Handover handover;
    handover.file = std::filesystem::absolute(path, error).lexically_normal().string();
    handover.style = ToWallpaperStyle(PublishedStyle(store_));
    handover.stateFolder = StateFolder() + "/quorvane";
    if (!outputs.empty()) handover.screen = outputs.front().size;
    for (const Output& output : outputs) {
        handover.monitors.push_back(output.name);
    }
    if (IsX11()) {
        handover.workspaces = WorkspaceCount();
        handover.paintRoot = [this, &outputs](const std::string& file, WallpaperStyle style) {
            if (painted_.empty()) WatchScreens();
            painted_ = file;
            return PaintRootWindow(file, style, Places(outputs));
        };
    }
    const std::string desktop = Variable("XDG_CURRENT_DESKTOP");
    Patience patience(events_, HandoverMilliseconds);
    const bool told = HandOver(FindDesktopRow(desktop), handover, files_, patience);
    if (!told && !complained_) {
        complained_ = true;
        system_.Complain("the wallpaper could not be handed over to the desktop \"" + desktop +
                         "\": " + handover.file);
    }
    // The composition is over when this event is: what it held goes back to the system.
    events_.Post([] { malloc_trim(0); });
    return told;
}

// Nobody else fits the root window's picture to screens that have changed.
void LinuxDesktop::WatchScreens() {
    const auto watch = [this](const QScreen* screen) {
        QObject::connect(screen, &QScreen::geometryChanged, &settle_, [this] { settle_.start(); });
    };
    for (const QScreen* screen : QGuiApplication::screens())
        watch(screen);
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &settle_, [this, watch](QScreen* screen) {
        watch(screen);
        settle_.start();
    });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &settle_, [this] { settle_.start(); });
}

void LinuxDesktop::ShowBusyPointer(bool busy) {
    if (busy == busy_) return;
    busy_ = busy;
    if (busy) {
        QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    } else {
        QGuiApplication::restoreOverrideCursor();
    }
}

std::optional<PixelPoint> LinuxDesktop::PointerPosition() {
    const auto* x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!x11 || !screen || !Variable("WAYLAND_DISPLAY").empty()) return std::nullopt;
    xcb_connection_t* connection = x11->connection();
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto pointer =
        Own(xcb_query_pointer_reply(connection, xcb_query_pointer(connection, root), nullptr));
    if (!pointer) return std::nullopt;
    const QPoint place = screen->geometry().topLeft(); // in the machine's pixels at every scale
    return PixelPoint{pointer->root_x - place.x(), pointer->root_y - place.y()};
}

} // namespace quorvane
