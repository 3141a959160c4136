#include "entry/application.h"

#include "commands/message.h"
#include "core/run_time_error.h"
#include "entry/check_fonts.h"
#include "entry/command_line.h"
#include "platform/forms/dump.h"
#include "platform/memory/memory_platform.h"
#include "tests/support/stored_tree.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(CommandLineTest, SearchesLettersAnywhereInAnyCase) {
    EXPECT_TRUE(ReadCommandLine("HELP").help);
    EXPECT_TRUE(ReadCommandLine("/settings /v").version);
    EXPECT_TRUE(ReadCommandLine("give").version) << "any text with this letter asks for the box";
    EXPECT_TRUE(ReadCommandLine("the").help);
    const CommandLineRequests settings = ReadCommandLine("/settings");
    EXPECT_TRUE(settings.settings);
    EXPECT_FALSE(settings.version || settings.help || settings.test || settings.RunOnWin9x);
    EXPECT_TRUE(ReadCommandLine("/WIN95").RunOnWin9x);
    EXPECT_FALSE(ReadCommandLine("win95").RunOnWin9x);
    EXPECT_TRUE(ReadCommandLine("/win98 /test").test);
}

class ApplicationTest : public ::testing::Test {
  protected:
    ApplicationTest() {
        machine_.files.PutFolder("/pics");
        for (const char* name : {"/pics/a.png", "/pics/b.png"}) {
            machine_.files.Put(name);
            machine_.drawing.AddPicture(name, {10, 10}, Rgb(1, 2, 3));
        }
        machine_.desktop.screenSize = {40, 20};
        test::ChooseFolder(machine_.store, "/pics");
    }

    template<typename Value>
    void Set(const std::string& key, const std::string& name, const Value& value) {
        test::PutStored(machine_.store, key, name, value);
    }
    std::string Get(const std::string& key, const std::string& name) {
        return test::StoredText(machine_.store, key, name);
    }
    bool WasSaved() { return Get("General", "First RUN") == "False"; }

    void Start(std::string storeNote = {}) {
        application_ = std::make_unique<Application>(machine_.Services(), std::move(storeNote));
    }
    // The start, and then `after` inside the loop; the exit status.
    int Run(std::function<void()> after) {
        Start();
        machine_.events.WhenWaiting(std::move(after));
        return application_->Run();
    }
    // What a person does in the error dialogue, once it waits.
    void WhenTold(std::function<void(Form& dialogue)> act) {
        machine_.events.WhenWaiting([this, act = std::move(act)] {
            Form* dialogue = application_->LoadedForms().Find("frmError");
            ASSERT_NE(dialogue, nullptr);
            act(*dialogue);
        });
    }
    std::ptrdiff_t LineOf(const std::string& start) const {
        const auto& lines = machine_.calls.lines;
        const auto found = std::find_if(lines.begin(), lines.end(),
                                        [&](const std::string& line) { return line.starts_with(start); });
        EXPECT_NE(found, lines.end()) << start;
        return found - lines.begin();
    }

    MemoryPlatform machine_;
    std::unique_ptr<Application> application_;
};

TEST_F(ApplicationTest, StartsInItsOrder) {
    Set("General", "Change wallpaper at startup", -1);
    Start();
    application_->Main();
    EXPECT_LT(LineOf("frmSplash.Show"), LineOf("tray.Add Quorvane II"));
    EXPECT_LT(LineOf("tray.Add"), LineOf("system.EnablePrivilege SeBackupPrivilege"));
    EXPECT_LT(LineOf("system.EnablePrivilege SeCreatePagefilePrivilege"), LineOf("desktop.SetWallpaper"));
    EXPECT_EQ(application_->LoadedForms().Find("frmSplash"), nullptr) << "gone at the end";
    EXPECT_NE(application_->LoadedForms().Find("frmNotifyIcon"), nullptr);
    EXPECT_NE(application_->LoadedForms().Find("frmEngine"), nullptr);
    EXPECT_FALSE(application_->Record().Main_Exec);
    EXPECT_EQ(application_->Record().System_Directory, "/system");
    EXPECT_EQ(application_->Record().Wallpapers_Cnt(), 2);
    EXPECT_FALSE(WasSaved()) << "a start writes no settings";
}

TEST_F(ApplicationTest, NamesADirectoryOfTheSystemByItsAge) {
    machine_.system.version.dwMajorVersion = 4;
    const auto directory = [this] {
        Start();
        application_->Main();
        return application_->Record().System_Directory;
    };
    EXPECT_EQ(directory(), "/windows");
    machine_.system.windowsDirectory.clear();
    EXPECT_EQ(directory(), "./");
}

TEST_F(ApplicationTest, VersionAndHelpEndBeforeAnythingElse) {
    for (const char* words : {"/settings /v", "HELP"}) {
        machine_.session.commandLine = words;
        machine_.prompts.WillAnswer(Answer::Ok);
        Start();
        EXPECT_EQ(application_->Run(), 0);
    }
    ASSERT_EQ(machine_.prompts.asked.size(), 2U);
    EXPECT_EQ(machine_.prompts.asked[0].text, VersionText());
    EXPECT_EQ(machine_.prompts.asked[0].title, "Quorvane II");
    EXPECT_EQ(machine_.prompts.asked[0].style, message_style::Information);
    EXPECT_EQ(machine_.prompts.asked[1].text, HelpText());
    EXPECT_FALSE(machine_.calls.Has("tray."));
    EXPECT_FALSE(WasSaved());
}

TEST_F(ApplicationTest, ExitByTheMenuSavesAndTakesTheIconAway) {
    const int status = Run([this] {
        application_->Record().LastSelectedWallpaper = "/pics/b.png";
        ChooseFromMenu(application_->NotifyIcon().mnu_popup, "Exit");
    });
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(WasSaved());
    EXPECT_EQ(Get("General", "Last selected wallpaper"), "/pics/b.png");
    EXPECT_FALSE(machine_.tray.added);
    EXPECT_TRUE(application_->LoadedForms().Loaded().empty());
    EXPECT_TRUE(machine_.events.TimerNames().empty());
}

TEST_F(ApplicationTest, AnEndRequestSavesOnceTheStartIsOver) {
    EXPECT_EQ(Run([this] { machine_.session.RequestEnd(); }), 0);
    EXPECT_TRUE(WasSaved());
}

TEST_F(ApplicationTest, AnEndRequestInsideTheStartSavesNothingThatWasNotRead) {
    Set("General", "Week name", "Wk");
    Start();
    bool asked = false;
    machine_.events.onPump = [&] {
        if (!std::exchange(asked, true)) machine_.session.RequestEnd();
    };
    EXPECT_EQ(application_->Run(), 0);
    EXPECT_FALSE(WasSaved());
    EXPECT_EQ(Get("General", "Week name"), "Wk");
    EXPECT_FALSE(machine_.tray.added);
}

TEST_F(ApplicationTest, AutoExitComesAfterTheTrayReportAndSettingsSwitchesItOff) {
    Set("General", "Change wallpaper at startup", -1);
    Set("General", "Autoexit after wallpaper was changed", -1);
    Start();
    EXPECT_EQ(application_->Run(), 0);
    EXPECT_TRUE(machine_.calls.Has("desktop.SetWallpaper"));
    EXPECT_NE(machine_.tray.record.tip.find("/pics/"), std::string::npos);
    EXPECT_TRUE(WasSaved());

    machine_.session.commandLine = "/settings";
    Start();
    application_->Main();
    EXPECT_FALSE(application_->Record().Main_Exec) << "it runs on";
}

TEST_F(ApplicationTest, AFailureEndsInTheErrorDialogueAndSavesWhereItIsClosedByItsFrame) {
    machine_.events.WhenWaiting([&] { // the program's own loop
        machine_.events.Post([] { throw RunTimeError::SubscriptOutOfRange(); });
    });
    std::string shown;
    WhenTold([&](Form& dialogue) {
        shown = DumpForm(dialogue);
        MemoryFormView::Do(dialogue, dialogue.FindControl("Command2"), act::Click{});
        MemoryFormView::Do(dialogue, nullptr, act::CloseByFrame{});
    });
    Start();
    EXPECT_EQ(application_->Run(), 0);
    ASSERT_EQ(machine_.prompts.asked.size(), 1U);
    EXPECT_TRUE(
        machine_.prompts.asked[0].text.starts_with("Kernel memory dump complete...\r\nDump file saved to ["));
    EXPECT_EQ(
        shown,
        "Form frmError \"Kerner error!\" #132\n"
        "  Label Label1 \"Unexpected Error! Please, report to software developer\" #133 font \"Memory\" 8 "
        "bold\n"
        "  Label Label2 \"Error code: 9\"\n"
        "  Label Label3 \"Subscript out of range\"\n"
        "  Button Command2 \"Dump kernel\" #134\n"
        "  Button Command1 \"Close application\" #135\n");
    EXPECT_TRUE(WasSaved());
}

TEST_F(ApplicationTest, AFailureOfTheStartAndAnEndByTheErrorDialoguesButtonSaveNothing) {
    machine_.events.onPump = [this] {
        machine_.events.onPump = nullptr;
        throw std::bad_alloc();
    };
    WhenTold([](Form& dialogue) {
        EXPECT_EQ(dialogue.FindControl("Label2")->Caption(), "Error code: 7");
        MemoryFormView::Do(dialogue, nullptr, act::CloseByFrame{});
    });
    Start();
    EXPECT_EQ(application_->Run(), 0);
    EXPECT_FALSE(WasSaved());

    machine_.events.WhenWaiting([&] { machine_.events.Post([] { throw RunTimeError::Overflow(); }); });
    WhenTold(
        [](Form& dialogue) { MemoryFormView::Do(dialogue, dialogue.FindControl("Command1"), act::Click{}); });
    Start();
    EXPECT_EQ(application_->Run(), 1);
    EXPECT_FALSE(WasSaved());
    EXPECT_TRUE(application_->LoadedForms().Loaded().empty());
}

TEST_F(ApplicationTest, TellsWhatHappenedToTheTreeOnceItRuns) {
    machine_.prompts.WillAnswer(Answer::Ok);
    Start("The settings were damaged.");
    application_->Main();
    EXPECT_TRUE(machine_.prompts.asked.empty());
    machine_.events.Pump();
    ASSERT_EQ(machine_.prompts.asked.size(), 1U);
    EXPECT_EQ(machine_.prompts.asked[0].text, "The settings were damaged.");
}

TEST_F(ApplicationTest, TheShellWaitsForTheStartAndWhatItSetsTakesEffect) {
    const auto ask = [this](std::vector<std::string> words) {
        return machine_.channel.Ask(commands::ToBytes(commands::Question{std::move(words), "/", {}}));
    };
    std::shared_ptr<std::optional<std::string>> early;
    Start();
    machine_.events.onPump = [&] {
        if (!early && machine_.channel.Listening()) early = ask({"status", "--json"});
    };
    application_->Main();
    ASSERT_TRUE(early);
    EXPECT_FALSE(*early) << "not out of the middle of the start";
    machine_.events.Pump();
    ASSERT_TRUE(*early);
    EXPECT_NE((*early)->find("\"candidates\": 2,"), std::string::npos) << **early;
    const auto now = ask({"settings", "set", "General\\Wallpaper position", "3"});
    EXPECT_EQ(commands::AnswerOf(now->value_or(""))->problem, "");
    machine_.events.Pump();
    std::string style;
    RegReadValue(machine_.store, "", Hive::CurrentUser, "Control Panel\\Desktop", key_access::Read,
                 "WallpaperStyle", style);
    EXPECT_EQ(style, "2");
}

class CheckFontsTest : public ::testing::Test {
  protected:
    CheckFontsTest() { machine_.prompts.WillAnswer(Answer::Ok); }
    // Checks, and answers the questions that were asked.
    const std::vector<MemoryPrompts::Question>& Asked() {
        EXPECT_TRUE(CheckFonts(machine_.Services(), [this](int bar) { bars_.push_back(bar); }));
        return machine_.prompts.asked;
    }
    MemoryPlatform machine_;
    std::vector<int> bars_;
};

TEST_F(CheckFontsTest, MissesNothingWhereAllFamiliesAreThereOrAnotherFontTakesTheirPlace) {
    EXPECT_TRUE(Asked().empty());
    EXPECT_EQ(bars_.front(), 3);
    EXPECT_EQ(bars_.back(), 11);
    EXPECT_TRUE(std::is_sorted(bars_.begin(), bars_.end()));
    EXPECT_FALSE(machine_.calls.Has("system.AddFontFile"));
    machine_.system.fontNames = {"DejaVu Sans"};
    machine_.system.substitutesFonts = true;
    EXPECT_TRUE(Asked().empty());
}

TEST_F(CheckFontsTest, SeeksAFamilyBesideTheProgramAndWarnsWhereOneFileIsMissing) {
    machine_.system.fontNames = {"Courier", "Monotype Corsiva", "MS Sans Serif", "Microsoft Sans Serif"};
    const std::string folder = machine_.files.programDirectory;
    for (const char* name : {"/Fonts/arial.ttf", "/arialbd.ttf", "/Fonts/arialbi.ttf", "/Fonts/ariali.ttf",
                             "/sanss___.ttf", "/sanssb__.ttf", "/sanssbo_.ttf"}) {
        machine_.system.fontFiles[folder + name] = 1;
    }
    ASSERT_EQ(Asked().size(), 1U) << "three of four files are not enough";
    EXPECT_EQ(machine_.prompts.asked[0].text,
              "Font :[SansSerif] - isn't installed on to Yours system.\r\nPlease, install this font!");
    EXPECT_EQ(machine_.prompts.asked[0].title, "Warning!");
    EXPECT_EQ(machine_.prompts.asked[0].style, message_style::Warning);
}

} // namespace
} // namespace quorvane
