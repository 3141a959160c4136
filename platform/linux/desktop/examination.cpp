#include "platform/examination.h"

#include "platform/linux/base/base_folders.h"
#include "platform/linux/desktop/display.h"
#include "platform/linux/desktop/event_loop.h"
#include "platform/linux/desktop/outputs.h"
#include "platform/linux/desktop/patience.h"
#include "platform/linux/desktop/root_pixmap.h"
#include "platform/linux/desktop/wallpaper_table.h"
#include "platform/linux/desktop/xcb_reply.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <filesystem>
#include <fontconfig/fontconfig.h>
#include <fstream>
#include <unistd.h>

namespace quorvane {
namespace {

namespace fs = std::filesystem;
using State = Finding::State;

constexpr int AnswerMilliseconds = 2000;
constexpr int DesktopMilliseconds = 5000;

std::string Variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

bool HasOwner(xcb_connection_t* connection, std::string_view selection) {
    if (xcb_connection_has_error(connection)) return false;
    const xcb_atom_t atom = InternAtom(connection, selection);
    const auto owner =
        Own(xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, atom), nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

class Examination {
  public:
    explicit Examination(const Expected& expected)
        : expected_(expected)
        , display_(ChooseDisplay())
        , x_(ConnectToX())
        , desktop_(Variable("XDG_CURRENT_DESKTOP")) {}

    std::vector<Finding> All() {
        ExamineStore();
        ExamineDisplay();
        if (display_.problem.empty()) {
            ExamineWallpaper();
            ExamineTray();
            ExamineCompositor();
        }
        ExamineFonts();
        ExamineAutostart();
        return std::move(findings_);
    }

  private:
    void Add(const char* check, State state, std::string why, std::string hint = {}) {
        findings_.push_back({check, state, std::move(why), std::move(hint)});
    }
    bool HasX() const { return xcb_connection_has_error(x_.get()) == 0; }
    bool IsWayland() const { return !Variable("WAYLAND_DISPLAY").empty(); }

    void ExamineStore();
    void ExamineDisplay();
    void ExamineWallpaper();
    void ExamineTray();
    void ExamineCompositor();
    void ExamineFonts();
    void ExamineAutostart();

    const Expected& expected_;
    DisplayChoice display_;
    XConnection x_;
    std::string desktop_;
    QtEventLoop events_;
    std::vector<Finding> findings_;
};

// The tree need not be there, but its folder, or the first of those above it that is, must take it.
void Examination::ExamineStore() {
    const fs::path folder = fs::path(ConfigFolder()) / "quorvane";
    const fs::path file = folder / "settings.db";
    std::error_code error;
    fs::path place = folder;
    while (!fs::exists(place, error) && place.has_relative_path())
        place = place.parent_path();
    const bool writable = access(place.c_str(), W_OK | X_OK) == 0 &&
                          (!fs::exists(file, error) || access(file.c_str(), R_OK | W_OK) == 0);
    if (writable) {
        Add("settings", State::Ok, "they are kept in " + file.string());
    } else {
        Add("settings", State::Missing,
            file.string() + " cannot be written: what is changed is lost when the program ends",
            "give yourself the right to write " + place.string());
    }
}

void Examination::ExamineDisplay() {
    if (!display_.problem.empty()) {
        Add("display", State::Missing, display_.problem, "start Quorvane from within the desktop's session");
        return;
    }
    const std::string name = desktop_.empty() ? "a plain window manager" : desktop_;
    Add("display", State::Ok, name + (IsWayland() ? " on Wayland" : " on X11"));
}

void Examination::ExamineWallpaper() {
    const DesktopRow& row = FindDesktopRow(desktop_);
    const std::string way =
        row.names.empty() ? "painted on the root window" : "told to " + std::string(row.names.front());
    std::error_code error;
    if (!fs::exists(expected_.wallpaper, error)) {
        Add("wallpaper", State::Limited, "it would be " + way + "; none has been made yet",
            "quorvanectl do change");
        return;
    }
    bool shows = false;
    if (!row.paintsItself) {
        std::vector<PixelRect> places;
        for (const Output& output : FindOutputs())
            places.push_back({output.x, output.y, output.size.width, output.size.height});
        shows = HasX() && RootWindowShows(expected_.wallpaper, ToWallpaperStyle(expected_.style), places);
    } else if (row.shown) {
        Patience patience(events_, DesktopMilliseconds);
        const std::string shown = row.shown(patience);
        shows = shown == expected_.wallpaper || shown.starts_with(StateFolder() + "/quorvane/");
    } else {
        Add("wallpaper", State::Ok, "it is " + way + ", which does not tell what it shows");
        return;
    }
    if (shows) {
        Add("wallpaper", State::Ok, "it is " + way + ", and the desktop shows it");
    } else {
        Add("wallpaper", State::Missing, "it is " + way + ", and the desktop shows another one",
            "quorvanectl do change; another program that sets wallpapers may have to be switched off");
    }
}

void Examination::ExamineTray() {
    bool onBus = false;
    if (!Variable("DBUS_SESSION_BUS_ADDRESS").empty()) {
        QDBusMessage question = QDBusMessage::createMethodCall(
            QStringLiteral("org.kde.StatusNotifierWatcher"), QStringLiteral("/StatusNotifierWatcher"),
            QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
        question.setArguments({QStringLiteral("org.kde.StatusNotifierWatcher"),
                               QStringLiteral("IsStatusNotifierHostRegistered")});
        question.setAutoStartService(false);
        const QDBusReply<QDBusVariant> answer =
            QDBusConnection::sessionBus().call(question, QDBus::Block, AnswerMilliseconds);
        onBus = answer.isValid() && answer.value().variant().toBool();
    }
    if (onBus) {
        Add("tray", State::Ok, "the panel shows icons that are told over D-Bus");
    } else if (HasOwner(x_.get(), "_NET_SYSTEM_TRAY_S0")) {
        Add("tray", State::Ok, "the panel takes icons as windows");
    } else {
        Add("tray", State::Missing, "no panel shows icons: the menu cannot be opened",
            "add a notification area to the panel (GNOME: the extension AppIndicator); quorvanectl does "
            "what the menu does");
    }
}

void Examination::ExamineCompositor() {
    if (IsWayland() || HasOwner(x_.get(), "_NET_WM_CM_S0")) {
        Add("compositor", State::Ok, "windows can be transparent");
    } else {
        Add("compositor", State::Limited, "none runs: no window is transparent", "start one, such as picom");
    }
}

// The family that the font system shows in the place of another one.
std::string ShownFamily(const std::string& family) {
    FcPattern* pattern = FcPatternCreate();
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcConfigSubstitute(nullptr, pattern, FcMatchPattern);
    FcDefaultSubstitute(pattern);
    FcResult result = FcResultNoMatch;
    FcPattern* match = FcFontMatch(nullptr, pattern, &result);
    FcChar8* name = nullptr;
    const bool found = match && FcPatternGetString(match, FC_FAMILY, 0, &name) == FcResultMatch;
    const std::string shown = found ? reinterpret_cast<const char*>(name) : "";
    if (match) FcPatternDestroy(match);
    FcPatternDestroy(pattern);
    return shown;
}

void Examination::ExamineFonts() {
    const std::size_t before = findings_.size();
    for (const std::string& family : expected_.fonts) {
        const std::string shown = ShownFamily(family);
        if (shown.empty()) {
            Add("fonts", State::Missing, "there is no font to show " + family + " in", "install a font");
        } else if (QString::fromStdString(shown).compare(QString::fromStdString(family),
                                                         Qt::CaseInsensitive) != 0) {
            Add("fonts", State::Limited, family + " is not installed and shown as " + shown,
                "install it, or choose another font for the calendar");
        }
    }
    if (findings_.size() == before) Add("fonts", State::Ok, "all that the wallpaper is set in are installed");
}

// The program that a desktop entry starts, out of its quotes.
std::string ProgramOf(const fs::path& entry) {
    std::ifstream file(entry);
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with("Exec=\"")) continue;
        return line.substr(6, line.find('"', 6) - 6);
    }
    return {};
}

void Examination::ExamineAutostart() {
    const fs::path entry = fs::path(ConfigFolder()) / "autostart" / "quorvane.desktop";
    std::error_code error;
    const bool there = fs::exists(entry, error);
    const std::string program = there ? ProgramOf(entry) : "";
    if (there != expected_.autostart) {
        Add("autostart", there ? State::Limited : State::Missing,
            there ? "Quorvane starts at log-on though the settings do not want it"
                  : "Quorvane does not start at log-on though the settings want it",
            "quorvanectl do save writes or removes " + entry.string());
    } else if (there && access(program.c_str(), X_OK) != 0) {
        Add("autostart", State::Missing, "what is to start at log-on is not there: " + program,
            "start the program that there is, then: quorvanectl do save");
    } else {
        Add("autostart", State::Ok, there ? "Quorvane starts at log-on" : "not wanted");
    }
}

} // namespace

std::vector<Finding> ExamineDesktop(const Expected& expected) {
    char name[] = "quorvanectl";
    char* arguments[] = {name, nullptr};
    int count = 1;
    const QCoreApplication application(count, arguments);
    return Examination(expected).All();
}

} // namespace quorvane
