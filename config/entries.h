#pragma once

#include "core/color.h"

#include <array>
#include <cstdint>
#include <string>

namespace quorvane {

// The entries of the lists that are stored with the settings.

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

// A corner of the primary screen.
struct ScreenEvent {
    std::int32_t active = 0;  // not 0: the corner may fire
    std::int32_t size = 0;    // pixels; the square is one pixel larger
    std::int32_t timeout = 0; // seconds until it fires first
    std::int32_t TTL = 0;     // seconds left, may be below 0
    std::int32_t action = 0;  // in the numbering of the corners, 0 to 17
    std::int32_t delay = 0;   // seconds that a repeat waits on top of the timeout
    std::string CMD;          // the command line of action 4
    bool operator==(const ScreenEvent&) const = default;
};

struct Note {
    std::int32_t active = 0; // not 0: it has an open window
    std::string Text;        // the whole markup, never expanded
    std::int32_t left = 0;   // of the window, in twips
    std::int32_t top = 0;
    bool operator==(const Note&) const = default;
};

// What a firing does, as flags of AlarmRecord::Actions.
namespace alarm_action {
inline constexpr std::int32_t ShowText = 1;
inline constexpr std::int32_t PlaySound = 2;
inline constexpr std::int32_t RunPrograms = 4;
inline constexpr std::int32_t BuiltIn = 8;
inline constexpr std::int32_t ShutDown = 16; // stored only
} // namespace alarm_action

// Values of AlarmRecord::SoundRepeatCount and ExecCount that are no counts.
namespace alarm_count {
inline constexpr double Infinite = 1e308;                   // firings
inline constexpr std::int32_t InfiniteRepeats = 2147483647; // of the sound
inline constexpr std::int32_t RepeatsOfHour = -1;           // as many as the present hour
inline constexpr std::int32_t RepeatsOfMinute = -2;
inline constexpr std::int32_t RepeatsOfSecond = -4;
} // namespace alarm_count

struct AlarmRecord {
    static constexpr std::int32_t LastProgram = 32;

    bool Active = false;
    std::int32_t BuiltinAction = 0; // in the numbering of the alarms, 0 to 16; not stored
    std::string Name;
    std::string Message; // rich text, as the editor gives it
    std::string CriteriaText;
    std::string Criteria;  // compiled
    std::string AlarmTime; // this and the next three are stored and read by nothing
    std::string AlarmDate;
    std::string AlarmMonth;
    std::string AlarmWeek;
    std::int32_t StartupType = 0; // a label: 1 once, 2 hourly and so on; 0 for one that has none
    bool ShutdownWindows = false; // the editor's box for the sound, in spite of its name
    std::array<std::string, LastProgram + 1> Programs;
    std::int32_t ProgramCounter = 0; // the highest used index of Programs
    std::string DeadlineBeginTime;   // "H:M:S"
    std::string DeadlineBeginDate;   // "D.M.YYYY"
    std::string DeadlineEndTime;
    std::string DeadlineEndDate;
    std::int32_t Actions = 0;          // alarm_action flags
    std::int32_t CurrentExecCount = 0; // times fired
    double ExecCount = 0;              // firings allowed
    std::int32_t SoundRepeatCount = 0;
    std::int32_t CurrentState = 0;
    std::int32_t LastExecStatus = 0;
    std::string PictureFile;
    std::string SoundFile;
    std::int32_t Volume = 0;     // this and the next three are not stored
    std::int32_t RiseVolume = 0; // 0 or 1
    bool RunVisible = false;
    std::int32_t MMEngine = 0;
    std::int16_t IconIndex = 0;
    bool operator==(const AlarmRecord&) const = default;
};

} // namespace quorvane
