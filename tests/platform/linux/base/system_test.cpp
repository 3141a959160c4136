#include "platform/linux/base/system.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(LinuxSystemTest, ReadsOsReleaseInEveryQuotingThatTheFormatAllows) {
    const char* text = "# comment\nNAME='Some \\'thing'\nPRETTY_NAME=\"Debian \\\"12\\\" "
                       "\\$x\"\nID=debian\nBAD\nEMPTY=\nLAST=x";
    EXPECT_EQ(OsReleaseValue(text, "PRETTY_NAME"), "Debian \"12\" $x");
    EXPECT_EQ(OsReleaseValue(text, "NAME"), "Some 'thing");
    EXPECT_EQ(OsReleaseValue(text, "ID"), "debian");
    EXPECT_EQ(OsReleaseValue(text, "EMPTY"), "");
    EXPECT_EQ(OsReleaseValue(text, "LAST"), "x");
    EXPECT_EQ(OsReleaseValue(text, "BAD"), "");
    EXPECT_EQ(OsReleaseValue("X=\"", "X"), "\"");
}

TEST(LinuxSystemTest, ReadsTheNumbersOfAKernelReleaseAndStopsAtWhatIsNone) {
    VersionRecord record;
    ReadKernelRelease("6.1.112-18-amd64", record);
    EXPECT_EQ(record.dwMajorVersion, 6);
    EXPECT_EQ(record.dwMinorVersion, 1);
    EXPECT_EQ(record.dwBuildNumber, 112);
    VersionRecord strange;
    ReadKernelRelease("seven", strange);
    EXPECT_EQ(strange.dwMajorVersion, 0);
    ReadKernelRelease("99999999999.1", strange);
    EXPECT_EQ(strange.dwMajorVersion, 0);
}

TEST(LinuxSystemTest, KnowsItsMachine) {
    LinuxSystem system;
    const VersionRecord version = system.Version();
    EXPECT_EQ(version.dwPlatformId, 2);
    EXPECT_GT(version.dwMajorVersion, 1);
    EXPECT_FALSE(version.displayName.empty());
    EXPECT_FALSE(system.UserName().empty());
    EXPECT_FALSE(system.ComputerName().empty());
}

} // namespace
} // namespace quorvane
