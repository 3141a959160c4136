#include "platform/linux/desktop/wallpaper_table.h"

#include "core/text.h"
#include "platform/linux/desktop/command.h"
#include "platform/linux/desktop/patience.h"
#include "platform/linux/desktop/wallpaper_copies.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QString>
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>

namespace quorvane {

namespace {

namespace fs = std::filesystem;

// A desktop's own words for the three styles, in the order of WallpaperStyle.
struct StyleWords {
    const char* words[3];
    const char* Of(WallpaperStyle style) const { return words[static_cast<int>(style)]; }
};

std::string FileUri(const std::string& path) {
    // Byte by byte: a name need not be UTF-8.
    return "file://" + QByteArray::fromStdString(path).toPercentEncoding("!$&'()*+,;=:@/").toStdString();
}

// The text form that the settings command parses; it takes plain text as it stands.
std::string SettingText(const std::string& text) {
    if (text.find_first_of("'\"\\") == std::string::npos) return text;
    return "\"" + Replace(Replace(text, "\\", "\\\\"), "\"", "\\\"") + "\"";
}

bool Gsettings(const char* schema, const char* key, const std::string& value, Patience& patience) {
    return RunCommand("gsettings", {"set", schema, key, SettingText(value)}, patience).has_value();
}

// The path behind a setting, which is told in quotes and may be an address.
std::string GsettingsPath(const char* schema, const char* key, Patience& patience) {
    const std::string told(Trim(RunCommand("gsettings", {"get", schema, key}, patience).value_or("")));
    if (told.size() < 2) return {};
    const std::string text = told.substr(1, told.size() - 2);
    constexpr std::string_view Scheme = "file://";
    if (!text.starts_with(Scheme)) return text;
    return QByteArray::fromPercentEncoding(QByteArray::fromStdString(text.substr(Scheme.size())))
        .toStdString();
}

constexpr StyleWords GnomeStyles{{"centered", "wallpaper", "stretched"}};

// The dark key came later than the light one; where it is missing the light one is all there is.
bool TellGnome(const Handover& handover, Patience& patience) {
    const char* schema = "org.gnome.desktop.background";
    const std::string uri = FileUri(handover.file);
    Gsettings(schema, "picture-options", GnomeStyles.Of(handover.style), patience);
    const bool told = Gsettings(schema, "picture-uri", uri, patience);
    Gsettings(schema, "picture-uri-dark", uri, patience);
    return told;
}

std::string ShownByGnome(Patience& patience) {
    return GsettingsPath("org.gnome.desktop.background", "picture-uri", patience);
}

bool TellCinnamon(const Handover& handover, Patience& patience) {
    const char* schema = "org.cinnamon.desktop.background";
    Gsettings(schema, "picture-options", GnomeStyles.Of(handover.style), patience);
    return Gsettings(schema, "picture-uri", FileUri(handover.file), patience);
}

std::string ShownByCinnamon(Patience& patience) {
    return GsettingsPath("org.cinnamon.desktop.background", "picture-uri", patience);
}

bool TellMate(const Handover& handover, Patience& patience) {
    const char* schema = "org.mate.background";
    Gsettings(schema, "picture-options", GnomeStyles.Of(handover.style), patience);
    return Gsettings(schema, "picture-filename", handover.file, patience);
}

std::string ShownByMate(Patience& patience) {
    return GsettingsPath("org.mate.background", "picture-filename", patience);
}

// Fill modes of the shell's picture plug-in: 6 pads, 3 tiles, 0 stretches.
constexpr StyleWords PlasmaStyles{{"6", "3", "0"}};

// A percent-encoded address holds no character that would need an escape in the script.
bool TellPlasma(const Handover& handover, Patience& patience) {
    const std::string script = "for (const desktop of desktops()) {"
                               " desktop.wallpaperPlugin = 'org.kde.image';"
                               " desktop.currentConfigGroup = ['Wallpaper', 'org.kde.image', 'General'];"
                               " desktop.writeConfig('FillMode', " +
                               std::string(PlasmaStyles.Of(handover.style)) +
                               ");"
                               " desktop.writeConfig('Image', '" +
                               Replace(FileUri(handover.file), "'", "%27") + "'); }";
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.kde.plasmashell"), QStringLiteral("/PlasmaShell"),
        QStringLiteral("org.kde.PlasmaShell"), QStringLiteral("evaluateScript"));
    call << QString::fromStdString(script);
    const QDBusPendingCallWatcher answer(QDBusConnection::sessionBus().asyncCall(call));
    return patience.Until([&answer] { return answer.isFinished(); }) && !answer.isError();
}

constexpr StyleWords XfceStyles{{"1", "2", "3"}};
constexpr const char* XfceChannel = "xfce4-desktop";

// The properties that stand, without their last name, and one for each monitor and workspace that is to be.
std::set<std::string> XfceBackdrops(const Handover& handover, Patience& patience) {
    std::set<std::string> backdrops;
    for (const std::string& monitor : handover.monitors) {
        for (int workspace = 0; workspace < handover.workspaces; ++workspace) {
            backdrops.insert("/backdrop/screen0/monitor" + monitor + "/workspace" +
                             std::to_string(workspace));
        }
    }
    const auto listed = RunCommand("xfconf-query", {"-c", XfceChannel, "-p", "/backdrop", "-l"}, patience);
    for (const std::string& line : Split(listed.value_or(""), '\n')) {
        const std::string property(Trim(line));
        constexpr std::string_view Ending = "/last-image";
        if (property.ends_with(Ending)) backdrops.insert(property.substr(0, property.size() - Ending.size()));
    }
    return backdrops;
}

bool TellXfce(const Handover& handover, Patience& patience) {
    bool told = false;
    const auto set = [&patience](const std::string& property, const char* type, const std::string& value) {
        return RunCommand("xfconf-query", {"-c", XfceChannel, "-p", property, "-n", "-t", type, "-s", value},
                          patience)
            .has_value();
    };
    for (const std::string& backdrop : XfceBackdrops(handover, patience)) {
        set(backdrop + "/image-style", "int", XfceStyles.Of(handover.style));
        told |= set(backdrop + "/last-image", "string", handover.file);
    }
    return told;
}

// One of its backdrops.
std::string ShownByXfce(Patience& patience) {
    const std::set<std::string> backdrops = XfceBackdrops({}, patience);
    if (backdrops.empty()) return {};
    const auto told =
        RunCommand("xfconf-query", {"-c", XfceChannel, "-p", *backdrops.begin() + "/last-image"}, patience);
    return std::string(Trim(told.value_or("")));
}

constexpr StyleWords PcmanfmStyles{{"center", "tile", "stretch"}};

bool TellLxqt(const Handover& handover, Patience& patience) {
    return RunCommand(
               "pcmanfm-qt",
               {"--set-wallpaper", handover.file, "--wallpaper-mode", PcmanfmStyles.Of(handover.style)},
               patience)
        .has_value();
}

bool TellLxde(const Handover& handover, Patience& patience) {
    return RunCommand("pcmanfm",
                      {"--set-wallpaper", handover.file,
                       std::string("--wallpaper-mode=") + PcmanfmStyles.Of(handover.style)},
                      patience)
        .has_value();
}

std::string PainterRecord(const Handover& handover) {
    return handover.stateFolder + "/swaybg";
}

// The swaybg of an earlier change, or of an earlier run of the program: the only one that is ours to end.
StartedProgram ReadStarted(const std::string& path) {
    StartedProgram program;
    std::ifstream(path) >> program.processId >> program.startTime;
    return program;
}

// The new one is started first, so that the desktop is never bare.
bool TellCompositor(const Handover& handover, Patience&) {
    const std::string record = PainterRecord(handover);
    const StartedProgram earlier = ReadStarted(record);
    const auto started =
        StartProgram("swaybg", {"-i", handover.file, "-m", PcmanfmStyles.Of(handover.style)});
    if (!started) return false;
    std::ofstream(record, std::ios::trunc) << started->processId << ' ' << started->startTime << '\n';
    earlier.Terminate();
    return true;
}

// One word of a command. sway expands a path as a shell does, so whatever means something to a shell is
// escaped.
std::string SwayWord(const std::string& path) {
    std::string word = "\"";
    for (const char letter : path) {
        const auto byte = static_cast<unsigned char>(letter);
        const bool plain = byte >= 0x80 || std::isalnum(byte) || std::strchr("/._-+,:=@%", letter);
        if (!plain) word += '\\';
        word += letter;
    }
    return word + "\"";
}

// sway has a painter of its own where its settings name a background, and of two painters the older one lies
// on top: sway itself is told, and one of ours from an earlier run goes.
bool TellSway(const Handover& handover, Patience& patience) {
    const bool told =
        std::getenv("SWAYSOCK") &&
        RunCommand("swaymsg",
                   {"output", "*", "bg", SwayWord(handover.file), PcmanfmStyles.Of(handover.style)}, patience)
            .has_value();
    if (!told) return TellCompositor(handover, patience);
    const std::string record = PainterRecord(handover);
    ReadStarted(record).Terminate();
    std::error_code ignored;
    fs::remove(record, ignored);
    return true;
}

bool TellPlainX(const Handover& handover, Patience&) {
    return handover.paintRoot && handover.paintRoot(handover.file, handover.style);
}

const std::vector<DesktopRow>& Table() {
    static const std::vector<DesktopRow> table{
        {{"gnome", "gnome-classic", "gnome-flashback", "unity", "unity7", "budgie", "pop", "ubuntu"},
         TellGnome,
         ShownByGnome},
        {{"x-cinnamon", "cinnamon"}, TellCinnamon, ShownByCinnamon},
        {{"mate"}, TellMate, ShownByMate},
        {{"kde", "plasma"}, TellPlasma},
        {{"xfce"}, TellXfce, ShownByXfce},
        {{"lxqt"}, TellLxqt},
        {{"lxde"}, TellLxde},
        {{"sway"}, TellSway},
        {{"wlroots", "hyprland", "river", "wayfire", "labwc", "dwl", "niri"}, TellCompositor},
        {{}, TellPlainX, nullptr, false},
    };
    return table;
}

} // namespace

WallpaperStyle ToWallpaperStyle(std::string_view published) {
    if (published == "1") return WallpaperStyle::Tiled;
    return published == "2" ? WallpaperStyle::Stretched : WallpaperStyle::Centred;
}

const DesktopRow& FindDesktopRow(std::string_view currentDesktop) {
    for (const std::string& name : Split(currentDesktop, ':')) {
        const std::string wanted = FoldedName(name);
        for (const DesktopRow& row : Table()) {
            if (std::find(row.names.begin(), row.names.end(), wanted) != row.names.end()) return row;
        }
    }
    return Table().back();
}

bool HandOver(const DesktopRow& row, const Handover& handover, Files& files, Patience& patience) {
    if (!row.paintsItself) return row.tell(handover, patience);
    WallpaperCopies copies(files, handover.stateFolder);
    Handover given = handover;
    given.file = copies.Make(handover.file,
                             handover.style == WallpaperStyle::Stretched ? handover.screen : PixelSize{});
    const bool taken = row.tell(given, patience);
    copies.Settle(given.file, taken);
    return taken;
}

} // namespace quorvane
