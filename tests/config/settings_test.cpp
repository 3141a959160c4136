#include "config/settings.h"

#include "config/registry.h"
#include "config/schema.h"
#include "core/text.h"
#include "platform/memory/memory_platform.h"
#include "platform/prompts.h"

#include <gtest/gtest.h>

#include <set>

namespace quorvane {
namespace {

// Keeps what was shown; every other question is a failure.
class ShownMessages : public Prompts {
  public:
    Answer Message(const std::string& text, const std::string& title, int style) override {
        shown.push_back(title + "/" + std::to_string(style) + "/" + text);
        return Answer::Ok;
    }
    std::optional<std::string> Line(const std::string&, const std::string&, const std::string&) override {
        ADD_FAILURE();
        return {};
    }
    std::optional<std::string> File(FileQuestion&) override {
        ADD_FAILURE();
        return {};
    }
    std::optional<std::string> Folder(const std::string&, const std::string&) override {
        ADD_FAILURE();
        return {};
    }
    std::optional<FontSpec> Font(const FontSpec&) override {
        ADD_FAILURE();
        return {};
    }
    std::optional<Color> PickColor(Color) override {
        ADD_FAILURE();
        return {};
    }
    std::vector<std::string> shown;
};

class SettingsTest : public testing::Test {
  protected:
    SettingsTest() {
        machine.files.writableDirectory = "/home/ann/data";
        events.ShowErrorDialog = [this](std::int32_t number, const std::string& text) {
            errors.push_back(std::to_string(number) + " " + text);
        };
        events.Progress = [this](int bar) { bars.push_back(bar); };
    }

    void Read(GlobalRecord& record) { ReadRecord(record, machine.store, machine.files, events); }
    void Write(GlobalRecord& record) { WriteSettings(record, machine.store, machine.session, events); }

    static std::string Key(const std::string& group) { return std::string(RootKey) + "\\" + group; }
    template<typename Value>
    void Put(const std::string& group, std::string_view name, const Value& value) {
        RegWriteValue(machine.store, "", Hive::CurrentUser, Key(group), key_access::All, name, value);
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
    std::int32_t IntegerAt(const std::string& group, std::string_view name) {
        std::int32_t value = -4711;
        RegReadValue(machine.store, "", Hive::CurrentUser, Key(group), key_access::All, name, value);
        return value;
    }

    MemoryPlatform machine;
    ShownMessages prompts;
    SettingsEvents events;
    std::vector<std::string> errors;
    std::vector<int> bars;
};

TEST_F(SettingsTest, AnEmptyTreeGivesTheDefaults) {
    GlobalRecord record;
    PresetRecord(record, machine.files);
    Read(record);
    EXPECT_TRUE(errors.empty());
    EXPECT_TRUE(record.FIRST_RUN);
    EXPECT_EQ(record.Holiday_Color, 200 + 50 * 256 + 70 * 65536);
    EXPECT_EQ(record.Moon_Ephemeredes_Color, 64 * 256);
    EXPECT_EQ(record.CaptionFont, (FontRecord{true, false, 18, false, false, "Microsoft Sans Serif"}));
    EXPECT_EQ(record.CalendarFont, (FontRecord{false, false, 14, false, false, "Microsoft Sans Serif"}));
    EXPECT_EQ(record.EphemeredesFont, record.CalendarFont);
    EXPECT_EQ(record.HOT_KEY_DesktopCapture, (HotKeyRecord{false, 0, 0, 0, 8}));
    EXPECT_EQ(record.HOT_KEY_ChangeWallpaper, (HotKeyRecord{false, 0, 0, 0, 8}));
    EXPECT_EQ(record.CaptureDirectory, "/home/ann/data/");
    EXPECT_EQ(record.CaptureFileName, "YYYYMMDDHHNNSS.BMP");
    EXPECT_EQ(record.User_Wallpaper_Directory, "/home/ann/data/Wallpaper.bmp");
    EXPECT_EQ(record.Wallpaper, "/home/ann/data/Wallpaper.bmp");
    EXPECT_EQ(record.CurrentLanguage, "EN");
    EXPECT_EQ(record.Scan_Time, 10);
    EXPECT_EQ(record.Favorites_Probability, 0.75);
    EXPECT_TRUE(record.ShowWeekNumbers);
    EXPECT_TRUE(record.RescanWallpaperSources);
    EXPECT_TRUE(record.PaintCalendar);
    EXPECT_FALSE(record.UseFavorites);
    EXPECT_EQ(record.Calendar_Position, 2);
    EXPECT_EQ(record.ChangeWallpaperIntervalCurrent, 300);
    EXPECT_EQ(record.RescanWallpaperSrcIntervalCurrent, 10);
    EXPECT_EQ(record.WallpaperPosition, 4);
    EXPECT_EQ(record.WallpaperResolution, 5);
    EXPECT_EQ(record.GradientStyle, 1);
    EXPECT_EQ(record.RandomColorLimitG, 255);
    EXPECT_EQ(record.RandomColorLimitMinG, 0);
    EXPECT_EQ(record.Week_Str_Name, "Week #");
    EXPECT_EQ(record.Longitude, 37.63388889);
    EXPECT_EQ(record.Latitude, 54.17916667);
    EXPECT_EQ(record.Calculate_Ephemeredes + record.CalculateSunEphemeredes +
                  record.CalculateMoonEphemeredes + record.ShowAllWeekNumbers,
              4);
    EXPECT_EQ(record.SelectProfileTimeout, 30);
    EXPECT_EQ(record.WallpaperSrcCnt() + record.FavoritesSrcCnt() + record.BlacklistedSrcCnt() +
                  record.CustomDayCont(),
              0);
}

TEST_F(SettingsTest, TheCountdownsDefaultToTheirLengths) {
    Put("General", "Wallpaper change interval", 77);
    Put("General", "Rescan wallpaper sources interval", 0);
    GlobalRecord record;
    Read(record);
    EXPECT_EQ(record.ChangeWallpaperIntervalCurrent, 77);
    EXPECT_EQ(record.RescanWallpaperSrcIntervalCurrent, 0);
}

// A value other than the default for each kind of field, told apart by `number`.
void Distinguish(StoredForm form, FieldRef field, int number) {
    if (form == StoredForm::KeyIndex) {
        *std::get<std::int32_t*>(field) = 65 + number % 26;
    } else if (auto* text = std::get_if<std::string*>(&field)) {
        **text = "text " + std::to_string(number);
    } else if (auto* flag = std::get_if<bool*>(&field)) {
        **flag = !**flag;
    } else if (auto* small = std::get_if<std::int16_t*>(&field)) {
        **small = static_cast<std::int16_t>(-number);
    } else if (auto* integer = std::get_if<std::int32_t*>(&field)) {
        **integer = 1000 + number;
    } else if (auto* single = std::get_if<float*>(&field)) {
        **single = 8.25F + static_cast<float>(number);
    } else {
        *std::get<double*>(field) = 0.0625 + number;
    }
}

std::string FieldText(FieldRef field) {
    return std::visit(
        [](auto* value) {
            if constexpr (std::is_same_v<decltype(value), std::string*>)
                return *value;
            else
                return std::to_string(*value);
        },
        field);
}

TEST_F(SettingsTest, EveryRowIsWrittenAndReadBackUnderAnyDecimalSign) {
    const Schema& schema = SettingsSchema();
    for (const char* sign : {".", ","}) {
        PutDecimalSign(sign);
        GlobalRecord written;
        Read(written);
        int number = 0;
        for (const SettingGroup* group : schema.Groups()) {
            for (const auto& row : group->rows)
                Distinguish(row.form, row.field(written), ++number);
        }
        schema.ForEachList([&](const auto& list) {
            auto& entries = written.*list.list;
            entries.Resize(3);
            for (auto& entry : entries) {
                for (const auto& row : list.rows)
                    Distinguish(row.form, row.field(entry), ++number);
            }
        });
        written.FIRST_RUN = false; // the one field that is not written as it stands
        Write(written);
        GlobalRecord read;
        Read(read);
        for (const SettingGroup* group : schema.Groups()) {
            for (const auto& row : group->rows) {
                EXPECT_EQ(FieldText(row.field(read)), FieldText(row.field(written))) << row.name;
            }
        }
        EXPECT_EQ(read.WallpaperSources, written.WallpaperSources);
        EXPECT_EQ(read.FavoritesSources, written.FavoritesSources);
        EXPECT_EQ(read.BlacklistedSources, written.BlacklistedSources);
        EXPECT_EQ(read.Custom_Days, written.Custom_Days);
        EXPECT_TRUE(errors.empty());
    }
}

TEST(Schema, HasNoGapsAndNoContradictions) {
    const Schema& schema = SettingsSchema();
    std::set<std::string> names;
    std::set<std::string> fields;
    GlobalRecord record;
    std::size_t rows = 0;
    for (const SettingGroup* group : schema.Groups()) {
        for (const auto& row : group->rows) {
            ++rows;
            EXPECT_TRUE(names.insert(LowerCase(group->key + "\\" + row.name)).second) << row.name;
            const FieldRef field = row.field(record);
            const void* address = std::visit([](auto* value) -> const void* { return value; }, field);
            EXPECT_TRUE(fields.insert(std::to_string(reinterpret_cast<std::uintptr_t>(address))).second)
                << row.name << " shares its field";
            EXPECT_EQ(FindSetting(group->key, row.name), row.form);
        }
    }
    EXPECT_EQ(rows, 14U + 3 * 6 + 5 * 5 + 2 + 1 + 46);
    EXPECT_EQ(FindSetting("wallpaper SOURCES", "wallpaper source #12 PATTERN"), StoredForm::Text);
    EXPECT_EQ(FindSetting("Wallpaper sources", "Is active wallpaper source #1"), StoredForm::BooleanText);
    EXPECT_EQ(FindSetting("Custom Day(s)", "Counter"), StoredForm::Integer);
    EXPECT_EQ(FindSetting("Custom Day(s)", "Color #366"), StoredForm::ColorText);
    for (const char* name : {"Wallpaper source #", "Wallpaper source #0", "Wallpaper source #01",
                             "Wallpaper source #x", "Wallpaper source #1 patter", "Favorites source #1"}) {
        EXPECT_FALSE(FindSetting("Wallpaper sources", name)) << name;
    }
    EXPECT_FALSE(FindSetting("Colors", "Wallpaper"));
}

TEST_F(SettingsTest, StoredFormsAreExact) {
    PutDecimalSign(",");
    GlobalRecord record;
    Read(record);
    record.HOT_KEY_NewNote = {true, 1, 0, 0, 44};
    record.HOT_KEY_TopWindowCapture.VKey = 108; // no row
    record.Favorites_Probability = 0.5;
    record.CaptionFont.Size = 9.75F;
    record.Longitude = 37.5;
    record.Latitude = -0.25;
    record.WallpaperSources.Add({"/pictures", true, "*.bmp", "inf"});
    record.Custom_Days.Add({24, 12, 255});
    Write(record);
    EXPECT_EQ(IntegerAt("Fonts", "Caption font bold"), -1);
    EXPECT_EQ(IntegerAt("General", "Show week number"), -1);
    EXPECT_EQ(IntegerAt("General", "Use favorites"), 0);
    EXPECT_EQ(IntegerAt("Hotkeys", "HK_NewNote"), 1);
    EXPECT_EQ(IntegerAt("Hotkeys", "HK_NewNote_VKEY_Array_ID"), 16);
    EXPECT_EQ(IntegerAt("Screen capture", "HK_TW_VKEY_Array_ID"), -4711);
    EXPECT_EQ(TextAt(Key("General"), "First RUN"), "False");
    EXPECT_EQ(TextAt(Key("General"), "Favorites probability"), "0,5");
    EXPECT_EQ(TextAt(Key("Fonts"), "Caption font size"), "9,75");
    EXPECT_EQ(TextAt(Key("General"), "Longitude"), " 37.5");
    EXPECT_EQ(TextAt(Key("General"), "Latitude"), "-0.25");
    EXPECT_EQ(TextAt(Key("Wallpaper sources"), "Is active wallpaper source #1"), "True");
    EXPECT_EQ(TextAt(Key("Wallpaper sources"), "Wallpaper source #1 scan level"), "inf");
    EXPECT_EQ(TextAt(Key("Custom Day(s)"), "Color #1"), "255");
    EXPECT_EQ(IntegerAt("Custom Day(s)", "Counter"), 1);
    std::int32_t version = 0;
    RegReadValue(machine.store, "", Hive::CurrentUser, RootKey, key_access::All, "Version", version);
    EXPECT_EQ(version, QUORVANE_VERSION_MAJOR * 100 + QUORVANE_VERSION_MINOR);
}

TEST_F(SettingsTest, OddTextsAreReadAsFarAsTheyGo) {
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
    GlobalRecord record;
    Read(record);
    EXPECT_EQ(record.Favorites_Probability, 0.5);
    EXPECT_EQ(record.Scan_Time, 0);
    EXPECT_EQ(record.Longitude, 37);
    EXPECT_EQ(record.Latitude, -12.5);
    EXPECT_TRUE(record.ShowWeekNumbers);
    EXPECT_EQ(record.CaptionFont.Size, 18);
    EXPECT_EQ(record.CalendarFont.Size, 14);
    EXPECT_EQ(record.HOT_KEY_DesktopCapture.VKey, 8);
    EXPECT_EQ(record.HOT_KEY_TopWindowCapture.VKey, 8);
    EXPECT_EQ(record.HOT_KEY_NewNote.VKey, 145);
    EXPECT_EQ(record.Custom_Days[1], (CustomDay{31, 1, 0}));
    EXPECT_EQ(record.Custom_Days[2], (CustomDay{1, 1, 255}));
    EXPECT_EQ(record.Custom_Days[3], (CustomDay{1, 1, 0}));
}

TEST_F(SettingsTest, AnEmptyTextKeepsThePreset) {
    Put("Screen capture", "Capture file template", "");
    Put("General", "Last selected wallpaper", "");
    Put("General", "Week name", "");
    GlobalRecord record;
    PresetRecord(record, machine.files);
    Read(record);
    EXPECT_EQ(record.CaptureFileName, "YYYYMMDDHHNNSS.BMP");
    EXPECT_EQ(record.LastSelectedWallpaper, "");
    EXPECT_EQ(record.Week_Str_Name, "");
}

TEST_F(SettingsTest, OneSettingIsReadAheadOfTheOthers) {
    GlobalRecord record;
    record.CurrentLanguage = "EN";
    ReadSettingOf(record, &record.CurrentLanguage, machine.store);
    EXPECT_EQ(record.CurrentLanguage, "EN");
    Put("General", "Language", "DE");
    Put("General", "Week name", "Woche");
    ReadSettingOf(record, &record.CurrentLanguage, machine.store);
    EXPECT_EQ(record.CurrentLanguage, "DE");
    EXPECT_EQ(record.Week_Str_Name, "");
}

TEST_F(SettingsTest, MissingEntriesOfTheSourceListsAreReported) {
    Put("Wallpaper sources", "Wallpaper sources counter", 1);
    Put("Wallpaper sources", "Wallpaper source #1", "/a");
    Put("Favorites", "Favorites sources counter", 2);
    Put("Favorites", "Favorites source #2", "/f");
    Put("Blacklist", "Blacklisted sources counter", -5);
    GlobalRecord record;
    record.BlacklistedSources.Add({"/old", true});
    Read(record);
    // The source lacks its flag, pattern and level, the first favourite its path.
    EXPECT_EQ(errors, std::vector<std::string>(4, "2 call: Read registry, Wallpaper sources"));
    EXPECT_EQ(record.WallpaperSources[1], (WallpaperSource{"/a", false, "", ""}));
    EXPECT_EQ(record.FavoritesSources[2], (ListedFile{"/f", false}));
    EXPECT_EQ(record.BlacklistedSrcCnt(), 0);
}

TEST_F(SettingsTest, AShorterListLeavesItsOldValues) {
    GlobalRecord record;
    Read(record);
    record.FavoritesSources.Add({"/1", true});
    record.FavoritesSources.Add({"/2", true});
    Write(record);
    record.FavoritesSources.Remove(2);
    Write(record);
    EXPECT_EQ(TextAt(Key("Favorites"), "Favorites source #2"), "/2");
    Read(record);
    EXPECT_EQ(record.FavoritesSrcCnt(), 1);
}

TEST_F(SettingsTest, WhatNoFieldHoldsStaysInTheTree) {
    Put("Notes", "Note #1", "a note");
    Put("General", "Alarms counter", "2");
    Put("Hotkeys", "Event #0 CMD", "run");
    Put("Profiles\\1\\General", "Wallpaper", "/p.bmp");
    GlobalRecord record;
    Read(record);
    Write(record);
    EXPECT_EQ(TextAt(Key("Notes"), "Note #1"), "a note");
    EXPECT_EQ(TextAt(Key("General"), "Alarms counter"), "2");
    EXPECT_EQ(TextAt(Key("Hotkeys"), "Event #0 CMD"), "run");
    EXPECT_EQ(TextAt(Key("Profiles\\1\\General"), "Wallpaper"), "/p.bmp");
}

TEST_F(SettingsTest, TheSplashBarMovesWhileTheProgramStarts) {
    GlobalRecord record;
    ReadSettings(record, machine.store, machine.files, prompts, events);
    EXPECT_TRUE(bars.empty());
    record.Main_Exec = true;
    ReadSettings(record, machine.store, machine.files, prompts, events);
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
    ReadSettings(record, machine.store, machine.files, prompts, events);
    EXPECT_EQ(TextAt(desktop, "Wallpaper"), "/w.bmp");
    EXPECT_EQ(TextAt(desktop, "WallpaperStyle"), "1");
    EXPECT_EQ(TextAt(".DEFAULT\\" + desktop, "Wallpaper", Hive::Users), "(none)");
    record.SyncWithSystemDefaultWallpaper = true;
    PublishWallpaper(record, machine.store, prompts, events);
    EXPECT_EQ(TextAt(".DEFAULT\\" + desktop, "Wallpaper", Hive::Users), "/w.bmp");
    EXPECT_EQ(TextAt(".DEFAULT\\" + desktop, "WallpaperStyle", Hive::Users), "1");
    EXPECT_TRUE(errors.empty() && prompts.shown.empty());

    machine.store.refuse = [](const StoreKey&, std::string_view) { return store_error::AccessDenied; };
    PublishWallpaper(record, machine.store, prompts, events);
    EXPECT_EQ(errors, std::vector<std::string>(2, "5 Unable set User wallpaper properties!"));
    EXPECT_EQ(prompts.shown, (std::vector<std::string>{
                                 "Error!/16/Unable set system wallpaper, please check that you have an "
                                 "administrative rights!",
                                 "Error!/16/Unable set system wallpaper style, please check that you have "
                                 "an administrative rights!"}));
}

TEST_F(SettingsTest, SettlesTheStartAtLogOn) {
    GlobalRecord record;
    record.AutoStartApplication = 1;
    Write(record);
    record.RunOnWin9x = true;
    Write(record);
    record.AutoStartApplication = 0;
    Write(record);
    EXPECT_EQ(machine.calls.lines,
              (std::vector<std::string>{"session.SetAutostart on", "session.SetAutostart on /win9x",
                                        "session.SetAutostart off /win9x"}));
    machine.session.refuseAutostart = true;
    Write(record);
    EXPECT_TRUE(errors.empty());
    record.AutoStartApplication = 1;
    Write(record);
    EXPECT_EQ(errors.size(), 1U);
}

TEST_F(SettingsTest, EveryRefusedWriteIsShownAndTheRestIsWritten) {
    machine.store.refuse = [](const StoreKey&, std::string_view name) {
        return name == "Week name" || name == "Longitude" ? store_error::WriteFault : store_error::None;
    };
    GlobalRecord record;
    Write(record);
    EXPECT_EQ(errors, std::vector<std::string>(2, "29 call: Write registry"));
    EXPECT_EQ(TextAt(Key("General"), "Week name"), "(none)");
    EXPECT_EQ(IntegerAt("General", "Ephemeredes text align"), 0);
}

} // namespace
} // namespace quorvane
