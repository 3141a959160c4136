#include "config/profiles.h"

#include "config/reg_file.h"
#include "config/registry.h"
#include "config/schema.h"
#include "platform/memory/memory_platform.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

class ProfilesTest : public testing::Test {
  protected:
    ProfilesTest() {
        machine_.clock.SetNow({2026, 3, 1, 9, 0, 0, 0});
        ReadRecord(settings_, context_);
        settings_.FIRST_RUN = false;
    }

    // Saves a profile that is told by its texts and by its lists.
    std::int32_t Save(const std::string& name, bool isDefault = false) {
        settings_.Week_Str_Name = name;
        settings_.Notes.Clear();
        settings_.Notes.Add({1, name, 0, 0});
        return SaveProfile({name, "of " + name, isDefault}, settings_, context_);
    }
    std::string Exported(const std::string& key) {
        return ExportRegFile(machine_.store, key, RegEncoding::Utf8);
    }
    bool IsThere(const std::string& key) {
        std::vector<std::string> names;
        return machine_.store.SubKeys({"", Hive::CurrentUser, key}, names) == store_error::None;
    }
    std::string Names() const {
        std::string names;
        for (const SystemProfile& profile : settings_.System_Profiles)
            names += profile.Name + (profile.Default ? "* " : " ");
        return names;
    }

    MemoryPlatform machine_;
    SettingsContext context_{machine_.store, machine_.files, machine_.clock, {15000, 12000}};
    GlobalRecord settings_;
};

TEST_F(ProfilesTest, ANameIsSavedOnceAndKeepsItsSpelling) {
    EXPECT_EQ(Save("Home", true), 1);
    machine_.clock.SetNow({2026, 3, 2, 9, 0, 0, 0});
    EXPECT_EQ(Save("Office", true), 2);
    EXPECT_EQ(Save(" HOME "), 1);
    EXPECT_EQ(Names(), "Home Office* ") << "one default at most";
    EXPECT_EQ(settings_.System_Profiles[1],
              (SystemProfile{"Home", "of  HOME ", "2026-03-01 9:00:00", "2026-03-02 9:00:00",
                             "2026-03-02 9:00:00", 0, 1}));
    EXPECT_EQ(Exported(ProfileKey(1)).find("\"Version\""), std::string::npos);
    EXPECT_FALSE(IsThere(ProfileKey(1) + "\\Profiles"));
}

TEST_F(ProfilesTest, AProfileIsReadOverTheLiveSettingsWhole) {
    Save("Home");
    settings_.Week_Str_Name.clear();
    SaveProfile({"Plain"}, settings_, context_);
    const Settings saved = settings_;
    settings_.Week_Str_Name = "live";
    settings_.CaptureFileName = "live.bmp";
    settings_.Notes.Clear();
    ReadProfile(ProfileKey(2), settings_, context_);
    EXPECT_TRUE(saved == settings_) << "a text that is stored empty is empty";
    ReadProfile(ProfileKey(DefaultProfile), settings_, context_);
    EXPECT_EQ(settings_.Week_Str_Name, "Week #") << "one that was never saved resets the settings";
    EXPECT_EQ(settings_.Sys_Profiles_Count(), 2) << "the list is no part of a profile";
}

TEST_F(ProfilesTest, DeletingTheMiddleOfThreeMovesTheLastOneWithAllItHolds) {
    for (const char* name : {"a", "b", "c"})
        Save(name, *name == 'c');
    settings_.Week_Str_Name = "live";
    Settings before = settings_;
    Settings third = settings_;
    ReadProfile(ProfileKey(3), third, context_);
    DeleteProfile(2, settings_, context_);
    EXPECT_EQ(Names(), "a c* ");
    EXPECT_EQ(settings_.System_Profiles[2].Id, 2);
    EXPECT_FALSE(IsThere(ProfileKey(3)) || IsThere(ProfileKey("tmp")));
    before.System_Profiles = settings_.System_Profiles;
    EXPECT_TRUE(before == settings_) << "the live settings are the same";
    Settings stored;
    ReadRecord(stored, context_);
    EXPECT_EQ(stored.System_Profiles, settings_.System_Profiles) << "the list is stored at once";
    ReadProfile(ProfileKey(2), settings_, context_);
    third.System_Profiles = settings_.System_Profiles;
    EXPECT_TRUE(third == settings_);
    DeleteProfile(1, settings_, context_);
    DeleteProfile(1, settings_, context_);
    EXPECT_EQ(Names(), "");
}

// What a process that was killed leaves: nothing is written after a number of changes.
TEST_F(ProfilesTest, ADeleteBrokenOffAnywhereIsFinishedByTheNextStart) {
    struct Killed {};
    for (int changes = 0, unfinished = 0;; changes += 5) {
        machine_.store = {};
        settings_ = {};
        ReadRecord(settings_, context_);
        for (const char* name : {"a", "b", "c"})
            Save(name, *name == 'b');
        settings_.Week_Str_Name = "stored";
        WriteRecord(settings_, context_);
        settings_.Week_Str_Name = "live";
        int left = changes;
        machine_.store.refuse = [&left](const StoreKey&, std::string_view) {
            return left-- > 0 ? store_error::None : throw Killed();
        };
        bool whole = true;
        try {
            DeleteProfile(1, settings_, context_);
        } catch (const Killed&) {
            whole = false;
        }
        machine_.store.refuse = nullptr;
        settings_ = {};
        ReadRecord(settings_, context_);
        const bool finished = FinishDelete(settings_, context_);
        unfinished += finished ? 1 : 0;
        const bool moved = Names() == "b* c ";
        ASSERT_EQ(Names(), moved ? "b* c " : "a b* c ") << changes;
        ASSERT_TRUE(moved || !(whole || finished)) << changes;
        EXPECT_EQ(settings_.Week_Str_Name, finished ? "live" : "stored") << changes;
        EXPECT_FALSE(IsThere(ProfileKey("tmp")));
        EXPECT_EQ(IsThere(ProfileKey(3)), !moved) << changes;
        Settings stored;
        ReadRecord(stored, context_);
        ASSERT_TRUE(stored == settings_) << changes;
        for (const SystemProfile& profile : stored.System_Profiles) {
            Settings held;
            ReadProfile(ProfileKey(profile.Id), held, context_);
            ASSERT_EQ(held.Week_Str_Name, profile.Name) << changes;
            ASSERT_EQ(held.Notes[1].Text, profile.Name) << changes;
            EXPECT_EQ(profile.Description, "of " + profile.Name);
        }
        if (whole) {
            EXPECT_GT(unfinished, 0);
            break;
        }
    }
}

TEST_F(ProfilesTest, TheProfileInUseFollowsTheSettings) {
    Save("a");
    Save("b");
    SaveCurrentProfile(settings_, context_);
    LoadProfile(1, settings_, context_);
    EXPECT_EQ(settings_.Current_System_Profile, settings_.System_Profiles[1]);
    EXPECT_TRUE(settings_.RESCANWALLPAPERSOURCESNOW);
    settings_.Week_Str_Name = "changed";
    machine_.clock.SetNow({2026, 3, 2, 9, 0, 0, 0});
    SaveCurrentProfile(settings_, context_);
    EXPECT_EQ(settings_.System_Profiles[1].ModificationDate, "2026-03-02 9:00:00");
    LoadProfile(2, settings_, context_);
    EXPECT_EQ(settings_.Week_Str_Name, "b") << "only the one in use was written";
    LoadProfile(1, settings_, context_);
    EXPECT_EQ(settings_.Week_Str_Name, "changed");
    DeleteProfile(1, settings_, context_);
    EXPECT_EQ(settings_.Current_System_Profile.Name, DefaultProfile);
}

TEST_F(ProfilesTest, DeletingAllLeavesTheUnnumberedOne) {
    WriteProfile(ProfileKey(DefaultProfile), settings_, context_);
    Save("a");
    Save("b");
    EXPECT_EQ(DeleteAllProfiles(settings_, context_), 0);
    EXPECT_EQ(Names(), "");
    EXPECT_TRUE(IsThere(ProfileKey(DefaultProfile)));
    EXPECT_FALSE(IsThere(ProfileKey(1)) || IsThere(ProfileKey(2)));
    Save("c");
    machine_.store.refuse = [](const StoreKey&, std::string_view) { return store_error::AccessDenied; };
    EXPECT_EQ(DeleteAllProfiles(settings_, context_), store_error::AccessDenied);
}

} // namespace
} // namespace quorvane
