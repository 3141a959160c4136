#pragma once

#include "config/path_list.h"
#include "config/settings_record.h"
#include "platform/system.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quorvane {

// The one record that all subsystems share, passed by reference; the Application owns it. The settings, and
// what lives as long as the process.
struct GlobalRecord : Settings {
    // The process
    bool Main_Exec = false; // the start-up is under way
    bool RunOnWin9x = false;

    SystemProfile Current_System_Profile; // the one in use

    // The engine
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

    std::int32_t Wallpapers_Cnt() const { return Wallpapers.Count(); }
    std::int32_t Wallpapers_Max_Cnt() const { return Wallpapers.Capacity(); }
    std::int32_t BMHandlesCount() const { return static_cast<std::int32_t>(BMHandles.size()); }
};

} // namespace quorvane
