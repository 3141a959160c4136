#pragma once

#include "config/entries.h"
#include "config/one_based.h"
#include "core/color.h"

#include <array>
#include <cstdint>
#include <string>

namespace quorvane {

struct FontRecord {
    bool Bold = false;
    bool Italic = false;
    float Size = 0; // points
    bool Strikethru = false;
    bool Underline = false;
    std::string FontName;
    bool operator==(const FontRecord&) const = default;
};

// The modifiers are non-zero where they belong to the combination; VKey is a code of VK_MAPPING.
struct HotKeyRecord {
    bool Enabled = false;
    std::int32_t Ctrl = 0;
    std::int32_t Shift = 0;
    std::int32_t Alt = 0;
    std::int32_t VKey = 0;
    bool operator==(const HotKeyRecord&) const = default;
};

// All that is stored, and nothing else: the part of the global record that a profile holds, that a dialogue
// drafts and that a preview paints from, so it can be copied. Everything starts empty, zero or false: a
// setting's default is decided where it is read from the tree (config/schema.h).
//
// A count that goes with a list is no field of its own, since the list knows its length: the function of the
// count's name gives it.
struct Settings {
    // Colours
    Color Left_Upper_Color = 0;
    Color Left_Lower_Color = 0;
    Color Right_Upper_Color = 0;
    Color Right_Lower_Color = 0;
    Color Holiday_Color = 0;
    Color Holiday_Color_Minor = 0;
    Color WeekNumberColor = 0;
    Color Workday_Color = 0;
    Color CurrentDay_Color = 0;
    Color Caption_Color = 0;
    Color Calendar_BackGround_Color = 0;
    Color Week_Caption_Color = 0;
    Color Sun_Ephemeredes_Color = 0;
    Color Moon_Ephemeredes_Color = 0;

    // Fonts
    FontRecord CaptionFont;
    FontRecord CalendarFont;
    FontRecord EphemeredesFont;

    // Hot keys, screen capture, screen corners
    HotKeyRecord HOT_KEY_DesktopCapture;
    HotKeyRecord HOT_KEY_TopWindowCapture;
    HotKeyRecord HOT_KEY_TopWindowContentCapture;
    HotKeyRecord HOT_KEY_NewNote;
    HotKeyRecord HOT_KEY_ChangeWallpaper;
    std::string CaptureDirectory;
    std::string CaptureFileName; // a template
    std::int32_t EnableScreenEvents = 0;

    // General
    bool FIRST_RUN = false;
    std::string User_Wallpaper_Directory;
    std::string CurrentLanguage;
    double Scan_Time = 0; // seconds
    std::string LastSelectedWallpaper;
    std::string LastSelectedPreviewWallpaper;
    double Favorites_Probability = 0; // 0 to 1
    std::string Wallpaper;            // the bitmap that is written
    std::int32_t AutoStartApplication = 0;
    bool ShowWeekNumbers = false;
    std::int32_t Calendar_Position = 0; // 1 to 9
    bool AutoExitAfterChange = false;
    bool ChangeWallpaperAtStartUp = false;
    bool ChangeWallpaperPeriodically = false;
    std::int32_t ChangeWallpaperInterval = 0;        // seconds
    std::int32_t ChangeWallpaperIntervalCurrent = 0; // seconds left
    bool RescanWallpaperSources = false;
    std::int32_t RescanWallpaperSrcInterval = 0;        // minutes; 0 is never
    std::int32_t RescanWallpaperSrcIntervalCurrent = 0; // minutes left
    bool UseFavorites = false;
    std::int32_t Use_Calendar_Bkgrnd = 0;
    std::int32_t WallpaperPosition = 0;   // 0 centre, 1 tile, 2 stretch, 3 and 4 on the background
    std::int32_t WallpaperResolution = 0; // 0 to 5; 5 is the screen's
    bool UseGradientFill = false;
    std::int32_t GradientStyle = 0;
    bool UseRandomColors = false;
    bool PaintCalendar = false;
    bool SyncWithSystemDefaultWallpaper = false;
    std::int32_t RandomColorLimitR = 0;
    std::int32_t RandomColorLimitG = 0;
    std::int32_t RandomColorLimitB = 0;
    std::int32_t RandomColorLimitMinR = 0;
    std::int32_t RandomColorLimitMinG = 0;
    std::int32_t RandomColorLimitMinB = 0;
    std::string Week_Str_Name;
    double Longitude = 0; // degrees, east positive
    double Latitude = 0;  // degrees, north positive
    std::int32_t Calculate_Ephemeredes = 0;
    std::int32_t ChooseProfileAtStartup = 0;
    std::int32_t SelectProfileTimeout = 0; // seconds
    std::int32_t CalculateSunEphemeredes = 0;
    std::int32_t CalculateMoonEphemeredes = 0;
    std::int32_t ShowNextMonth = 0;
    std::int32_t ShowPreviousMonth = 0;
    std::int32_t ShowAllWeekNumbers = 0;
    std::int32_t EphemeredesTextAlign = 0; // 0 left, 1 centre, 2 right

    // Extras
    bool KeepClearOfPanels = false;

    // Lists
    std::array<ScreenEvent, 4> ScreenEvents; // upper left, upper right, lower left, lower right
    OneBased<Note> Notes;
    OneBased<AlarmRecord> AlarmRecords;
    OneBased<SystemProfile> System_Profiles;
    OneBased<WallpaperSource> WallpaperSources;
    OneBased<ListedFile> FavoritesSources;
    OneBased<ListedFile> BlacklistedSources;
    OneBased<CustomDay> Custom_Days;

    std::int32_t NotesCount() const { return Notes.Count(); }
    std::int32_t AlarmRecords_Count() const { return AlarmRecords.Count(); }
    std::int32_t WallpaperSrcCnt() const { return WallpaperSources.Count(); }
    std::int32_t FavoritesSrcCnt() const { return FavoritesSources.Count(); }
    std::int32_t BlacklistedSrcCnt() const { return BlacklistedSources.Count(); }
    std::int32_t CustomDayCont() const { return Custom_Days.Count(); }
    std::int32_t Sys_Profiles_Count() const { return System_Profiles.Count(); }

    bool operator==(const Settings&) const = default;
};

} // namespace quorvane
