#include "config/settings.h"

#include "config/mend_lists.h"
#include "config/reg_file.h"
#include "config/registry.h"
#include "config/schema_rows.h"
#include "config/schema_walk.h"
#include "core/text.h"
#include "platform/memory/memory_platform.h"
#include "tests/support/stored_tree.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace quorvane {
namespace {

using Lines = std::vector<std::string>;

// A text of this folder with the line ends of a registry text file.
std::string Golden(const char* name) {
    std::ifstream file(std::filesystem::path(QUORVANE_TEST_TEXTS) / name);
    return Replace(std::string(std::istreambuf_iterator<char>(file), {}), "\n", "\r\n");
}

class SettingsTest : public testing::Test {
  protected:
    SettingsTest() {
        machine.files.writableDirectory = "/home/ann/data";
        machine.clock.SetNow({2026, 3, 1, 9, 8, 7, 0});
        context.events.ShowErrorDialog = [this](std::int32_t number, const std::string& text) {
            errors.push_back(std::to_string(number) + " " + text);
        };
        context.events.Progress = [this](int bar) { bars.push_back(bar); };
    }

    Settings Read() {
        Settings settings;
        ReadRecord(settings, context);
        return settings;
    }
    void Write(Settings settings) { WriteRecord(settings, context); }
    // The tree without what names the program's version.
    std::string Tree() {
        for (const char* name : {"Version", "Build"})
            RegDeleteValue(machine.store, "", Hive::CurrentUser, RootKey, key_access::All, name);
        return ExportRegFile(machine.store, RootKey, RegEncoding::Utf8);
    }
    void Clear() { RegDeleteTree(machine.store, "", Hive::CurrentUser, RootKey); }

    static std::string Key(const std::string& group) { return std::string(RootKey) + "\\" + group; }
    template<typename Value>
    void Put(const std::string& group, std::string_view name, const Value& value) {
        test::PutStored(machine.store, group, name, value);
    }
    void PutDecimalSign(const char* sign) {
        RegWriteValue(machine.store, "", Hive::CurrentUser, "Control Panel\\International", key_access::All,
                      "sDecimal", sign);
    }
    std::string TextAt(const std::string& key, std::string_view name, Hive hive = Hive::CurrentUser) {
        std::string value = "(none)";
        RegReadValue(machine.store, "", hive, key, key_access::All, name, value);
        return value;
    }

    MemoryPlatform machine;
    SettingsContext context{machine.store, machine.files, machine.clock, {1366 * 15, 768 * 15}};
    Lines errors;
    std::vector<int> bars;
};

TEST_F(SettingsTest, AnEmptyTreeGivesTheDefaults) {
    const Settings settings = Read();
    EXPECT_TRUE(settings.FIRST_RUN);
    Write(settings);
    EXPECT_EQ(Tree(), Golden("defaults.reg"));
    EXPECT_TRUE(errors.empty());
}

TEST_F(SettingsTest, DefaultsKnowOtherValuesTheNumberTheScreenAndTheDate) {
    Put("General", "Wallpaper change interval", 77);
    Put("General", "Rescan wallpaper sources interval", 0);
    Put("Notes", "Counter", 2);
    Put("General", "Alarms counter", 3);
    Put("Profiles", "Profiles counter", 1);
    const Settings settings = Read();
    EXPECT_EQ(settings.ChangeWallpaperIntervalCurrent, 77);
    EXPECT_EQ(settings.RescanWallpaperSrcIntervalCurrent, 0);
    EXPECT_EQ(settings.Notes[2], (Note{0, "", 5122, 2880})) << "rounded half to even";
    EXPECT_EQ(settings.AlarmRecords[3].Name, "Alarm #3");
    EXPECT_EQ(settings.System_Profiles[1].CreationDate, "2026-03-01 9:08:07");
    EXPECT_EQ(settings.System_Profiles[1].Id, 1);
}

// Every list with entries, and of each key some values that are no defaults: read and written as they stand.
TEST_F(SettingsTest, AFilledTreeIsReadAndWrittenInItsExactForms) {
    PutDecimalSign(",");
    const std::string filled = Golden("filled_tree.reg");
    ImportRegFile(filled, machine.store, RegScope::Program);
    const Settings settings = Read();
    EXPECT_EQ(settings.CaptionFont, (FontRecord{false, true, 9.75F, true, true, "Serif"}));
    EXPECT_EQ(settings.HOT_KEY_NewNote, (HotKeyRecord{true, 2, 3, 1, 44}));
    EXPECT_EQ(settings.AlarmRecords[1].ExecCount, alarm_count::Infinite);
    EXPECT_EQ(settings.AlarmRecords[1].Programs[2], "third");
    Clear();
    Write(settings);
    const std::string written = Tree();
    ImportRegFile(filled, machine.store, RegScope::Program);
    EXPECT_EQ(Tree(), written);
    PutDecimalSign(".");
    Clear();
    Write(settings);
    EXPECT_TRUE(Read() == settings);
    EXPECT_TRUE(errors.empty());
}

// The names and fields of a golden text cannot tell that two rows share one.
TEST_F(SettingsTest, TheSchemaHasNoContradictions) {
    std::set<std::string> names;
    std::set<const void*> fields;
    Settings settings;
    const auto addressOf = [](FieldRef field) {
        return std::visit([](auto* value) -> const void* { return value; }, field);
    };
    for (const auto& section : SettingsSchema()) {
        const std::int32_t entry = section.list ? section.list->first : 0;
        if (section.list && section.list->resize) section.list->resize(settings, 1);
        const auto visit = [&](const auto& row, const std::string& key, const std::string& name, ValueAt at) {
            EXPECT_TRUE(names.insert(LowerCase(key + "\\" + name)).second) << name;
            EXPECT_TRUE(fields.insert(addressOf(row.field(settings, at))).second) << name;
            EXPECT_EQ(FindSetting(key.substr(1), name), row.form) << key << "\\" << name;
        };
        VisitEntry(section, settings, entry, "", visit);
    }
}

TEST_F(SettingsTest, SettingsAreFoundByTheirNamesAlone) {
    const struct {
        const char *key, *name;
        StoredForm form;
    } there[] = {
        {"wallpaper SOURCES", "wallpaper source #12 PATTERN", StoredForm::Text},
        {"Custom Day(s)", "Color #366", StoredForm::ColorText},
        {"General", "Alarms counter", StoredForm::CountText},
        {"Alarms", "10 - Program #32", StoredForm::Text},
        {"Hotkeys", "Event #0 TTL", StoredForm::Integer},
        {"Profiles\\3\\Fonts", "Caption font size", StoredForm::LocaleSingle},
        {"Profiles\\Default\\Notes", "Note #1", StoredForm::Text},
    };
    for (const auto& row : there)
        EXPECT_EQ(FindSetting(row.key, row.name), row.form) << row.name;
    for (const char* name : {"Wallpaper source #", "Wallpaper source #0", "Wallpaper source #01",
                             "Wallpaper source #x", "Wallpaper source #1 patter", "Favorites source #1"}) {
        EXPECT_FALSE(FindSetting("Wallpaper sources", name)) << name;
    }
    EXPECT_FALSE(FindSetting("Colors", "Wallpaper"));
    EXPECT_FALSE(FindSetting("Hotkeys", "Event #00 TTL"));
    EXPECT_FALSE(FindSetting("Profiles\\tmp\\General", "Wallpaper"));
    EXPECT_FALSE(FindSetting("Profiles\\1\\Profiles\\1", "Name"));
}

TEST_F(SettingsTest, OddValuesAreReadAsFarAsTheyGo) {
    Put("General", "Favorites probability", "0,5");
    Put("General", "Scan time", "-5");
    Put("General", "Longitude", "37,6");
    Put("General", "Latitude", " -12.5 S");
    Put("General", "Show week number", 7);
    Put("Fonts", "Caption font size", "large");
    Put("Fonts", "Calendar font size", "1e39");
    Put("Screen capture", "HK_DC_VKEY_Array_ID", 87);
    Put("Screen capture", "HK_TW_VKEY_Array_ID", -1);
    Put("Hotkeys", "HK_NewNote_VKEY_Array_ID", 86);
    Put("Custom Day(s)", "Counter", 3);
    Put("Custom Day(s)", "Day #1", "31");
    Put("Custom Day(s)", "Day #2", "40000");
    Put("Custom Day(s)", "Month #2", "x");
    Put("Custom Day(s)", "Color #1", "");
    Put("Custom Day(s)", "Color #2", "255 red");
    Put("General", "Alarms counter", 3); // written as a text, read as either
    Put("Alarms", "1 - Exec count", 7);
    Put("Alarms", "1 - Alarm icon index", 70000);
    Put("Alarms", "1 - Program counter", 1000);
    Put("Alarms", "1 - Program #32", "last");
    Put("Alarms", "2 - Program counter", -1);
    Put("Alarms", "2 - Name", "");
    Put("Alarms", "3 - Exec count", "soon");
    const Settings settings = Read();
    EXPECT_EQ(settings.Favorites_Probability, 0.5);
    EXPECT_EQ(settings.Scan_Time, 0);
    EXPECT_EQ(settings.Longitude, 37);
    EXPECT_EQ(settings.Latitude, -12.5);
    EXPECT_TRUE(settings.ShowWeekNumbers);
    EXPECT_EQ(settings.CaptionFont.Size, 18);
    EXPECT_EQ(settings.CalendarFont.Size, 14);
    EXPECT_EQ(settings.HOT_KEY_DesktopCapture.VKey, 8);
    EXPECT_EQ(settings.HOT_KEY_TopWindowCapture.VKey, 8);
    EXPECT_EQ(settings.HOT_KEY_NewNote.VKey, 145);
    EXPECT_EQ(settings.Custom_Days[1], (CustomDay{31, 1, 0}));
    EXPECT_EQ(settings.Custom_Days[2], (CustomDay{1, 1, 255}));
    EXPECT_EQ(settings.Custom_Days[3], (CustomDay{1, 1, 0}));
    ASSERT_EQ(settings.AlarmRecords_Count(), 3);
    EXPECT_EQ(settings.AlarmRecords[1].ExecCount, 7);
    EXPECT_EQ(settings.AlarmRecords[1].IconIndex, 0);
    EXPECT_EQ(settings.AlarmRecords[1].Programs[32], "last");
    EXPECT_EQ(settings.AlarmRecords[2].Name, "") << "stored empty";
    EXPECT_EQ(settings.AlarmRecords[3].ExecCount, 0);
    Put("General", "Alarms counter", "1.9 or so");
    EXPECT_EQ(Read().AlarmRecords_Count(), 1);
}

TEST_F(SettingsTest, AnEmptyTextKeepsThePreset) {
    Put("Screen capture", "Capture file template", "");
    Put("General", "Last selected wallpaper", "");
    Put("General", "Week name", "");
    Put("Hotkeys", "Event #2 CMD", "");
    GlobalRecord record;
    PresetRecord(record, machine.files);
    ReadRecord(record, context);
    EXPECT_EQ(record.CaptureFileName, "YYYYMMDDHHNNSS.BMP");
    EXPECT_EQ(record.LastSelectedWallpaper, "");
    EXPECT_EQ(record.Week_Str_Name, "");
    record.CaptureFileName = record.Week_Str_Name = record.ScreenEvents[2].CMD = "somebody else's";
    PresetTexts(record, machine.files);
    ReadRecord(record, context);
    EXPECT_EQ(record.CaptureFileName, "YYYYMMDDHHNNSS.BMP");
    EXPECT_EQ(record.Week_Str_Name + record.ScreenEvents[2].CMD, "");
}

TEST_F(SettingsTest, OneSettingIsReadAheadOfTheOthers) {
    Settings settings;
    settings.CurrentLanguage = "EN";
    ReadSettingOf(settings, &settings.CurrentLanguage, machine.store);
    EXPECT_EQ(settings.CurrentLanguage, "EN");
    Put("General", "Language", "DE");
    Put("General", "Week name", "Woche");
    ReadSettingOf(settings, &settings.CurrentLanguage, machine.store);
    EXPECT_EQ(settings.CurrentLanguage, "DE");
    EXPECT_EQ(settings.Week_Str_Name, "");
}

TEST_F(SettingsTest, MissingEntriesOfTheSourceListsAreReported) {
    Put("Wallpaper sources", "Wallpaper sources counter", 1);
    Put("Wallpaper sources", "Wallpaper source #1", "/a");
    Put("Favorites", "Favorites sources counter", 2);
    Put("Favorites", "Favorites source #2", "/f");
    Put("Blacklist", "Blacklisted sources counter", -5);
    Settings settings;
    settings.BlacklistedSources.Add({"/old", true});
    ReadRecord(settings, context);
    // The source lacks its flag, pattern and level, the first favourite its path.
    EXPECT_EQ(errors, Lines(4, "2 call: Read registry, Wallpaper sources"));
    EXPECT_EQ(settings.WallpaperSources[1], (WallpaperSource{"/a", false, "", ""}));
    EXPECT_EQ(settings.FavoritesSources[2], (ListedFile{"/f", false}));
    EXPECT_EQ(settings.BlacklistedSrcCnt(), 0);
}

TEST_F(SettingsTest, WhatDamageLeftOfAListClosesUp) {
    Settings whole;
    for (const char* path : {"/a", "/b", "/c"}) {
        whole.WallpaperSources.Add({path, true, "*.jpg", "inf"});
        whole.FavoritesSources.Add({path, true});
        whole.BlacklistedSources.Add({path, true});
    }
    Write(whole);
    const auto lose = [this](const std::string& group, const std::string& name) {
        RegDeleteValue(machine.store, "", Hive::CurrentUser, Key(group), key_access::All, name);
    };
    lose("Wallpaper sources", "Wallpaper source #1");
    lose("Wallpaper sources", "Wallpaper source #2 pattern");
    lose("Favorites", "Is active favorites source #3"); // which has a default
    lose("Blacklist", "Blacklisted sources counter");
    lose("Blacklist", "Blacklisted source #3");
    MendLists(machine.store);
    const Settings mended = Read();
    EXPECT_TRUE(errors.empty());
    EXPECT_EQ(mended.WallpaperSrcCnt(), 2);
    EXPECT_EQ(mended.WallpaperSources[1], (WallpaperSource{"/b", true, "", "inf"}));
    EXPECT_EQ(mended.WallpaperSources[2], whole.WallpaperSources[3]);
    EXPECT_EQ(mended.FavoritesSrcCnt(), 3);
    EXPECT_EQ(mended.FavoritesSources[3], (ListedFile{"/c", false}));
    EXPECT_EQ(mended.BlacklistedSrcCnt(), 2);
}

TEST_F(SettingsTest, AnEndAnywhereInTheWritingLeavesATreeThatCanBeRead) {
    ImportRegFile(Golden("filled_tree.reg"), machine.store, RegScope::Program);
    Settings longer = Read();
    longer.WallpaperSources.Add({"/new", true, "*.png", "0"});
    longer.FavoritesSources.Add({"/new", true});
    longer.BlacklistedSources.Add({"/new", true});
    int left = 0;
    machine.store.refuse = [&left](const StoreKey&, std::string_view) {
        return left-- > 0 ? store_error::None : store_error::WriteFault;
    };
    for (int writes = 0; left >= 0 || writes == 0; ++writes) {
        left = writes;
        context.events.ShowErrorDialog = [](std::int32_t, const std::string&) { throw ProcessEnd{}; };
        try {
            Write(longer);
        } catch (const ProcessEnd&) {
        }
        const bool finished = left >= 0;
        context.events.ShowErrorDialog = [&](std::int32_t, const std::string& text) {
            ADD_FAILURE() << text << " after " << writes << " writes";
        };
        const Settings read = Read();
        EXPECT_TRUE(!finished || read == longer);
        if (finished) break;
    }
}

TEST_F(SettingsTest, AShorterListLeavesItsOldValuesAndAnothersValuesStay) {
    Put("Favorites", "Favorites source #2", "/2");
    Put("Profiles\\1\\General", "Wallpaper", "/p.bmp");
    Put("Extras", "Of a later version", 1);
    Write(Read());
    EXPECT_EQ(TextAt(Key("Favorites"), "Favorites source #2"), "/2");
    EXPECT_EQ(TextAt(Key("Profiles\\1\\General"), "Wallpaper"), "/p.bmp");
    EXPECT_EQ(Read().FavoritesSrcCnt(), 0);
}

TEST_F(SettingsTest, AnExtraThatNobodySetsLeavesNoTrace) {
    Write(Read());
    EXPECT_EQ(Tree().find("Extras"), std::string::npos);
    Settings settings = Read();
    settings.KeepClearOfPanels = true;
    Write(settings);
    EXPECT_TRUE(Read().KeepClearOfPanels);
    settings.KeepClearOfPanels = false;
    Write(settings);
    EXPECT_FALSE(Read().KeepClearOfPanels) << "taken back";
}

TEST_F(SettingsTest, EventsRunAfterEachAlarmAndMayChangeTheList) {
    GlobalRecord record;
    record.AlarmRecords.Resize(3);
    int turns = 0;
    context.events.LetEventsRun = [&] {
        if (++turns == 1) record.AlarmRecords.Remove(3);
    };
    WriteSettings(record, context, machine.session);
    EXPECT_EQ(turns, 2);
    EXPECT_EQ(TextAt(Key("General"), "Alarms counter"), "2");
}

TEST_F(SettingsTest, TheSplashBarMovesWhileTheProgramStarts) {
    GlobalRecord record;
    ReadSettings(record, context, machine.prompts);
    EXPECT_TRUE(bars.empty());
    record.Main_Exec = true;
    ReadSettings(record, context, machine.prompts);
    EXPECT_EQ(bars, (std::vector<int>{20, 30, 40, 50, 55, 60, 65, 70, 72, 75}));
}

TEST_F(SettingsTest, PublishesPathAndStyle) {
    const std::string desktop = "Control Panel\\Desktop";
    const char* styles[] = {"0", "1", "2", "2", "2", "0"};
    for (int position = 0; position < 6; ++position)
        EXPECT_EQ(WallpaperStyle(position), styles[position]);
    EXPECT_EQ(WallpaperStyle(-1), "0");
    Put("General", "Wallpaper", "/w.bmp");
    Put("General", "Wallpaper position", 1);
    GlobalRecord record;
    ReadSettings(record, context, machine.prompts);
    EXPECT_EQ(TextAt(desktop, "Wallpaper"), "/w.bmp");
    EXPECT_EQ(TextAt(desktop, "WallpaperStyle"), "1");
    EXPECT_EQ(TextAt(".DEFAULT\\" + desktop, "Wallpaper", Hive::Users), "(none)");
    record.SyncWithSystemDefaultWallpaper = true;
    PublishWallpaper(record, machine.store, machine.prompts, context.events);
    EXPECT_EQ(TextAt(".DEFAULT\\" + desktop, "Wallpaper", Hive::Users), "/w.bmp");
    EXPECT_EQ(TextAt(".DEFAULT\\" + desktop, "WallpaperStyle", Hive::Users), "1");
    EXPECT_TRUE(errors.empty() && machine.prompts.asked.empty());

    machine.store.refuse = [](const StoreKey&, std::string_view) { return store_error::AccessDenied; };
    PublishWallpaper(record, machine.store, machine.prompts, context.events);
    EXPECT_EQ(errors, Lines(2, "5 Unable set User wallpaper properties!"));
    Lines shown;
    for (const auto& box : machine.prompts.asked)
        shown.push_back(box.title + "/" + std::to_string(box.style) + "/" + box.text);
    const std::string rights = ", please check that you have an administrative rights!";
    EXPECT_EQ(shown, (Lines{"Error!/16/Unable set system wallpaper" + rights,
                            "Error!/16/Unable set system wallpaper style" + rights}));
}

TEST_F(SettingsTest, SettlesTheStartAtLogOn) {
    GlobalRecord record;
    const auto write = [&](bool autostart, bool win9x) {
        record.AutoStartApplication = autostart;
        record.RunOnWin9x = win9x;
        WriteSettings(record, context, machine.session);
    };
    write(true, false);
    write(true, true);
    write(false, true);
    EXPECT_EQ(machine.calls.lines, (Lines{"session.SetAutostart on", "session.SetAutostart on /win9x",
                                          "session.SetAutostart off /win9x"}));
    machine.session.autostartError = store_error::AccessDenied;
    write(false, false);
    EXPECT_TRUE(errors.empty());
    TextAt("no such key", "the number of an earlier failure is not this one's");
    write(true, false);
    EXPECT_EQ(errors, Lines{"5 call: Write registry"});
}

TEST_F(SettingsTest, EveryRefusedWriteIsShownAndTheRestIsWritten) {
    machine.store.refuse = [](const StoreKey&, std::string_view name) {
        return name == "Week name" || name == "Longitude" ? store_error::WriteFault : store_error::None;
    };
    Write({});
    EXPECT_EQ(errors, Lines(2, "29 call: Write registry"));
    EXPECT_EQ(TextAt(Key("General"), "Week name"), "(none)");
    EXPECT_EQ(TextAt(Key("General"), "Latitude"), " 0");
}

// Another record than the settings, with keys below its own and numbers of single precision.
TEST_F(SettingsTest, OtherRecordsAreDeclaredByTheSameParts) {
    struct Window {
        std::int32_t tools = 0;
        float left = 0;
    };
    const Schema<Window> schema{
        {.key = "Clock\\Kernel", .rows = {{"Tools", StoredForm::Integer, Field(&Window::tools), Is(1)}}},
        {.key = "Clock\\Position",
         .rows = {{"Left", StoredForm::LocaleSingle, Field(&Window::left), Is(200.0)}}}};
    Window window;
    const WalkPlace place{machine.store, std::string(RootKey), ","};
    SchemaReader<Window> reader(window, place, {});
    for (const auto& section : schema)
        reader.Read(section);
    EXPECT_EQ(window.left, 200);
    window.left = -7.5F;
    SchemaWriter<Window> writer(window, place);
    for (const auto& section : schema)
        writer.Write(section);
    writer.End();
    EXPECT_EQ(TextAt(Key("Clock\\Position"), "Left"), "-7,5");
}

} // namespace
} // namespace quorvane
