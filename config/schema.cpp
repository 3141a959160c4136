#include "config/schema.h"

#include "core/text.h"

#include <algorithm>

namespace quorvane {
namespace {

using enum StoredForm;
using Rows = std::vector<SettingRow<GlobalRecord>>;

template<typename Record, typename Value>
auto Field(Value Record::*member) {
    return [member](Record& record) -> FieldRef { return &(record.*member); };
}

template<typename Inner, typename Value>
auto Field(Inner GlobalRecord::*inner, Value Inner::*member) {
    return [inner, member](GlobalRecord& record) -> FieldRef { return &(record.*inner.*member); };
}

// The defaults a value can have.
auto Is(DefaultValue value) {
    return [value](const auto&, const DefaultPlace&) { return value; };
}
auto Path(const char* name) {
    return [name](const auto&, const DefaultPlace& place) -> DefaultValue {
        return place.directory + place.separator + name;
    };
}
auto SameAs(std::int32_t GlobalRecord::*other) {
    return [other](const GlobalRecord& record, const DefaultPlace&) -> DefaultValue { return record.*other; };
}

const auto No = Is(0);
const auto Yes = Is(-1);
const auto Empty = Is(std::string());

SettingGroup Colors() {
    using R = GlobalRecord;
    const auto dark = Is(Rgb(0, 64, 0));
    return {"Colors",
            {{"Left Upper color", Integer, Field(&R::Left_Upper_Color), Is(0)},
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
             {"Moon ephemeredes color", Integer, Field(&R::Moon_Ephemeredes_Color), dark}}};
}

void AddFont(Rows& rows, const std::string& prefix, FontRecord GlobalRecord::*font, std::int32_t bold,
             double size) {
    rows.push_back({prefix + "bold", Flag, Field(font, &FontRecord::Bold), Is(bold)});
    rows.push_back({prefix + "italic", Flag, Field(font, &FontRecord::Italic), No});
    rows.push_back({prefix + "name", Text, Field(font, &FontRecord::FontName), Is("Microsoft Sans Serif")});
    rows.push_back({prefix + "size", LocaleSingle, Field(font, &FontRecord::Size), Is(size)});
    rows.push_back({prefix + "strikethru", Flag, Field(font, &FontRecord::Strikethru), No});
    rows.push_back({prefix + "underline", Flag, Field(font, &FontRecord::Underline), No});
}

SettingGroup Fonts() {
    SettingGroup group{"Fonts", {}};
    AddFont(group.rows, "Caption font ", &GlobalRecord::CaptionFont, -1, 18);
    AddFont(group.rows, "Calendar font ", &GlobalRecord::CalendarFont, 0, 14);
    AddFont(group.rows, "Ephemeredes font ", &GlobalRecord::EphemeredesFont, 0, 14);
    return group;
}

// `start` is what the names of the other values begin with.
void AddHotKey(Rows& rows, HotKeyRecord GlobalRecord::*key, const char* enabled, const std::string& start) {
    rows.push_back({enabled, FlagOne, Field(key, &HotKeyRecord::Enabled), No});
    rows.push_back({start + "_Alt", Integer, Field(key, &HotKeyRecord::Alt), Is(0)});
    rows.push_back({start + "_Ctrl", Integer, Field(key, &HotKeyRecord::Ctrl), Is(0)});
    rows.push_back({start + "_Shift", Integer, Field(key, &HotKeyRecord::Shift), Is(0)});
    rows.push_back({start + "_VKEY_Array_ID", KeyIndex, Field(key, &HotKeyRecord::VKey), Is(0)});
}

SettingGroup ScreenCapture() {
    using R = GlobalRecord;
    SettingGroup group{"Screen capture", {}};
    AddHotKey(group.rows, &R::HOT_KEY_DesktopCapture, "HK_Desktop capture", "HK_DC");
    AddHotKey(group.rows, &R::HOT_KEY_TopWindowCapture, "HK_Top window caprute", "HK_TW");
    AddHotKey(group.rows, &R::HOT_KEY_TopWindowContentCapture, "HK_Top windows client area capture",
              "HK_TWCA");
    group.rows.push_back({"Capture directory", Text, Field(&R::CaptureDirectory), Path("")});
    group.rows.push_back(
        {"Capture file template", Text, Field(&R::CaptureFileName), Is("YYYYMMDDHHNNSS.BMP")});
    return group;
}

SettingGroup Hotkeys() {
    using R = GlobalRecord;
    SettingGroup group{"Hotkeys", {}};
    AddHotKey(group.rows, &R::HOT_KEY_NewNote, "HK_NewNote", "HK_NewNote");
    AddHotKey(group.rows, &R::HOT_KEY_ChangeWallpaper, "HK_ChangeWallpaper", "HK_ChangeWallpaper");
    group.rows.push_back({"EnableScreenEvents", Integer, Field(&R::EnableScreenEvents), Is(0)});
    return group;
}

SettingGroup General() {
    using R = GlobalRecord;
    return {"General",
            {{"First RUN", FirstRun, Field(&R::FIRST_RUN), Yes},
             {"User wallpaper directory", Text, Field(&R::User_Wallpaper_Directory), Path("Wallpaper.bmp")},
             {"Language", Text, Field(&R::CurrentLanguage), Is("EN")},
             {"Scan time", LocaleDecimal, Field(&R::Scan_Time), Is(10.0)},
             {"Last selected wallpaper", Text, Field(&R::LastSelectedWallpaper), Empty},
             {"Last selected preview wallpaper", Text, Field(&R::LastSelectedPreviewWallpaper), Empty},
             {"Favorites probability", LocaleDecimal, Field(&R::Favorites_Probability), Is(0.75)},
             {"Wallpaper", Text, Field(&R::Wallpaper), Path("Wallpaper.bmp")},
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
             {"Rescan wallpaper sources interval current", Integer,
              Field(&R::RescanWallpaperSrcIntervalCurrent), SameAs(&R::RescanWallpaperSrcInterval)},
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
             {"Ephemeredes text align", Integer, Field(&R::EphemeredesTextAlign), Is(0)}}};
}

SettingList<WallpaperSource> WallpaperSources() {
    using R = WallpaperSource;
    const auto report = OnFailedRead::Report;
    return {"Wallpaper sources",
            "Wallpaper sources counter",
            &GlobalRecord::WallpaperSources,
            {{"Wallpaper source #", Text, Field(&R::Path), Empty, "", report},
             {"Is active wallpaper source #", BooleanText, Field(&R::Active), No, "", report},
             {"Wallpaper source #", Text, Field(&R::Pattern), Empty, " pattern", report},
             {"Wallpaper source #", Text, Field(&R::ScanDeepLevel), Empty, " scan level", report}}};
}

SettingList<ListedFile> ListedFiles(const char* key, const char* counter, const char* path,
                                    const char* active, OneBased<ListedFile> GlobalRecord::*list) {
    return {key,
            counter,
            list,
            {{path, Text, Field(&ListedFile::Path), Empty, "", OnFailedRead::Report},
             {active, BooleanText, Field(&ListedFile::Active), No}}};
}

SettingList<CustomDay> CustomDays() {
    using R = CustomDay;
    return {"Custom Day(s)",
            "Counter",
            &GlobalRecord::Custom_Days,
            {{"Day #", ShortText, Field(&R::Day), Is(1)},
             {"Month #", ShortText, Field(&R::Month), Is(1)},
             {"Color #", ColorText, Field(&R::color), Is(0)}}};
}

// Whether `name` is `row`'s name with a number from 1 in the place of the entry's.
template<typename Record>
bool FitsEntry(const SettingRow<Record>& row, std::string_view name) {
    const std::string prefix = LowerCase(row.name);
    const std::string suffix = LowerCase(row.suffix);
    if (name.size() <= prefix.size() + suffix.size()) return false;
    if (!name.starts_with(prefix) || !name.ends_with(suffix)) return false;
    const std::string_view number = name.substr(prefix.size(), name.size() - prefix.size() - suffix.size());
    return number[0] != '0' && number.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace

ValueType StoredType(StoredForm form) {
    return form < StoredForm::Text ? ValueType::Integer : ValueType::Text;
}

const Schema& SettingsSchema() {
    static const Schema schema{
        Colors(),
        Fonts(),
        ScreenCapture(),
        Hotkeys(),
        General(),
        WallpaperSources(),
        ListedFiles("Favorites", "Favorites sources counter", "Favorites source #",
                    "Is active favorites source #", &GlobalRecord::FavoritesSources),
        ListedFiles("Blacklist", "Blacklisted sources counter", "Blacklisted source #",
                    "Is active blacklisted source #", &GlobalRecord::BlacklistedSources),
        CustomDays(),
    };
    return schema;
}

std::optional<StoredForm> FindSetting(std::string_view key, std::string_view name) {
    const std::string foldedKey = LowerCase(key);
    const std::string foldedName = LowerCase(name);
    const Schema& schema = SettingsSchema();
    for (const SettingGroup* group : schema.Groups()) {
        if (LowerCase(group->key) != foldedKey) continue;
        for (const auto& row : group->rows) {
            if (LowerCase(row.name) == foldedName) return row.form;
        }
    }
    std::optional<StoredForm> found;
    schema.ForEachList([&](const auto& list) {
        if (LowerCase(list.key) != foldedKey) return;
        if (LowerCase(list.counter) == foldedName) found = Integer;
        for (const auto& row : list.rows) {
            if (FitsEntry(row, foldedName)) found = row.form;
        }
    });
    return found;
}

} // namespace quorvane
