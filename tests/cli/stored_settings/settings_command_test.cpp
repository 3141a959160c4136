#include "core/text.h"
#include "tests/cli/run.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace quorvane::cli {
namespace {

// The commands work on a stored tree of the test's own.
class SettingsCommandTest : public testing::Test {
  protected:
    SettingsCommandTest() { setenv("XDG_CONFIG_HOME", folder.Path().string().c_str(), 1); }

    int Run(std::vector<std::string> words, const std::string& input = "") {
        words.insert(words.begin(), "settings");
        ran = RunWords(words, input);
        return ran.status;
    }
    std::string Get(const std::string& setting) {
        Run({"get", setting});
        return ran.out;
    }
    std::string InFolder(const char* name) const { return folder.Path().string() + "/" + name; }
    std::string Content(const std::string& path) const {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    test::TemporaryFolder folder;
    Ran ran;
};

TEST_F(SettingsCommandTest, SetsInTheTypeOfTheSchemaAndGets) {
    const struct {
        const char *setting, *data, *json;
    } rows[] = {
        {"General\\Wallpaper position", "4", R"("type": "integer", "data": 4)"},
        {"colors\\holiday color", "0xFF00FF", R"("type": "integer", "data": 16711935)"},
        {"General\\Paint calendar", "true", R"("type": "integer", "data": -1)"},
        {"Hotkeys\\HK_NewNote", "True", R"("type": "integer", "data": 1)"},
        {"General\\Scan time", "2.5", R"("type": "text", "data": "2.5")"},
        {"Alarms\\1 - Exec count", "2.5", R"("type": "integer", "data": 2.5)"},
        {"General\\Longitude", "-48.25", R"("type": "text", "data": "-48.25")"},
        {"General\\Week name", "", R"("type": "text", "data": "")"},
        {"Wallpaper sources\\Wallpaper source #2 pattern", "*.bmp=\\",
         R"("type": "text", "data": "*.bmp=\\")"},
        {"Favorites\\Is active favorites source #1", "False", R"("type": "text", "data": "False")"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Run({"set", row.setting, row.data}), Done) << ran.err;
        EXPECT_EQ(Run({"get", "--json", row.setting}), Done) << ran.err;
        EXPECT_NE(ran.out.find(row.json), std::string::npos) << ran.out;
    }
    EXPECT_EQ(Run({"get", "-0", "General\\Scan time"}), Done);
    EXPECT_EQ(ran.out, std::string("2.5\0", 4));
    EXPECT_EQ(Run({"get", "-"}, "General\\Wallpaper position\nnonsense\nGeneral\\Scan time\n"), Done);
    EXPECT_EQ(ran.out, "4\n\n2.5\n");
    EXPECT_EQ(Run({"list", "general"}), Done);
    EXPECT_EQ(ran.out, "general\\Longitude=-48.25\ngeneral\\Paint calendar=-1\ngeneral\\Scan "
                       "time=2.5\ngeneral\\Wallpaper position=4\n"
                       "general\\Week name=\n");
}

TEST_F(SettingsCommandTest, RefusesWhatIsNoSettingOrNoData) {
    for (const char* words : {"get|General\\Wallpaper",
                              "get|Wallpaper",
                              "list|Nothing",
                              "set|General\\No such setting|x",
                              "set|General\\Wallpaper position|four",
                              "set|General\\Wallpaper position|4000000000",
                              "set|General\\First RUN|perhaps",
                              "set|General\\Longitude|48,2",
                              "set|General\\Latitude|abc",
                              "set|General\\Scan time|-1",
                              "set|General\\Scan time|",
                              "set|General\\Alarms counter|1.5",
                              "set|Custom Day(s)\\Day #1|40000",
                              "set|Custom Day(s)\\Color #1|-1",
                              "set|Custom Day(s)\\Color #1|255 red",
                              "set|Screen capture\\HK_DC_VKEY_Array_ID|87",
                              "set|Alarms\\1 - Exec count|often",
                              "set|Alarms\\1 - Alarm icon index|70000",
                              "import|/no/such/file",
                              "export|/no/such/folder/file"}) {
        EXPECT_EQ(Run(Split(words, '|')), Refused) << words;
        EXPECT_FALSE(ran.err.empty());
    }
    EXPECT_EQ(Run({}), WrongUsage);
    for (const char* words : {"burn", "get", "set|General\\Wallpaper", "get|a\\b|c",
                              "list|--set|General\\Wallpaper", "set|--set|Colors\\x=1|Colors\\x|1"})
        EXPECT_EQ(Run(Split(words, '|')), WrongUsage) << words;
    EXPECT_EQ(Run({"list"}), Done);
    EXPECT_EQ(ran.out, "") << "nothing was written";
}

TEST_F(SettingsCommandTest, ReadingMakesNoTreeAndMendsNone) {
    Run({"get", "General\\Wallpaper"});
    Run({"export", InFolder("empty.reg")});
    Run({"list", "--set", "General\\Wallpaper=x"});
    EXPECT_FALSE(std::filesystem::exists(InFolder("quorvane")));
    std::filesystem::create_directory(InFolder("quorvane"));
    std::ofstream(InFolder("quorvane/settings.db")) << "this is no tree";
    EXPECT_EQ(Run({"get", "General\\Wallpaper"}), Refused);
    EXPECT_EQ(Content(InFolder("quorvane/settings.db")), "this is no tree") << "the program tells of it";
}

TEST_F(SettingsCommandTest, ExportsAndImportsTheStoredTree) {
    Run({"set", "General\\Wallpaper", "/\xC3\xA4/w.bmp"});
    Run({"set", "Colors\\Caption color", "255"});
    const std::string plain = InFolder("plain.reg");
    const std::string wide = InFolder("wide.reg");
    EXPECT_EQ(Run({"export", plain}), Done);
    EXPECT_EQ(Run({"export", "--utf16", wide}), Done);
    EXPECT_EQ(Content(plain), "Windows Registry Editor Version 5.00\r\n\r\n"
                              "[HKEY_CURRENT_USER\\Software\\Quorvane\\Colors]\r\n"
                              "\"Caption color\"=dword:000000ff\r\n\r\n"
                              "[HKEY_CURRENT_USER\\Software\\Quorvane\\General]\r\n"
                              "\"Wallpaper\"=\"/\xC3\xA4/w.bmp\"\r\n");
    EXPECT_EQ(Content(wide).substr(0, 4), std::string("\xFF\xFEW\0", 4));
    for (const std::string& file : {plain, wide}) {
        Run({"set", "General\\Wallpaper", "other"});
        EXPECT_EQ(Run({"import", file}), Done) << ran.err;
        EXPECT_EQ(Get("General\\Wallpaper"), "/\xC3\xA4/w.bmp\n");
    }
    std::ofstream(plain, std::ios::app) << "\"Wallpaper\"=\"changed\"\n\"x\"=dword:xyz\n";
    EXPECT_EQ(Run({"import", plain}), Refused);
    EXPECT_NE(ran.err.find(plain + ", line 9: "), std::string::npos) << ran.err;
    EXPECT_EQ(Get("General\\Wallpaper"), "/\xC3\xA4/w.bmp\n");
}

TEST_F(SettingsCommandTest, AFileAndSingleValuesLeaveTheStoredTreeAlone) {
    Run({"set", "General\\Wallpaper", "stored"});
    const std::string file = InFolder("settings.reg");
    std::ofstream(file) << "Windows Registry Editor Version 5.00\n[HKCU\\Software\\Quorvane\\General]\n"
                           "\"Wallpaper\"=\"from the file\"\n[HKCU\\Control Panel\\Colors]\n\"x\"=\"y\"\n";
    EXPECT_EQ(Run({"get", "--settings", file, "General\\Wallpaper"}), Done) << ran.err;
    EXPECT_EQ(ran.out, "from the file\n");
    EXPECT_EQ(Run({"list", "--set", "General\\Week name=#=", "--set", "General\\Calendar position=9"}), Done);
    EXPECT_EQ(ran.out, "General\\Calendar position=9\nGeneral\\Wallpaper=stored\nGeneral\\Week name=#=\n");
    EXPECT_EQ(Run({"list"}), Done);
    EXPECT_EQ(ran.out, "General\\Wallpaper=stored\n");
}

} // namespace
} // namespace quorvane::cli
