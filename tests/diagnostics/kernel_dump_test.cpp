#include "diagnostics/kernel_dump.h"

#include "core/text.h"
#include "core/version.h"
#include "platform/memory/files.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quorvane {
namespace {

const ErrorReport Report{"Error code: 9", "Subscript out of range", "21.11.2026 12:30:00"};

class KernelDumpTest : public testing::Test {
  protected:
    // The lines from one that begins with `first` on.
    std::string Lines(const std::string& first, std::size_t count) {
        std::string dump;
        WriteKernelDump(record_, Report, [&](std::string_view text) { dump += text; });
        const std::size_t begin = dump.find("\r\n" + first) + 2;
        std::size_t end = begin;
        while (count-- > 0)
            end = dump.find("\r\n", end) + 2;
        return Replace(dump.substr(begin, end - begin), "\r\n", "\n");
    }

    GlobalRecord record_;
};

TEST_F(KernelDumpTest, WritesListsBetweenTheirCountAndWhatFollows) {
    EXPECT_EQ(Lines("Wallpapers_Cnt", 2), "Wallpapers_Cnt: 0\nWallpapers_Max_Cnt: 0\n");
    record_.Wallpapers.Add("/p/", "a b.jpg");
    record_.WallpaperSources.Add({"/p", true, "*.jpg", "inf"});
    record_.FavoritesSources.Add({"/p/f.jpg", false});
    record_.Custom_Days.Add({24, 12, 255});
    record_.System_Profiles.Add().Name = "Work";
    record_.BMHandles = {7};
    record_.Latitude = -37.5;
    EXPECT_EQ(Lines("Wallpapers_Cnt", 3),
              "Wallpapers_Cnt: 1\nWallpapers(1): /p/a b.jpg\nWallpapers_Max_Cnt: 5000\n");
    EXPECT_EQ(Lines("WallpaperSrcCnt", 9), "WallpaperSrcCnt: 1\n"
                                           "WallpaperSources(1).Path: /p\n"
                                           "WallpaperSources(1).Active: True\n"
                                           "WallpaperSources(1).Pattern: *.jpg\n"
                                           "WallpaperSources(1).ScanDeepLevel: inf\n"
                                           "FavoritesSrcCnt: 1\n"
                                           "FavoritesSources(1).Path: /p/f.jpg\n"
                                           "FavoritesSources(1).Active: False\n"
                                           "BlacklistedSrcCnt: 0\n");
    EXPECT_EQ(Lines("Custom_Days", 4), "Custom_Days(1).Day: 24\nCustom_Days(1).Month: 12\n"
                                       "Custom_Days(1).color: 255\nLatitude: -37.5\n");
    EXPECT_EQ(Lines("Sys_Profiles_Count", 2), "Sys_Profiles_Count: 1\nSystem_Profiles(1).Name: Work\n");
    EXPECT_EQ(Lines("BMHandlesCount", 3), "BMHandlesCount: 1\nBMHandles(0): 7\nLeft_Upper_Color: 0\n");
    EXPECT_EQ(Lines("VK_Mapping", 4),
              "VK_Mapping\nVK_MAP_COUNT: 86\nVK_MAPPING(0).ID: 8\nVK_MAPPING(0).Name: BACKSPACE\n");
}

TEST_F(KernelDumpTest, ReplacesTheFileWholeOrSaysWhyNot) {
    MemoryFiles files;
    files.Put("/home/kernel.dmp", "an older one, longer");
    record_.Week_Str_Name = "Week";
    ASSERT_EQ(SaveKernelDump(record_, Report, files, "/home/kernel.dmp"), "");
    const std::string dump = *files.Read("/home/kernel.dmp");
    const std::string stars(69, '*');
    EXPECT_TRUE(dump.starts_with(stars +
                                 "\r\n***SYSTEM ERROR\r\n***ERROR CODE: 9\r\n"
                                 "***ERROR MESSAGE: Subscript out of range\r\n***Application version: " +
                                 VersionNumbers() + "\r\n***Error Date and time: 21.11.2026 12:30:00\r\n" +
                                 stars + "\r\nhQuery: 0\r\n"))
        << dump.substr(0, 300);
    EXPECT_TRUE(dump.ends_with("\r\nChooseProfileAtStartup: 0\r\n"));
    files.readOnly.insert("/home");
    EXPECT_NE(SaveKernelDump(record_, Report, files, "/home/kernel.dmp"), "");
    EXPECT_EQ(*files.Read("/home/kernel.dmp"), dump);
}

} // namespace
} // namespace quorvane
