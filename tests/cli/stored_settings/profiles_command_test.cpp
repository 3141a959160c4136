#include "config/profiles.h"
#include "config/registry.h"
#include "platform/headless.h"
#include "platform/store.h"
#include "tests/cli/run.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace quorvane::cli {
namespace {

class ProfilesCommandTest : public testing::Test {
  protected:
    ProfilesCommandTest() { setenv("XDG_CONFIG_HOME", folder_.Path().string().c_str(), 1); }

    // The output, with the status in front where it is not 0.
    std::string Run(const std::vector<std::string>& words) {
        const Ran ran = RunWords(words);
        return (ran.status == Done ? "" : std::to_string(ran.status) + " ") + ran.out;
    }
    std::string Profiles(std::vector<std::string> words) {
        words.insert(words.begin(), "profiles");
        return Run(words);
    }
    void SetWeek(const char* name) { EXPECT_EQ(Run({"settings", "set", "General\\Week name", name}), ""); }
    std::string Week() { return Run({"settings", "get", "General\\Week name"}); }

    test::TemporaryFolder folder_;
};

TEST_F(ProfilesCommandTest, SavesLoadsMarksAndDeletes) {
    SetWeek("one");
    EXPECT_EQ(Profiles({"save", "Home", "--description", "at home", "--as-default"}), "1\n");
    SetWeek("two");
    EXPECT_EQ(Profiles({"save", "Office", "--json"}), "{\"profile\": 2}\n");
    EXPECT_EQ(Profiles({"save", "Way"}), "3\n");
    EXPECT_EQ(Profiles({"load", "home"}), "");
    EXPECT_EQ(Week(), "one\n") << "the main tree has it";
    EXPECT_EQ(Profiles({"save", " HOME "}), "1\n");
    EXPECT_EQ(Profiles({"list"}), "1  Home  (default)\n2  Office\n3  Way\n") << "it keeps its mark";
    EXPECT_NE(Profiles({"list", "--json"}).find(R"("description": "at home")"), std::string::npos);
    EXPECT_EQ(Profiles({"default", "way"}), "");
    EXPECT_EQ(Profiles({"delete", "Home"}), "");
    EXPECT_EQ(Profiles({"list"}), "1  Office\n2  Way  (default)\n");
    EXPECT_EQ(Week(), "one\n");
    EXPECT_EQ(Profiles({"load", "Office"}), "");
    EXPECT_EQ(Week(), "two\n");
    EXPECT_EQ(Profiles({"save", "--default"}), "");
    EXPECT_EQ(Profiles({"delete", "--all"}), "");
    EXPECT_EQ(Profiles({"list"}), "");
    SetWeek("three");
    EXPECT_EQ(Profiles({"load", "--default"}), "");
    EXPECT_EQ(Week(), "two\n");
}

TEST_F(ProfilesCommandTest, RefusesAndChangesNothing) {
    EXPECT_EQ(Profiles({"save", "Home"}), "1\n");
    for (const char* action : {"load", "delete", "default"})
        EXPECT_EQ(Profiles({action, "Nowhere"}), "1 ") << action;
    EXPECT_EQ(Profiles({"save", " "}), "1 ");
    const std::vector<std::vector<std::string>> wrongCalls{{},
                                                           {"save"},
                                                           {"load", "--default", "Home"},
                                                           {"delete", "Home", "--all"},
                                                           {"save", "--default", "--as-default"},
                                                           {"load", "Home", "--set", "General\\Wallpaper=x"}};
    for (const auto& wrong : wrongCalls)
        EXPECT_EQ(Profiles(wrong), "2 ");
    EXPECT_EQ(Profiles({"list"}), "1  Home\n");
}

TEST_F(ProfilesCommandTest, FinishesADeleteThatWasBrokenOff) {
    for (const char* name : {"a", "b", "c"}) {
        SetWeek(name);
        Profiles({"save", name});
    }
    {
        std::string why;
        const auto store = CreateStore(why);
        RegWriteValue(*store, "", Hive::CurrentUser, ProfileKey("tmp") + "\\General", key_access::All,
                      "Week name", "live");
        RegWriteValue(*store, "", Hive::CurrentUser, ProfileKey("tmp"), key_access::All, "Filling", 2);
        RegDeleteTree(*store, "", Hive::CurrentUser, ProfileKey(2));
    }
    EXPECT_EQ(Profiles({"default", "a"}), "");
    EXPECT_EQ(Profiles({"list"}), "1  a  (default)\n2  c\n");
    EXPECT_EQ(Week(), "live\n");
    EXPECT_EQ(Profiles({"load", "c"}), "");
    EXPECT_EQ(Week(), "c\n");
}

} // namespace
} // namespace quorvane::cli
