#include "entry/application.h"

#include "commands/message.h"
#include "commands/setting_values.h"
#include "config/mend_lists.h"
#include "config/profiles.h"
#include "core/run_time_error.h"
#include "diagnostics/frm_error.h"
#include "diagnostics/system_survey.h"
#include "entry/check_fonts.h"
#include "entry/command_line.h"
#include "platform/desktop.h"
#include "platform/drawing.h"
#include "platform/event_loop.h"
#include "platform/files.h"
#include "platform/prompts.h"
#include "platform/session.h"
#include "platform/system.h"

#include <tuple>
#include <utility>

namespace quorvane {

namespace {

constexpr const char* Title = "Quorvane II";
constexpr std::int32_t FamilyNt = 2;

} // namespace

Application::Application(const Platform& platform, std::string storeNote)
    : platform_(platform)
    , storeNote_(std::move(storeNote))
    , forms_(platform_, &locale_)
    , splash_(forms_, platform_)
    , notifyIcon_(forms_, record_, platform_, *this)
    , engine_(forms_, record_, platform_, locale_, *this) {}

int Application::Run() {
    platform_.events.OnFailure(
        [this](int number, const char* description) { ShowErrorDialog(number, description); });
    platform_.session.OnEndRequest([this] { AskToEnd(); });
    try {
        Main();
        return platform_.events.Run();
    } catch (const ProcessEnd& end) {
        return end.status;
    }
}

void Application::Main() {
    try {
        RunStages();
    } catch (const std::exception& failure) {
        const RunTimeError error = AsRunTimeError(failure);
        ShowErrorDialog(error.Number(), error.Description());
    }
}

// Each later subsystem joins at its own stage: the order is what the others rely on.
void Application::RunStages() {
    record_.Main_Exec = true;
    const CommandLineRequests requests = ReadCommandLine(platform_.session.CommandLine());
    record_.RunOnWin9x = requests.RunOnWin9x;
    if (requests.version) ShowBoxAndEnd(VersionText());
    if (requests.help) ShowBoxAndEnd(HelpText());
    ReadLanguage();
    ReadLocale();

    splash_.Show();
    splash_.BringToFront();
    Bar(1);
    platform_.events.Pump();
    notifyIcon_.Load();
    Bar(3);
    CheckFonts(platform_, [this](int bar) { Bar(bar); });
    Bar(12);
    platform_.events.Pump();

    DetectSystem(record_, platform_.system, platform_.session, *this);
    if (record_.lpVersionInformation.dwPlatformId == FamilyNt) EnableProcessPrivileges(platform_.system);
    Bar(14);
    PresetRecord(record_, platform_.files);
    Bar(16);
    platform_.events.Pump();
    if (!storeNote_.empty()) MendLists(platform_.store);
    ListenToTheShell(); // from here on the record is the truth, not the tree
    ReadSettings(record_, Context(), platform_.prompts);
    if (FinishDelete(record_, Context()))
        PublishWallpaper(record_, platform_.store, platform_.prompts, Context().events);
    // The person chooses a profile here.
    Bar(80);
    FindSystemDirectory();
    Bar(90);

    // The notes come up here; then the settings dialogue, on a first run or where the command line asks for
    // it.
    if (requests.settings) record_.AutoExitAfterChange = false;
    platform_.events.Pump();
    engine_.Load();
    Bar(100);
    platform_.events.Pump();
    splash_.Unload();
    record_.Main_Exec = false;
    for (const auto& answer : std::exchange(questions_, {}))
        platform_.events.Post(answer);
    if (!storeNote_.empty()) {
        platform_.events.Post(
            [this] { platform_.prompts.Message(storeNote_, Title, message_style::Warning); });
    }
}

// Who asks during the start waits for its end.
void Application::ListenToTheShell() {
    if (!platform_.channel) return;
    platform_.channel->Listen([this](const std::string& question, const Channel::Reply& reply) {
        if (!record_.Main_Exec) return AnswerTheShell(question, reply);
        questions_.push_back([this, question, reply] { AnswerTheShell(question, reply); });
    });
}

// A failure of what the shell asked for is the shell's to hear of.
void Application::AnswerTheShell(const std::string& question, const Channel::Reply& reply) {
    commands::Place place{record_, Context(), platform_.system, this};
    place.context.events = commands::RefusingEvents();
    const std::string language = record_.CurrentLanguage;
    const auto handedOver = [this] {
        return std::tuple(record_.Wallpaper, record_.WallpaperPosition,
                          record_.SyncWithSystemDefaultWallpaper);
    };
    const auto before = handedOver();
    reply(commands::AnswerTo(question, place));
    if (place.afterwards) platform_.events.Post(place.afterwards);
    if (locale_.Loaded() && record_.CurrentLanguage != language)
        ChangeLocale(localeFiles_, record_.CurrentLanguage, platform_.files, platform_.system, locale_);
    if (handedOver() != before) {
        platform_.events.Post(
            [this] { PublishWallpaper(record_, platform_.store, platform_.prompts, Context().events); });
    }
}

void Application::ShowBoxAndEnd(const std::string& text) {
    platform_.prompts.Message(text, Title, message_style::Information);
    ReleaseAndEnd();
}

void Application::Bar(int value) {
    splash_.ProgressBar1.SetValue(value);
}

void Application::ReadLanguage() {
    record_.CurrentLanguage = "EN";
    ReadSettingOf(record_, &record_.CurrentLanguage, platform_.store);
}

// The person who is left without words may end the program, which has nothing to clean up yet.
void Application::ReadLocale() {
    localeFiles_ = ScanLocaleFiles(platform_.files, platform_.system);
    StartLocale(localeFiles_, record_.CurrentLanguage, platform_.files, platform_.system, platform_.prompts,
                locale_, [this] { platform_.session.End(0); });
}

void Application::FindSystemDirectory() {
    const bool old = record_.lpVersionInformation.dwMajorVersion < 5;
    record_.System_Directory =
        old ? platform_.system.WindowsDirectory() : platform_.system.SystemWindowsDirectory();
    if (record_.System_Directory.empty())
        record_.System_Directory = std::string(".") + platform_.files.Separator();
}

// What the start has not read yet must not be written back as it stands.
void Application::AskToEnd() {
    if (record_.Main_Exec) ReleaseAndEnd();
    SaveAndEnd();
}

void Application::ChangeWallpaper(const std::string& file, int mode) {
    engine_.ChangeWallpaper(file, mode);
}

void Application::BuildFileList() {
    engine_.BuildFileList();
}

void Application::WriteSettings() {
    quorvane::WriteSettings(record_, Context(), platform_.session);
}

void Application::SaveAndEnd() {
    SaveCurrentProfile(record_, Context());
    WriteSettings();
    ReleaseAndEnd();
}

void Application::ReleaseAndEnd() {
    record_.BMHandles.clear();
    forms_.UnloadAll();
    platform_.session.End(0);
}

void Application::ShowErrorDialog(std::int32_t number, const std::string& description) {
    frmError dialogue(forms_, record_, platform_);
    dialogue.Ask(number, description);
    AskToEnd();
}

SettingsContext Application::Context() {
    const PixelSize screen = platform_.desktop.ScreenSize();
    const TwipSize twips{static_cast<int>(screen.width * platform_.drawing.TwipsPerPixelX()),
                         static_cast<int>(screen.height * platform_.drawing.TwipsPerPixelY())};
    SettingsContext context{platform_.store, platform_.files, platform_.clock, twips};
    context.events.ShowErrorDialog = [this](std::int32_t number, const std::string& description) {
        ShowErrorDialog(number, description);
    };
    context.events.Progress = [this](int bar) { Bar(bar); };
    context.events.LetEventsRun = [this] { platform_.events.Pump(); };
    return context;
}

} // namespace quorvane
