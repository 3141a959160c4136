#pragma once

#include "config/one_based.h"
#include "config/path_list.h"
#include "core/color.h"
#include "platform/system.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quorvane {

// The one record that all subsystems share, passed by reference; the Application owns it. Everything starts
// empty, zero or false: a setting's default is decided where it is read from the tree (config/schema.h).
//
// A count that goes with a list is no field of its own, since the list knows its length: the function of the
// count's name gives it (WallpaperSrcCnt, FavoritesSrcCnt, BlacklistedSrcCnt, CustomDayCont,
// Sys_Profiles_Count, Wallpapers_Cnt, Wallpapers_Max_Cnt, BMHandlesCount).

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

struct WallpaperSource {
    std::string Path; // a folder
    bool Active = false;
    std::string Pattern;       // "*.bmp;*.jpg"
    std::string ScanDeepLevel; // a number of levels, or "inf"; blank is 0
    bool operator==(const WallpaperSource&) const = default;
};

// A favourite or an entry of the blacklist: one exact file.
struct ListedFile {
    std::string Path;
    bool Active = false;
    bool operator==(const ListedFile&) const = default;
};

struct CustomDay {
    std::int16_t Day = 0;
    std::int16_t Month = 0;
    Color color = 0;
    bool operator==(const CustomDay&) const = default;
};

struct SystemProfile {
    std::string Name;
    std::string Description;
    std::string CreationDate;
    std::string ModificationDate;
    std::string LastAccessDate;
    std::int32_t Default = 0; // above 0 for the default profile
    std::int32_t Id = 0;      // the number of its subkey; in memory only
    bool operator==(const SystemProfile&) const = default;
};

struct GlobalRecord {
    // The process
    bool Main_Exec = false; // the start-up is under way
    bool RunOnWin9x = false;
    bool LocaleLoaded = false; // translated captions are there to be used

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

    // Lists
    OneBased<WallpaperSource> WallpaperSources;
    OneBased<ListedFile> FavoritesSources;
    OneBased<ListedFile> BlacklistedSources;
    OneBased<CustomDay> Custom_Days;
    OneBased<SystemProfile> System_Profiles;
    SystemProfile Current_System_Profile;

    // What is never stored: the engine
    std::string System_Directory;
    PathList Wallpapers;
    bool DISABLE_WALLPAPER_CHANGE = false;
    bool DISABLE_WALLPAPER_PREVIEW_CHANGE = false;
    bool RESCANWALLPAPERSOURCESNOW = false; // asks the next build of the list for a scan
    std::vector<std::int64_t> BMHandles;    // bitmaps made for the menu
    std::int16_t CaptureIsActive = 0;

    // The system
    VersionRecord lpVersionInformation;
    std::string OS_Name;
    std::string OS_Version;
    std::string OS_ServicePack;
    std::string OS_PID;
    std::string LoggedOnUser;
    struct {
        std::string Computer_Name;
    } CurrentSystem;
    std::int32_t ProcessID = 0;
    std::int32_t ThreadID = 0;

    // Fields that nothing writes; they keep their lines in the state dump.
    std::int32_t hQuery = 0;
    std::int32_t hCPU_Usage = 0;
    std::int32_t hCPU_Kernel_Usage = 0;
    std::int32_t hCPU_User_Usage = 0;
    std::int32_t hCPU_DPC_Usage = 0;
    std::int32_t hCPU_INT_Usage = 0;
    std::int32_t hPF_Usage = 0;
    std::int32_t hPF_CL = 0;
    std::int32_t hPF_CB = 0;
    std::int32_t hPF_AM = 0;
    double CPU_Usage_Value = 0;
    double CPU_Kernel_Usage_Value = 0;
    double CPU_User_Usage_Value = 0;
    double CPU_DPC_Usage_Value = 0;
    double CPU_INT_Usage_Value = 0;
    double PF_Usage_Value = 0;
    double PF_Commit_Limit = 0;
    double PF_Commited_Bytes = 0;
    double PF_Available_Bytes = 0;
    std::string LastKnownGood_Key;
    struct {
        std::string Message;
    } System_Messages;
    std::int32_t hConsoleIn = 0;
    std::int32_t hConsoleOut = 0;
    std::int32_t hConsoleErr = 0;
    std::int32_t ProcessHandle = 0;

    std::int32_t WallpaperSrcCnt() const { return WallpaperSources.Count(); }
    std::int32_t FavoritesSrcCnt() const { return FavoritesSources.Count(); }
    std::int32_t BlacklistedSrcCnt() const { return BlacklistedSources.Count(); }
    std::int32_t CustomDayCont() const { return Custom_Days.Count(); }
    std::int32_t Sys_Profiles_Count() const { return System_Profiles.Count(); }
    std::int32_t Wallpapers_Cnt() const { return Wallpapers.Count(); }
    std::int32_t Wallpapers_Max_Cnt() const { return Wallpapers.Capacity(); }
    std::int32_t BMHandlesCount() const { return static_cast<std::int32_t>(BMHandles.size()); }
};

} // namespace quorvane
