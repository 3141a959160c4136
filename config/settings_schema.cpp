#include "config/schema_rows.h"

#include <algorithm>

// The settings' own schema: one row for each value.

namespace quorvane {
namespace {

using enum StoredForm;
using Row = SettingRow<Settings>;
using Rows = std::vector<Row>;
using Section = SettingSection<Settings>;

const auto No = Is(0);
const auto Yes = Is(-1);
const auto Empty = Is(std::string());

Section Colors() {
    using R = Settings;
    const auto dark = Is(Rgb(0, 64, 0));
    return {.key = "Colors",
            .rows = {{"Left Upper color", Integer, Field(&R::Left_Upper_Color), Is(0)},
                     {"Left Lower color", Integer, Field(&R::Left_Lower_Color), Is(0)},
                     {"Right Upper color", Integer, Field(&R::Right_Upper_Color), Is(0)},
                     {"Right Lower color", Integer, Field(&R::Right_Lower_Color), Is(0)},
                     {"Holiday color", Integer, Field(&R::Holiday_Color), Is(Rgb(200, 50, 70))},
                     {"Holiday color minor", Integer, Field(&R::Holiday_Color_Minor), Is(Rgb(200, 50, 70))},
                     {"Week number color", Integer, Field(&R::WeekNumberColor), Is(Rgb(255, 255, 0))},
                     {"Workday color", Integer, Field(&R::Workday_Color), Is(0)},
                     {"Current day color", Integer, Field(&R::CurrentDay_Color), Is(Rgb(255, 255, 0))},
                     {"Caption color", Integer, Field(&R::Caption_Color), dark},
                     {"Calendar background color", Integer, Field(&R::Calendar_BackGround_Color), dark},
                     {"Week caption color", Integer, Field(&R::Week_Caption_Color), dark},
                     {"Sun ephemeredes color", Integer, Field(&R::Sun_Ephemeredes_Color), dark},
                     {"Moon ephemeredes color", Integer, Field(&R::Moon_Ephemeredes_Color), dark}},
            .bar = 20};
}

void AddFont(Rows& rows, const std::string& prefix, FontRecord Settings::*font, std::int32_t bold,
             double size) {
    rows.push_back({prefix + "bold", Flag, Field(font, &FontRecord::Bold), Is(bold)});
    rows.push_back({prefix + "italic", Flag, Field(font, &FontRecord::Italic), No});
    rows.push_back({prefix + "name", Text, Field(font, &FontRecord::FontName), Is("Microsoft Sans Serif")});
    rows.push_back({prefix + "size", LocaleSingle, Field(font, &FontRecord::Size), Is(size)});
    rows.push_back({prefix + "strikethru", Flag, Field(font, &FontRecord::Strikethru), No});
    rows.push_back({prefix + "underline", Flag, Field(font, &FontRecord::Underline), No});
}

Section Fonts() {
    Section group{.key = "Fonts", .bar = 30};
    AddFont(group.rows, "Caption font ", &Settings::CaptionFont, -1, 18);
    AddFont(group.rows, "Calendar font ", &Settings::CalendarFont, 0, 14);
    AddFont(group.rows, "Ephemeredes font ", &Settings::EphemeredesFont, 0, 14);
    return group;
}

// `start` is what the names of the other values begin with.
void AddHotKey(Rows& rows, HotKeyRecord Settings::*key, const char* enabled, const std::string& start) {
    rows.push_back({enabled, FlagOne, Field(key, &HotKeyRecord::Enabled), No});
    rows.push_back({start + "_Alt", Integer, Field(key, &HotKeyRecord::Alt), Is(0)});
    rows.push_back({start + "_Ctrl", Integer, Field(key, &HotKeyRecord::Ctrl), Is(0)});
    rows.push_back({start + "_Shift", Integer, Field(key, &HotKeyRecord::Shift), Is(0)});
    rows.push_back({start + "_VKEY_Array_ID", KeyIndex, Field(key, &HotKeyRecord::VKey), Is(0)});
}

Section ScreenCapture() {
    using R = Settings;
    Section group{.key = "Screen capture"};
    AddHotKey(group.rows, &R::HOT_KEY_DesktopCapture, "HK_Desktop capture", "HK_DC");
    AddHotKey(group.rows, &R::HOT_KEY_TopWindowCapture, "HK_Top window caprute", "HK_TW");
    AddHotKey(group.rows, &R::HOT_KEY_TopWindowContentCapture, "HK_Top windows client area capture",
              "HK_TWCA");
    group.rows.push_back({"Capture directory", Text, Field(&R::CaptureDirectory), OwnPath("")});
    group.rows.push_back(
        {"Capture file template", Text, Field(&R::CaptureFileName), Is("YYYYMMDDHHNNSS.BMP")});
    return group;
}

Section Hotkeys() {
    using R = Settings;
    Section group{.key = "Hotkeys"};
    AddHotKey(group.rows, &R::HOT_KEY_NewNote, "HK_NewNote", "HK_NewNote");
    AddHotKey(group.rows, &R::HOT_KEY_ChangeWallpaper, "HK_ChangeWallpaper", "HK_ChangeWallpaper");
    group.rows.push_back({"EnableScreenEvents", Integer, Field(&R::EnableScreenEvents), Is(0)});
    return group;
}

Section General() {
    using R = Settings;
    return {
        "General",
        {{"First RUN", FirstRun, Field(&R::FIRST_RUN), Yes},
         {"User wallpaper directory", Text, Field(&R::User_Wallpaper_Directory), OwnPath("Wallpaper.bmp")},
         {"Language", Text, Field(&R::CurrentLanguage), Is("EN")},
         {"Scan time", LocaleDecimal, Field(&R::Scan_Time), Is(10.0)},
         {"Last selected wallpaper", Text, Field(&R::LastSelectedWallpaper), Empty},
         {"Last selected preview wallpaper", Text, Field(&R::LastSelectedPreviewWallpaper), Empty},
         {"Favorites probability", LocaleDecimal, Field(&R::Favorites_Probability), Is(0.75)},
         {"Wallpaper", Text, Field(&R::Wallpaper), OwnPath("Wallpaper.bmp")},
         {"AutoStart", Integer, Field(&R::AutoStartApplication), Is(0)},
         {"Show week number", Flag, Field(&R::ShowWeekNumbers), Yes},
         {"Calendar position", Integer, Field(&R::Calendar_Position), Is(2)},
         {"Autoexit after wallpaper was changed", Flag, Field(&R::AutoExitAfterChange), No},
         {"Change wallpaper at startup", Flag, Field(&R::ChangeWallpaperAtStartUp), No},
         {"Change wallpaper periodically", Flag, Field(&R::ChangeWallpaperPeriodically), No},
         {"Wallpaper change interval", Integer, Field(&R::ChangeWallpaperInterval), Is(300)},
         {"Wallpaper change interval (current)", Integer, Field(&R::ChangeWallpaperIntervalCurrent),
          SameAs(&R::ChangeWallpaperInterval)},
         {"Rescan wallpaper sources", Flag, Field(&R::RescanWallpaperSources), Yes},
         {"Rescan wallpaper sources interval", Integer, Field(&R::RescanWallpaperSrcInterval), Is(10)},
         {"Rescan wallpaper sources interval current", Integer, Field(&R::RescanWallpaperSrcIntervalCurrent),
          SameAs(&R::RescanWallpaperSrcInterval)},
         {"Use favorites", Flag, Field(&R::UseFavorites), No},
         {"Use calendar background", Integer, Field(&R::Use_Calendar_Bkgrnd), Is(0)},
         {"Wallpaper position", Integer, Field(&R::WallpaperPosition), Is(4)},
         {"Wallpaper resolution", Integer, Field(&R::WallpaperResolution), Is(5)},
         {"Use gradient background fill", Flag, Field(&R::UseGradientFill), No},
         {"Gradient style", Integer, Field(&R::GradientStyle), Is(1)},
         {"Use random colors", Flag, Field(&R::UseRandomColors), No},
         {"Paint calendar", Flag, Field(&R::PaintCalendar), Yes},
         {"Sync with system default wallpaper", Flag, Field(&R::SyncWithSystemDefaultWallpaper), No},
         {"Random color limit R", Integer, Field(&R::RandomColorLimitR), Is(255)},
         {"Random color limit G", Integer, Field(&R::RandomColorLimitG), Is(255)},
         {"Random color limit B", Integer, Field(&R::RandomColorLimitB), Is(255)},
         {"Random color limit minimum R", Integer, Field(&R::RandomColorLimitMinR), Is(0)},
         {"Random color limit minimum G", Integer, Field(&R::RandomColorLimitMinG), Is(0)},
         {"Random color limit minimum B", Integer, Field(&R::RandomColorLimitMinB), Is(0)},
         {"Week name", Text, Field(&R::Week_Str_Name), Is("Week #")},
         {"Longitude", PointNumber, Field(&R::Longitude), Is(37.63388889)},
         {"Latitude", PointNumber, Field(&R::Latitude), Is(54.17916667)},
         {"Calculate ephemeredes", Integer, Field(&R::Calculate_Ephemeredes), Is(1)},
         {"Choose profile at application startup", Integer, Field(&R::ChooseProfileAtStartup), Is(0)},
         {"Select profile timeout", Integer, Field(&R::SelectProfileTimeout), Is(30)},
         {"Calculate Sun ephemeredes", Integer, Field(&R::CalculateSunEphemeredes), Is(1)},
         {"Calculate Moon ephemeredes", Integer, Field(&R::CalculateMoonEphemeredes), Is(1)},
         {"Show next month", Integer, Field(&R::ShowNextMonth), Is(0)},
         {"Show previous month", Integer, Field(&R::ShowPreviousMonth), Is(0)},
         {"Show all week numbers", Integer, Field(&R::ShowAllWeekNumbers), Is(1)},
         {"Ephemeredes text align", Integer, Field(&R::EphemeredesTextAlign), Is(0)}},
        {},
        50,
        true,
        true};
}

Section ScreenEvents() {
    using R = ScreenEvent;
    const auto field = [](auto member) { return EntryField(&Settings::ScreenEvents, member); };
    return {.key = "Hotkeys",
            .rows = {{"Event #", Integer, field(&R::active), Is(0), " active"},
                     {"Event #", Text, field(&R::CMD), Empty, " CMD"},
                     {"Event #", Integer, field(&R::action), Is(0), " action"},
                     {"Event #", Integer, field(&R::timeout), Is(0), " timeout"},
                     {"Event #", Integer, field(&R::delay), Is(0), " delay"},
                     {"Event #", Integer, field(&R::TTL), Is(0), " TTL"},
                     {"Event #", Integer, field(&R::size), Is(0), " size"}},
            .list = Fixed(&Settings::ScreenEvents)};
}

Section Notes() {
    using R = Note;
    const auto field = [](auto member) { return EntryField(&Settings::Notes, member); };
    return {.key = "Notes",
            .rows = {{"Note #", Integer, field(&R::left), QuarterOf(&DefaultSources::screenWidth), " left"},
                     {"Note #", Integer, field(&R::top), QuarterOf(&DefaultSources::screenHeight), " top"},
                     {"Note #", Integer, field(&R::active), Is(0), " active"},
                     {"Note #", Text, field(&R::Text), Empty}},
            .list = Counted(&Settings::Notes, {{"Notes", "Counter"}}),
            .bar = 40};
}

// How often an alarm's program stands there. A counter beyond the array is damage.
std::int32_t ProgramsOf(const Settings& settings, ValueAt at) {
    return std::min(settings.AlarmRecords[at.entry].ProgramCounter, AlarmRecord::LastProgram) + 1;
}

FieldRef ProgramField(Settings& settings, ValueAt at) {
    return &settings.AlarmRecords[at.entry].Programs[static_cast<std::size_t>(at.repeat)];
}

Section Alarms() {
    using R = AlarmRecord;
    const auto field = [](auto member) { return EntryField(&Settings::AlarmRecords, member); };
    Section alarms{
        .key = "Alarms",
        .rows = {{"", Flag, field(&R::Active), No, " - Active"},
                 {"", Flag, field(&R::ShutdownWindows), No, " - Shutdown Windows"},
                 {"", Integer, field(&R::StartupType), Is(0), " - Startup Type"},
                 {"", Integer, field(&R::Actions), Is(0), " - Alarm actions"},
                 {"", Integer, field(&R::CurrentExecCount), Is(0), " - Current exec count"},
                 {"", EightBytes, field(&R::ExecCount), Is(0.0), " - Exec count"},
                 {"", Integer, field(&R::SoundRepeatCount), Is(0), " - Sound repeat count"},
                 {"", Integer, field(&R::CurrentState), Is(0), " - Current state"},
                 {"", Integer, field(&R::LastExecStatus), Is(0), " - Last exec status"},
                 {"", ShortInteger, field(&R::IconIndex), Is(0), " - Alarm icon index"},
                 {"", Text, field(&R::Name), Numbered("Alarm #"), " - Name"},
                 {"", Text, field(&R::Message), Is("Warning! Don't forget about..."), " - Message"},
                 {"", Text, field(&R::CriteriaText), Empty, " - Criteria (text)"},
                 {"", Text, field(&R::Criteria), Empty, " - Criteria"},
                 {"", Text, field(&R::AlarmTime), Empty, " - Alarm time"},
                 {"", Text, field(&R::AlarmDate), Empty, " - Alarm date"},
                 {"", Text, field(&R::AlarmMonth), Empty, " - Alarm month"},
                 {"", Text, field(&R::AlarmWeek), Empty, " - Alarm week"},
                 {"", Integer, field(&R::ProgramCounter), Is(0), " - Program counter"},
                 {"", Text, ProgramField, Empty, " - Program #", OnFailedRead::Default, ProgramsOf},
                 {"", Text, field(&R::DeadlineBeginDate), Empty, " - DeadLine begin date"},
                 {"", Text, field(&R::DeadlineBeginTime), Empty, " - DeadLine begin time"},
                 {"", Text, field(&R::DeadlineEndDate), Empty, " - DeadLine end date"},
                 {"", Text, field(&R::DeadlineEndTime), Empty, " - DeadLine end time"},
                 {"", Text, field(&R::SoundFile), Empty, " - Sound file"},
                 {"", Text, field(&R::PictureFile), Empty, " - Picture file"}},
        .list = Counted(&Settings::AlarmRecords, {{"General", "Alarms counter", CountText}})};
    alarms.list->most = 65'536; // a record is large
    alarms.list->letsEventsRun = true;
    return alarms;
}

// The values that stand with the list of profiles; what a profile holds is written by WriteProfile.
Section Profiles() {
    using R = SystemProfile;
    const auto field = [](auto member) { return EntryField(&Settings::System_Profiles, member); };
    const char* const counter = "Profiles counter";
    Section profiles{.key = "Profiles",
                     .rows = {{"Name", Text, field(&R::Name), Empty},
                              {"Description", Text, field(&R::Description), Empty},
                              {"Creation date", Text, field(&R::CreationDate), Now()},
                              {"Modification date", Text, field(&R::ModificationDate), Now()},
                              {"Last access date", Text, field(&R::LastAccessDate), Now()},
                              {"Default", Integer, field(&R::Default), Is(0)}},
                     .list =
                         Counted(&Settings::System_Profiles, {{"Profiles", counter}, {"General", counter}}),
                     .bar = 55,
                     .inProfiles = false};
    profiles.list->subkeys = true;
    return profiles;
}

Section WallpaperSources() {
    using R = WallpaperSource;
    const auto field = [](auto member) { return EntryField(&Settings::WallpaperSources, member); };
    const auto report = OnFailedRead::Report;
    const char* const key = "Wallpaper sources";
    return {.key = key,
            .rows = {{"Wallpaper source #", Text, field(&R::Path), Empty, "", report},
                     {"Is active wallpaper source #", BooleanText, field(&R::Active), No, "", report},
                     {"Wallpaper source #", Text, field(&R::Pattern), Empty, " pattern", report},
                     {"Wallpaper source #", Text, field(&R::ScanDeepLevel), Empty, " scan level", report}},
            .list = Counted(&Settings::WallpaperSources, {{key, "Wallpaper sources counter"}}),
            .bar = 60};
}

Section Favorites() {
    const auto field = [](auto member) { return EntryField(&Settings::FavoritesSources, member); };
    return {.key = "Favorites",
            .rows = {{"Favorites source #", Text, field(&ListedFile::Path), Empty, "", OnFailedRead::Report},
                     {"Is active favorites source #", BooleanText, field(&ListedFile::Active), No}},
            .list = Counted(&Settings::FavoritesSources, {{"Favorites", "Favorites sources counter"}}),
            .bar = 65};
}

Section Blacklist() {
    const auto field = [](auto member) { return EntryField(&Settings::BlacklistedSources, member); };
    return {
        .key = "Blacklist",
        .rows = {{"Blacklisted source #", Text, field(&ListedFile::Path), Empty, "", OnFailedRead::Report},
                 {"Is active blacklisted source #", BooleanText, field(&ListedFile::Active), No}},
        .list = Counted(&Settings::BlacklistedSources, {{"Blacklist", "Blacklisted sources counter"}}),
        .bar = 70};
}

Section CustomDays() {
    using R = CustomDay;
    const auto field = [](auto member) { return EntryField(&Settings::Custom_Days, member); };
    const char* const key = "Custom Day(s)";
    return {.key = key,
            .rows = {{"Day #", ShortText, field(&R::Day), Is(1)},
                     {"Month #", ShortText, field(&R::Month), Is(1)},
                     {"Color #", ColorText, field(&R::color), Is(0)}},
            .list = Counted(&Settings::Custom_Days, {{key, "Counter"}}),
            .bar = 72};
}

// The choices that go beyond the system as it is described, one row each, 0 unless a person sets it.
Section Extras() {
    using R = Settings;
    return {.key = "Extras",
            .rows = {{"Keep clear of panels", Flag, Field(&R::KeepClearOfPanels), No}},
            .onlyWhereSet = true};
}

} // namespace

const Schema<Settings>& SettingsSchema() {
    static const Schema<Settings> schema{
        Colors(),  Fonts(),    ScreenCapture(),    Hotkeys(),   ScreenEvents(), Notes(),      Alarms(),
        General(), Profiles(), WallpaperSources(), Favorites(), Blacklist(),    CustomDays(), Extras()};
    return schema;
}

} // namespace quorvane
