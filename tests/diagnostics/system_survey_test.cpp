#include "diagnostics/system_survey.h"

#include "core/run_time_error.h"
#include "platform/memory/session.h"
#include "platform/memory/system.h"
#include "tests/support/recorded_program.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

VersionRecord Version(std::int32_t platform, std::int32_t major, std::int32_t minor) {
    VersionRecord version;
    version.dwPlatformId = platform;
    version.dwMajorVersion = major;
    version.dwMinorVersion = minor;
    version.dwBuildNumber = 2600;
    return version;
}

TEST(SystemSurveyTest, NamesWhatItsTablesDoNotKnowByNumbers) {
    EXPECT_EQ(SystemName(Version(2, 5, 3)), "Microsoft Windows NT 5.3");
    EXPECT_EQ(SystemName(Version(2, 10, 0)), "Microsoft Windows NT 10.0");
    EXPECT_EQ(SystemName(Version(1, 4, 3)), "Microsoft Windows 9x4.3");
    EXPECT_EQ(SystemName(Version(3, 1, 0)), "");
    EXPECT_EQ(EditionName(512 | 2 | 128), "Datacenter edition") << "each replaces the one before it";
    EXPECT_EQ(EditionName(2 | 4 | 32),
              "Enterprise/Advanced edition, BackOffice system, Small business system");
    EXPECT_EQ(EditionName(4), "BackOffice system") << "no comma where nothing stands before it";
}

class DetectSystemTest : public ::testing::Test {
  protected:
    void Detect() { DetectSystem(record_, system_, session_, program_); }
    CallLog calls_;
    MemorySystem system_{calls_};
    MemorySession session_{calls_};
    GlobalRecord record_;
    CallLog reported_;
    test::RecordedProgram program_{reported_};
};

TEST_F(DetectSystemTest, FillsTheRecord) {
    system_.version = Version(2, 5, 1);
    system_.version.suiteMask = 512;
    system_.version.szCSDVersion = "Service Pack 3";
    Detect();
    EXPECT_EQ(record_.OS_Name, "Microsoft Windows XP Home edition Service Pack 3");
    EXPECT_EQ(record_.OS_Version, "5.1.2600");
    EXPECT_EQ(record_.OS_ServicePack, "Service Pack 3");
    EXPECT_EQ(record_.LoggedOnUser, "ann");
    EXPECT_EQ(record_.CurrentSystem.Computer_Name, "workstation");
    EXPECT_EQ(record_.ProcessID, 4711);
    EXPECT_EQ(record_.ThreadID, 4712);
    EXPECT_TRUE(reported_.lines.empty());
    system_.version = Version(2, 6, 1);
    system_.version.displayName = "Debian GNU/Linux 12 (bookworm)";
    Detect();
    EXPECT_EQ(record_.OS_Name, "Debian GNU/Linux 12 (bookworm)");
}

TEST_F(DetectSystemTest, RefusesTheOldFamilyUnlessToldToRunOnIt) {
    system_.version = Version(1, 4, 10);
    EXPECT_THROW(Detect(), ProcessEnd);
    EXPECT_TRUE(reported_.Has("program.ShowErrorDialog 0 This version OS isn't supported!"));
    record_.RunOnWin9x = true;
    reported_.Clear();
    Detect();
    EXPECT_EQ(record_.OS_Name, "Microsoft Windows 98");
    EXPECT_TRUE(reported_.lines.empty());
}

TEST_F(DetectSystemTest, AsksForEachRightOnceAndMindsNoRefusal) {
    system_.refusedPrivileges = {"SeTcbPrivilege"};
    EnableProcessPrivileges(system_);
    ASSERT_EQ(calls_.lines.size(), 21U);
    EXPECT_EQ(calls_.lines.back(), "system.EnablePrivilege SeCreatePagefilePrivilege");
}

} // namespace
} // namespace quorvane
