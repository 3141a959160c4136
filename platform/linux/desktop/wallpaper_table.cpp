#include "platform/linux/desktop/wallpaper_table.h"

#include "core/text.h"
#include "platform/linux/desktop/command.h"

#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QString>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

namespace quorvane {

namespace {

namespace fs = std::filesystem;

constexpr int BusTimeoutMilliseconds = 5000;

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

bool Gsettings(const char* schema, const char* key, const std::string& value) {
    return RunCommand("gsettings", {"set", schema, key, SettingText(value)}).has_value();
}

constexpr StyleWords GnomeStyles{{"centered", "wallpaper", "stretched"}};

// The dark key came later than the light one; where it is missing the light one is all there is.
bool TellGnome(const Handover& handover) {
    const char* schema = "org.gnome.desktop.background";
    const std::string uri = FileUri(handover.file);
    Gsettings(schema, "picture-options", GnomeStyles.Of(handover.style));
    const bool told = Gsettings(schema, "picture-uri", uri);
    Gsettings(schema, "picture-uri-dark", uri);
    return told;
}

bool TellCinnamon(const Handover& handover) {
    const char* schema = "org.cinnamon.desktop.background";
    Gsettings(schema, "picture-options", GnomeStyles.Of(handover.style));
    return Gsettings(schema, "picture-uri", FileUri(handover.file));
}

bool TellMate(const Handover& handover) {
    const char* schema = "org.mate.background";
    Gsettings(schema, "picture-options", GnomeStyles.Of(handover.style));
    return Gsettings(schema, "picture-filename", handover.file);
}

// Fill modes of the shell's picture plug-in: 6 pads, 3 tiles, 0 stretches.
constexpr StyleWords PlasmaStyles{{"6", "3", "0"}};

// A percent-encoded address holds no character that would need an escape in the script.
bool TellPlasma(const Handover& handover) {
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
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, BusTimeoutMilliseconds);
    return reply.type() == QDBusMessage::ReplyMessage;
}

constexpr StyleWords XfceStyles{{"1", "2", "3"}};
constexpr const char* XfceChannel = "xfce4-desktop";

// The properties that stand, without their last name, and one for each monitor and workspace that is to be.
std::set<std::string> XfceBackdrops(const Handover& handover) {
    std::set<std::string> backdrops;
    for (const std::string& monitor : handover.monitors) {
        for (int workspace = 0; workspace < handover.workspaces; ++workspace) {
            backdrops.insert("/backdrop/screen0/monitor" + monitor + "/workspace" +
                             std::to_string(workspace));
        }
    }
    const auto listed = RunCommand("xfconf-query", {"-c", XfceChannel, "-p", "/backdrop", "-l"});
    for (const std::string& line : Split(listed.value_or(""), '\n')) {
        const std::string property(Trim(line));
        constexpr std::string_view Ending = "/last-image";
        if (property.ends_with(Ending)) backdrops.insert(property.substr(0, property.size() - Ending.size()));
    }
    return backdrops;
}

bool TellXfce(const Handover& handover) {
    bool told = false;
    for (const std::string& backdrop : XfceBackdrops(handover)) {
        RunCommand("xfconf-query", {"-c", XfceChannel, "-p", backdrop + "/image-style", "-n", "-t", "int",
                                    "-s", XfceStyles.Of(handover.style)});
        told |= RunCommand("xfconf-query", {"-c", XfceChannel, "-p", backdrop + "/last-image", "-n", "-t",
                                            "string", "-s", handover.file})
                    .has_value();
    }
    return told;
}

constexpr StyleWords PcmanfmStyles{{"center", "tile", "stretch"}};

bool TellLxqt(const Handover& handover) {
    return RunCommand("pcmanfm-qt", {"--set-wallpaper", handover.file, "--wallpaper-mode",
                                     PcmanfmStyles.Of(handover.style)})
        .has_value();
}

bool TellLxde(const Handover& handover) {
    return RunCommand("pcmanfm", {"--set-wallpaper", handover.file,
                                  std::string("--wallpaper-mode=") + PcmanfmStyles.Of(handover.style)})
        .has_value();
}

// The swaybg of an earlier change, or of an earlier run of the program: the only one that is ours to end.
StartedProgram ReadStarted(const std::string& path) {
    StartedProgram program;
    std::ifstream(path) >> program.processId >> program.startTime;
    return program;
}

// The new one is started first, so that the desktop is never bare.
bool TellSway(const Handover& handover) {
    const std::string record = handover.stateFolder + "/swaybg";
    const StartedProgram earlier = ReadStarted(record);
    const auto started =
        StartProgram("swaybg", {"-i", handover.file, "-m", PcmanfmStyles.Of(handover.style)});
    if (!started) return false;
    std::ofstream(record, std::ios::trunc) << started->processId << ' ' << started->startTime << '\n';
    earlier.Terminate();
    return true;
}

bool TellPlainX(const Handover& handover) {
    return handover.paintRoot && handover.paintRoot(handover.file, handover.style);
}

// Xfce and swaybg take the file under its own name: the first watches it, the second is started anew.
const std::vector<DesktopRow>& Table() {
    static const std::vector<DesktopRow> table{
        {{"gnome", "gnome-classic", "gnome-flashback", "unity", "unity7", "budgie", "pop", "ubuntu"},
         true,
         TellGnome},
        {{"x-cinnamon", "cinnamon"}, true, TellCinnamon},
        {{"mate"}, true, TellMate},
        {{"kde", "plasma"}, true, TellPlasma},
        {{"xfce"}, false, TellXfce},
        {{"lxqt"}, true, TellLxqt},
        {{"lxde"}, true, TellLxde},
        {{"sway", "wlroots", "hyprland", "river", "wayfire", "labwc", "dwl", "niri"}, false, TellSway},
        {{}, false, TellPlainX},
    };
    return table;
}

// One of two names in the state folder, the other one at each call; a note beside them says which was last.
std::string NextName(const std::string& stateFolder) {
    const std::string note = stateFolder + "/wallpaper-last";
    std::string last;
    std::ifstream(note) >> last;
    const char* next = last == "wallpaper-1.bmp" ? "wallpaper-2.bmp" : "wallpaper-1.bmp";
    std::ofstream(note, std::ios::trunc) << next << '\n';
    return stateFolder + "/" + next;
}

// A second name of the same bytes where the file system allows it, since the wallpaper's own file is always
// replaced and never written into; a copy otherwise.
bool PlaceUnder(const std::string& file, const std::string& name) {
    std::error_code error;
    const std::string beside = name + ".new";
    fs::remove(beside, error);
    fs::create_hard_link(file, beside, error);
    if (error) {
        error.clear();
        fs::copy_file(file, beside, fs::copy_options::overwrite_existing, error);
    }
    if (!error) fs::rename(beside, name, error);
    return !error;
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

bool HandOver(const DesktopRow& row, const Handover& handover) {
    std::error_code ignored;
    fs::create_directories(handover.stateFolder, ignored);
    Handover renamed = handover;
    if (row.missesChange) {
        const std::string name = NextName(handover.stateFolder);
        renamed.file = PlaceUnder(handover.file, name) ? name : handover.file;
    }
    return row.tell(renamed);
}

} // namespace quorvane
