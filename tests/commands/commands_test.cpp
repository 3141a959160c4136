#include "alarms/criteria/compiler.h"
#include "commands/doctor.h"
#include "commands/json.h"
#include "commands/message.h"
#include "commands/setting_values.h"
#include "platform/memory/memory_platform.h"
#include "tests/support/recorded_program.h"
#include "tests/support/stored_tree.h"

#include <gtest/gtest.h>

namespace quorvane::commands {
namespace {

using Words = std::vector<std::string>;

class CommandsTest : public testing::Test {
  protected:
    CommandsTest() {
        machine_.files.PutFolder("/home/ann/pics");
        machine_.files.Put("/home/ann/pics/a.png");
    }

    // On the stored tree: a record of its own each time.
    Answer OnTree(const Words& words) {
        GlobalRecord record;
        Place place = PlaceOf(record);
        LoadRecord(record, place.context);
        return RunRecordCommand(words, place);
    }
    // In a running program.
    Answer Live(const Words& words, std::optional<std::string> content = std::nullopt) {
        Place place = PlaceOf(live_);
        place.program = &program_;
        place.content = std::move(content);
        Answer answer = RunRecordCommand(words, place);
        if (place.afterwards) place.afterwards();
        return answer;
    }
    Place PlaceOf(GlobalRecord& record) {
        Place place{record, ContextOf(machine_.store, machine_.files, machine_.clock), machine_.system};
        place.folder = "/home/ann";
        return place;
    }
    std::string Stored(const std::string& key, const std::string& name) {
        return test::StoredText(machine_.store, key, name);
    }

    MemoryPlatform machine_;
    test::RecordedProgram program_{machine_.calls};
    GlobalRecord live_;
};

TEST_F(CommandsTest, SourcesAreAddedChangedAndRemovedOnTheTreeAlone) {
    EXPECT_EQ(OnTree({"sources", "add", "pics", "--json"}).out, "{\"source\": 1}\n");
    EXPECT_EQ(
        OnTree({"sources", "add", "/home/ann/pics", "--pattern", "*.jpg", "--level=2", "--inactive"}).out,
        "2\n");
    const std::string first =
        R"({"source": 1, "path": "/home/ann/pics", "active": true, "pattern": "*.bmp;*.jpg;*.png", "level": "INF"})";
    EXPECT_EQ(
        OnTree({"sources", "list", "--json"}).out,
        first + "\n" +
            R"({"source": 2, "path": "/home/ann/pics", "active": false, "pattern": "*.jpg", "level": "2"})" +
            "\n");
    EXPECT_EQ(Stored("General", "First RUN"), "(missing)") << "nothing but the list is written";
    EXPECT_EQ(OnTree({"sources", "enable", "2"}).status, Done);
    EXPECT_EQ(Stored("Wallpaper sources", "Is active wallpaper source #2"), "True");
    EXPECT_EQ(OnTree({"sources", "remove", "2"}).status, Done);
    EXPECT_EQ(OnTree({"sources", "list", "--json"}).out, first + "\n");
    for (const Words& refused : {Words{"sources", "add", "gone"}, Words{"sources", "remove", "2"},
                                 Words{"sources", "enable", "1x"}, Words{"favourites", "remove", "a.png"}}) {
        const Answer answer = OnTree(refused);
        EXPECT_EQ(answer.status, Refused);
        EXPECT_FALSE(answer.problem.empty());
    }
    for (const Words& wrong : {Words{"sources"}, Words{"sources", "sing"}, Words{"sources", "add"},
                               Words{"favourites", "add", "a", "b"}, Words{"sources", "list", "--loud"}}) {
        EXPECT_EQ(OnTree(wrong).status, WrongUsage);
    }
}

TEST_F(CommandsTest, ARunningProgramKeepsRecordAndTreeInStep) {
    live_.Week_Str_Name = "not saved yet";
    EXPECT_EQ(Live({"favourites", "add", "pics/a.png"}).status, Done);
    EXPECT_TRUE(machine_.calls.Has("program.WriteSettings"));
    EXPECT_EQ(Live({"favourites", "list"}).out, "  /home/ann/pics/a.png\n");
    EXPECT_EQ(Live({"favourites", "remove", "/HOME/ann/pics/A.png"}).status, Done);
    EXPECT_EQ(Live({"favourites", "list"}).out, "- /home/ann/pics/a.png\n");
    EXPECT_EQ(Live({"settings", "get", "General\\Week name"}).out, "not saved yet\n")
        << "the record is the truth, not the tree";
    EXPECT_EQ(Live({"settings", "set", "General\\Week name", "W"}).status, Done);
    EXPECT_EQ(live_.Week_Str_Name, "W");
    EXPECT_EQ(Stored("General", "Week name"), "W");
    EXPECT_EQ(Live({"settings", "set", "General\\Nonsense", "1"}).status, Refused);
    EXPECT_EQ(Live({"settings", "import", "f.reg"}).problem, "the file \"f.reg\" cannot be read");
    const std::string file =
        "Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER\\Software\\Quorvane\\General]\n"
        "\"Week name\"=\"imported\"\n";
    EXPECT_EQ(Live({"settings", "import", "f.reg"}, file).problem, "");
    EXPECT_EQ(live_.Week_Str_Name, "imported");
    EXPECT_EQ(Live({"sources", "add", "pics"}).out, "1\n");
    EXPECT_TRUE(live_.RESCANWALLPAPERSOURCESNOW) << "the next change looks there";
}

TEST_F(CommandsTest, TheDoctorSaysWhatTheSettingsLack) {
    const auto found = [this] {
        std::string lines;
        Place place = PlaceOf(live_);
        for (const Finding& finding : ExamineRecord(place)) {
            if (finding.state != Finding::State::Ok) lines += finding.check + ": " + finding.why + "\n";
        }
        return lines;
    };
    LoadRecord(live_, PlaceOf(live_).context);
    machine_.clock.zone.known = true;
    machine_.clock.zone.bias = -180; // where the place of the defaults lies
    EXPECT_EQ(found(), "sources: no folder of pictures is scanned\n");
    machine_.clock.zone.bias = 300;
    live_.WallpaperSources.Add({"/home/ann/pics", true, "*.png", "0"});
    live_.WallpaperSources.Add({"/gone", true, "*.png", "0"});
    live_.WallpaperSources.Add({"/gone too", false, "*.png", "0"});
    const auto alarm = [this](const char* name, const char* text, double count) {
        live_.AlarmRecords.Add();
        AlarmRecord& added = live_.AlarmRecords[live_.AlarmRecords_Count()];
        added.Active = true;
        added.Name = name;
        added.CriteriaText = text;
        added.Criteria = CompileCriteria(text).compiled;
        added.ExecCount = count;
    };
    alarm("good", "hh=7&nn=0&ss=0", alarm_count::Infinite);
    alarm("once", "hh=7", 1);
    alarm("broken", "hh=", 1);
    live_.AlarmRecords[3].Criteria = "";
    live_.AlarmRecords[3].CriteriaText = "qq";
    alarm("never", "mm=13", 1);
    alarm("flood", "hh=7", alarm_count::Infinite);
    alarm("spent", "hh=7", 0);
    EXPECT_EQ(
        found(),
        "sources: source 2, \"/gone\", cannot be read\n"
        "alarms: alarm 3, \"broken\", does not compile: Lexical ERROR! - Error at [q]\n"
        "alarms: alarm 4, \"never\", does not fire in the next ten years\n"
        "alarms: alarm 5, \"flood\", fires twice in each second in which its criterion holds, without end\n"
        "alarms: alarm 6, \"spent\", has fired as often as it may\n"
        "place: Sun and Moon are told for the place that the settings begin with, and the clock is that of "
        "another zone\n");
}

TEST_F(CommandsTest, DoesWhatTheTrayMenuDoes) {
    EXPECT_EQ(Live({"do", "favourite"}).problem, "no picture has been chosen yet");
    live_.LastSelectedWallpaper = "/home/ann/pics/a.png";
    live_.ChangeWallpaperInterval = 300;
    EXPECT_EQ(Live({"do", "blacklist"}).status, Done);
    EXPECT_EQ(live_.BlacklistedSrcCnt(), 1);
    EXPECT_EQ(Live({"do", "unfavourite"}).status, Refused);
    EXPECT_EQ(Live({"do", "change", "pics/a.png"}).status, Done);
    EXPECT_TRUE(machine_.calls.Has("program.ChangeWallpaper 0 /home/ann/pics/a.png"));
    EXPECT_EQ(live_.ChangeWallpaperIntervalCurrent, 300);
    EXPECT_EQ(Live({"do", "change", "gone.png"}).status, Refused);
    EXPECT_EQ(Live({"do", "sing"}).status, WrongUsage);
    EXPECT_EQ(Live({"do", "rescan"}).status, Done);
    EXPECT_TRUE(machine_.calls.Has("program.BuildFileList"));
    EXPECT_EQ(Live({"do", "exit"}).status, Done);
    EXPECT_TRUE(machine_.calls.Has("program.SaveAndEnd"));
    live_.AlarmRecords.Add();
    live_.AlarmRecords.Add().Active = true;
    const std::string status = Live({"status", "--json"}).out;
    EXPECT_NE(status.find("\"pid\": 4711"), std::string::npos) << status;
    EXPECT_NE(status.find("\"alarms\": 1, \"notes\": 0"), std::string::npos) << status;
    EXPECT_NE(status.find("\"desktop\": \"memory\""), std::string::npos) << status;
}

TEST_F(CommandsTest, MessagesComeBackAsTheyWereAndOthersAreNone) {
    const Question question{{"settings", "get", std::string("a\0\xFF", 3)}, "/home/ann", "file\n"};
    const std::string bytes = ToBytes(question);
    EXPECT_EQ(QuestionOf(bytes), question);
    EXPECT_EQ(QuestionOf(ToBytes(Question{{"status"}, "", std::nullopt})),
              (Question{{"status"}, "", std::nullopt}));
    for (std::size_t size = 0; size < bytes.size(); ++size)
        EXPECT_NE(QuestionOf(bytes.substr(0, size)), question);
    for (const char* none : {"",
                             "\2"
                             "0 0 ",
                             "\1",
                             "\1"
                             "5 ab",
                             "\1"
                             "-1 0 ",
                             "\1"
                             "99999999999999999999 x"})
        EXPECT_FALSE(QuestionOf(none)) << none;
    const auto answer = AnswerOf(ToBytes(Answer{Refused, "out\n", "why"}));
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, Refused);
    EXPECT_EQ(answer->out + answer->problem, "out\nwhy");
    EXPECT_FALSE(AnswerOf("\1"
                          "1 90 0 "));
    GlobalRecord record;
    Place place = PlaceOf(record);
    EXPECT_EQ(AnswerOf(AnswerTo("nonsense", place))->status, Refused);
    EXPECT_EQ(AnswerOf(AnswerTo(ToBytes(Question{{"sing"}, "/", {}}), place))->status, Refused);
    EXPECT_EQ(AnswerOf(AnswerTo(ToBytes(Question{{}, "/", {}}), place))->status, Refused);
}

} // namespace
} // namespace quorvane::commands
