#include "diagnostics/kernel_dump.h"

#include "config/vk_mapping.h"
#include "core/numbers.h"
#include "core/text.h"
#include "core/version.h"
#include "platform/files.h"

#include <concepts>

namespace quorvane {
namespace {

constexpr std::size_t Asterisks = 69;
constexpr std::size_t FileBlock = 64 * 1024;

std::string TextOf(std::string_view text) {
    return std::string(text);
}
std::string TextOf(double number) {
    return NumberText(number);
}
std::string TextOf(std::integral auto number) {
    return std::to_string(number);
}
std::string TextOf(bool value) {
    return BooleanText(value);
}

class DumpWriter {
  public:
    DumpWriter(const GlobalRecord& record, const std::function<void(std::string_view)>& write)
        : record_(record)
        , write_(write) {}

    void Header(const ErrorReport& report) {
        const std::string stars(Asterisks, '*');
        Line(stars);
        Line("***SYSTEM ERROR");
        std::string code = report.code;
        for (char& letter : code)
            letter = letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
        Line("***" + code);
        Line("***ERROR MESSAGE: " + report.message);
        Line("***Application version: " + VersionNumbers());
        Line("***Error Date and time: " + report.moment);
        Line(stars);
    }

    void Counters() {
        const GlobalRecord& r = record_;
        Field("hQuery", r.hQuery);
        Field("hCPU_Usage", r.hCPU_Usage);
        Field("hCPU_Kernel_Usage", r.hCPU_Kernel_Usage);
        Field("hCPU_User_Usage", r.hCPU_User_Usage);
        Field("hCPU_DPC_Usage", r.hCPU_DPC_Usage);
        Field("hCPU_INT_Usage", r.hCPU_INT_Usage);
        Field("hPF_Usage", r.hPF_Usage);
        Field("hPF_CL", r.hPF_CL);
        Field("hPF_CB", r.hPF_CB);
        Field("hPF_AM", r.hPF_AM);
        Field("CPU_Usage_Value", r.CPU_Usage_Value);
        Field("CPU_Kernel_Usage_Value", r.CPU_Kernel_Usage_Value);
        Field("CPU_User_Usage_Value", r.CPU_User_Usage_Value);
        Field("CPU_DPC_Usage_Value", r.CPU_DPC_Usage_Value);
        Field("CPU_INT_Usage_Value", r.CPU_INT_Usage_Value);
        Field("PF_Usage_Value", r.PF_Usage_Value);
        Field("PF_Commit_Limit", r.PF_Commit_Limit);
        Field("PF_Commited_Bytes", r.PF_Commited_Bytes);
        Field("PF_Available_Bytes", r.PF_Available_Bytes);
    }

    void System() {
        const GlobalRecord& r = record_;
        Field("OS_Name", r.OS_Name);
        Field("OS_Version", r.OS_Version);
        Field("OS_ServicePack", r.OS_ServicePack);
        Field("OS_PID", r.OS_PID);
        Field("LoggedOnUser", r.LoggedOnUser);
        Field("LastKnownGood_Key", r.LastKnownGood_Key);
        Field("System_Messages.Message", r.System_Messages.Message);
        Field("CaptureIsActive", r.CaptureIsActive);
        Field("hConsoleIn", r.hConsoleIn);
        Field("hConsoleOut", r.hConsoleOut);
        Field("hConsoleErr", r.hConsoleErr);
        Field("ProcessHandle", r.ProcessHandle);
        Field("ProcessID", r.ProcessID);
        Field("lpVersionInformation.dwBuildNumber", r.lpVersionInformation.dwBuildNumber);
        Field("lpVersionInformation.dwMajorVersion", r.lpVersionInformation.dwMajorVersion);
        Field("lpVersionInformation.dwMinorVersion", r.lpVersionInformation.dwMinorVersion);
        Field("lpVersionInformation.dwOSVersionInfoSize", r.lpVersionInformation.dwOSVersionInfoSize);
        Field("lpVersionInformation.dwPlatformId", r.lpVersionInformation.dwPlatformId);
        Field("lpVersionInformation.szCSDVersion", r.lpVersionInformation.szCSDVersion);
        Field("BMHandlesCount", r.BMHandlesCount());
        for (std::int32_t index = 0; index < r.BMHandlesCount(); ++index)
            Field(At("BMHandles", index), r.BMHandles[static_cast<std::size_t>(index)]);
    }

    void Look() {
        const GlobalRecord& r = record_;
        Field("Left_Upper_Color", r.Left_Upper_Color);
        Field("Left_Lower_Color", r.Left_Lower_Color);
        Field("Right_Upper_Color", r.Right_Upper_Color);
        Field("Right_Lower_Color", r.Right_Lower_Color);
        Field("Holiday_Color", r.Holiday_Color);
        Field("Holiday_Color_Minor", r.Holiday_Color_Minor);
        Field("Workday_Color", r.Workday_Color);
        Field("WeekNumberColor", r.WeekNumberColor);
        Field("CurrentDay_Color", r.CurrentDay_Color);
        Field("Caption_Color", r.Caption_Color);
        Field("CaptionFont.FontName", r.CaptionFont.FontName);
        Field("CalendarFont.FontName", r.CalendarFont.FontName);
        Field("Calendar_BackGround_Color", r.Calendar_BackGround_Color);
        Field("Use_Calendar_Bkgrnd", r.Use_Calendar_Bkgrnd);
        Field("System_Directory", r.System_Directory);
        Field("User_Wallpaper_Directory", r.User_Wallpaper_Directory);
    }

    void Candidates() {
        const GlobalRecord& r = record_;
        Field("Wallpapers_Cnt", r.Wallpapers_Cnt());
        for (std::int32_t index = 1; index <= r.Wallpapers_Cnt(); ++index)
            Field(At("Wallpapers", index), r.Wallpapers[index]);
        Field("Wallpapers_Max_Cnt", r.Wallpapers_Max_Cnt());
    }

    void Engine() {
        const GlobalRecord& r = record_;
        Field("Scan_Time", r.Scan_Time);
        Field("LastSelectedWallpaper", r.LastSelectedWallpaper);
        Field("LastSelectedPreviewWallpaper", r.LastSelectedPreviewWallpaper);
        Field("Favorites_Probability", r.Favorites_Probability);
        Field("ShowWeekNumbers", r.ShowWeekNumbers);
        Field("ChangeWallpaperAtStartUp", r.ChangeWallpaperAtStartUp);
        Field("ChangeWallpaperPeriodically", r.ChangeWallpaperPeriodically);
        Field("ChangeWallpaperInterval", r.ChangeWallpaperInterval);
        Field("ChangeWallpaperIntervalCurrent", r.ChangeWallpaperIntervalCurrent);
        Field("RESCANWALLPAPERSOURCESNOW", r.RESCANWALLPAPERSOURCESNOW);
        Field("RescanWallpaperSources", r.RescanWallpaperSources);
        Field("RescanWallpaperSrcInterval", r.RescanWallpaperSrcInterval);
        Field("RescanWallpaperSrcIntervalCurrent", r.RescanWallpaperSrcIntervalCurrent);
        Field("UseFavorites", r.UseFavorites);
        Field("Wallpaper", r.Wallpaper);
        Field("WallpaperPosition", r.WallpaperPosition);
        Field("WallpaperResolution", r.WallpaperResolution);
        Field("UseGradientFill", r.UseGradientFill);
        Field("GradientStyle", r.GradientStyle);
        Field("UseRandomColors", r.UseRandomColors);
        Field("PaintCalendar", r.PaintCalendar);
        Field("SyncWithSystemDefaultWallpaper", r.SyncWithSystemDefaultWallpaper);
    }

    void Sources() {
        Field("WallpaperSrcCnt", record_.WallpaperSrcCnt());
        std::int32_t index = 0;
        for (const WallpaperSource& source : record_.WallpaperSources) {
            const std::string place = At("WallpaperSources", ++index);
            Field(place + ".Path", source.Path);
            Field(place + ".Active", source.Active);
            Field(place + ".Pattern", source.Pattern);
            Field(place + ".ScanDeepLevel", source.ScanDeepLevel);
        }
        Files("FavoritesSrcCnt", "FavoritesSources", record_.FavoritesSources);
        Files("BlacklistedSrcCnt", "BlacklistedSources", record_.BlacklistedSources);
    }

    void Limits() {
        const GlobalRecord& r = record_;
        Field("RandomColorLimitR", r.RandomColorLimitR);
        Field("RandomColorLimitMinR", r.RandomColorLimitMinR);
        Field("RandomColorLimitG", r.RandomColorLimitG);
        Field("RandomColorLimitMinG", r.RandomColorLimitMinG);
        Field("RandomColorLimitB", r.RandomColorLimitB);
        Field("RandomColorLimitMinB", r.RandomColorLimitMinB);
        Field("Calendar_Position", r.Calendar_Position);
        Field("DISABLE_WALLPAPER_CHANGE", r.DISABLE_WALLPAPER_CHANGE);
        Field("DISABLE_WALLPAPER_PREVIEW_CHANGE", r.DISABLE_WALLPAPER_PREVIEW_CHANGE);
        Field("FIRST_RUN", r.FIRST_RUN);
        Field("Week_Str_Name", r.Week_Str_Name);
    }

    void Keys() {
        Line("VK_Mapping");
        Field("VK_MAP_COUNT", VK_MAP_COUNT);
        std::int32_t index = 0;
        for (const VkMapping& key : VK_MAPPING) {
            const std::string place = At("VK_MAPPING", index++);
            Field(place + ".ID", key.ID);
            Field(place + ".Name", key.Name);
        }
        Line("END - VK_Mapping");
    }

    void Rest() {
        const GlobalRecord& r = record_;
        Field("CaptureDirectory", r.CaptureDirectory);
        Field("CaptureFileName", r.CaptureFileName);
        Field("HOT_KEY_DesktopCapture.Enabled", r.HOT_KEY_DesktopCapture.Enabled);
        Field("HOT_KEY_TopWindowCapture.Enabled", r.HOT_KEY_TopWindowCapture.Enabled);
        Field("HOT_KEY_TopWindowContentCapture.Enabled", r.HOT_KEY_TopWindowContentCapture.Enabled);
        Field("AutoStartApplication", r.AutoStartApplication);
        Field("Main_Exec", r.Main_Exec);
        Field("CurrentSystem.Computer_Name", r.CurrentSystem.Computer_Name);
        Field("CustomDayCont", r.CustomDayCont());
        std::int32_t index = 0;
        for (const CustomDay& day : r.Custom_Days) {
            const std::string place = At("Custom_Days", ++index);
            Field(place + ".Day", day.Day);
            Field(place + ".Month", day.Month);
            Field(place + ".color", day.color);
        }
        Field("Latitude", r.Latitude);
        Field("Longitude", r.Longitude);
        Field("Calculate_Ephemeredes", r.Calculate_Ephemeredes);
        Field("Current_System_Profile.Name", r.Current_System_Profile.Name);
        Field("Sys_Profiles_Count", r.Sys_Profiles_Count());
        index = 0;
        for (const SystemProfile& profile : r.System_Profiles)
            Field(At("System_Profiles", ++index) + ".Name", profile.Name);
        Field("ChooseProfileAtStartup", r.ChooseProfileAtStartup);
    }

  private:
    static std::string At(std::string_view list, std::int32_t index) {
        return std::string(list) + "(" + std::to_string(index) + ")";
    }
    void Line(std::string_view text) {
        write_(text);
        write_("\r\n");
    }
    template<typename T>
    void Field(std::string_view label, const T& value) {
        write_(label);
        write_(": ");
        Line(TextOf(value));
    }
    void Files(std::string_view count, std::string_view list, const OneBased<ListedFile>& files) {
        Field(count, files.Count());
        std::int32_t index = 0;
        for (const ListedFile& file : files) {
            const std::string place = At(list, ++index);
            Field(place + ".Path", file.Path);
            Field(place + ".Active", file.Active);
        }
    }

    const GlobalRecord& record_;
    const std::function<void(std::string_view)>& write_;
};

} // namespace

void WriteKernelDump(const GlobalRecord& record, const ErrorReport& report,
                     const std::function<void(std::string_view)>& write) {
    DumpWriter dump(record, write);
    dump.Header(report);
    dump.Counters();
    dump.System();
    dump.Look();
    dump.Candidates();
    dump.Engine();
    dump.Sources();
    dump.Limits();
    dump.Keys();
    dump.Rest();
}

std::string SaveKernelDump(const GlobalRecord& record, const ErrorReport& report, Files& files,
                           const std::string& path) {
    std::string why;
    const std::unique_ptr<FileWriter> file = files.Replace(path, why);
    if (!file) return why;
    std::string block;
    bool written = true;
    const auto flush = [&] {
        written = written && file->Write(block.data(), block.size());
        block.clear();
    };
    WriteKernelDump(record, report, [&](std::string_view text) {
        block += text;
        if (block.size() >= FileBlock) flush();
    });
    flush();
    return written && file->Commit() ? std::string() : file->Why();
}

} // namespace quorvane
