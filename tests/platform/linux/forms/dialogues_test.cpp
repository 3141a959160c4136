#include "diagnostics/frm_error.h"
#include "dialogues/frm_transparency.h"
#include "dialogues/input_box.h"
#include "dialogues/mess_box.h"
#include "platform/linux/desktop/event_loop.h"
#include "platform/linux/drawing/drawing.h"
#include "platform/linux/forms/form_host.h"
#include "platform/linux/forms/form_view.h"
#include "platform/linux/forms/prompts.h"
#include "platform/memory/memory_platform.h"
#include "shell/frm_splash.h"
#include "tests/support/process.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QWidget>
#include <QWindow>
#include <gtest/gtest.h>

namespace quorvane {

// The small dialogues on a screen with a window manager, with the keys and the mouse of that screen.
class Dialogues : public testing::Test {
  protected:
    using Process = test::Process;

    Dialogues() {
        machine_.store.Set({"", Hive::CurrentUser, "Control Panel\\Colors"}, "ButtonFace",
                           {ValueType::Text, std::string("239 239 239\0", 12)});
        // A person who does nothing ends the test, not the tests.
        events_.StartTimer("limit", 30'000, [this] { forms_.UnloadAll(); });
        machine_.system.version.displayName = "Debian GNU/Linux 12";
    }

    // A key must not stay down when a window closes on its press: each person comes to an end.
    ~Dialogues() override {
        for (const auto& person : persons_)
            EXPECT_EQ(person->WaitForEnd(), 0);
    }

    // Calls `act` once the window of `form` is on the screen and the window manager has let it rest.
    void OnceShown(const Form& form, std::function<void()> act) {
        const auto rest = std::make_shared<std::pair<QPoint, int>>();
        const auto timer = std::make_shared<TimerId>();
        *timer = events_.StartTimer("shown", 20, [=, this, &form] {
            const QWidget* window = form.View() ? WindowOf(form) : nullptr;
            const QPoint at = window ? window->mapToGlobal(QPoint()) : QPoint();
            const bool rests =
                window && window->windowHandle() && window->windowHandle()->isExposed() && at == rest->first;
            rest->second = rests ? rest->second + 1 : 0;
            rest->first = at;
            if (rest->second < 5) return;
            events_.StopTimer(*timer);
            act();
        });
    }
    static QWidget* WindowOf(const Form& form) { return static_cast<QtFormView*>(form.View())->Window(); }

    // Starts xdotool on its own; it waits by itself for the windows that it looks for.
    void Person(std::vector<std::string> acts) {
        acts.insert(acts.begin(), "xdotool");
        persons_.push_back(std::make_unique<Process>(std::move(acts)));
    }
    // Keys to the window of that title. They go to whatever has the keyboard, so that a key that closes the
    // window on its way down comes up again all the same.
    void Keys(const std::string& title, const std::vector<std::string>& keys) {
        std::string command = "xdotool search --sync --onlyvisible --name '^" + title +
                              "$' windowactivate --sync && xdotool key";
        for (const std::string& key : keys)
            command += ' ' + key;
        persons_.push_back(std::make_unique<Process>(std::vector<std::string>{"sh", "-c", command}));
    }
    void RunUntil(const std::function<bool()>& condition) {
        bool late = false;
        const TimerId limit = events_.StartTimer("limit", 20'000, [&] { late = true; });
        events_.RunWhile([&] { return !condition() && !late; });
        events_.StopTimer(limit);
        EXPECT_FALSE(late);
    }
    // A picture of the whole screen, where somebody wants to look.
    void Shoot(const std::string& name) {
        const char* folder = std::getenv("QUORVANE_SHOTS");
        if (!folder) return;
        int rounds = 0;
        const TimerId wait = events_.StartTimer("shot", 100, [&] { ++rounds; });
        events_.RunWhile([&] { return rounds < 3; });
        events_.StopTimer(wait);
        Process shot({"import", "-window", "root", std::string(folder) + "/" + name + ".png"});
        shot.WaitForEnd();
    }
    // The middle of a control, on the screen.
    static std::vector<std::string> MiddleOf(const Form& form, const Control& control) {
        const QWidget* widget = static_cast<QtFormView*>(form.View())->WidgetOf(control);
        const QPoint at = widget->mapToGlobal(widget->rect().center());
        return {std::to_string(at.x()), std::to_string(at.y())};
    }

    MemoryPlatform machine_;
    QtEventLoop events_;
    LinuxDrawing drawing_;
    QtFormHost host_;
    QtPrompts prompts_{host_};
    Platform platform_{machine_.clock,  machine_.desktop, drawing_,        events_,          machine_.files,
                       host_,           prompts_,         machine_.random, machine_.session, machine_.store,
                       machine_.system, machine_.tray};
    Forms forms_{platform_};
    std::vector<std::unique_ptr<Process>> persons_;
};

TEST_F(Dialogues, AnInputBoxTakesKeysAndEnter) {
    InputBox box(forms_);
    OnceShown(box, [&] {
        Shoot("input_box");
        Keys("Set timer", {"9", "0", "Return"});
    });
    EXPECT_EQ(box.Ask("Input timer value:", "Set timer", "00:10:00"), "90");
}

TEST_F(Dialogues, TheToolkitsBoxesSayOkAsTheOthersDo) {
    QString word;
    events_.StartTimer("press", 20, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) return;
        word = box->button(QMessageBox::Ok)->text().remove('&');
        box->accept();
    });
    prompts_.Message("Done.", "Quorvane II", message_style::Information);
    EXPECT_EQ(word, "Ok");
}

TEST_F(Dialogues, ASplashGoesWithAClick) {
    frmSplash splash(forms_, platform_);
    splash.Show();
    splash.ProgressBar1.SetValue(40);
    OnceShown(splash, [&] {
        Shoot("splash");
        const auto at = MiddleOf(splash, splash.ProgressBar1);
        Person({"mousemove", at[0], std::to_string(std::stoi(at[1]) - 30), "click", "1"});
    });
    RunUntil([&] { return !splash.IsLoaded(); });
}

TEST_F(Dialogues, ASliderDraggedByTheMouseTurnsTheWindowTranslucent) {
    InputBox window(forms_);
    std::int32_t Transparency_Value = 128;
    frmTransparency dialogue(forms_);
    OnceShown(dialogue, [&] {
        Shoot("transparency");
        const auto from = MiddleOf(dialogue, dialogue.Slider1);
        const auto end = MiddleOf(dialogue, dialogue.Command1);
        Person({"mousemove", from[0],   from[1], "mousedown",          "1",      "mousemove_relative",
                "--sync",    "20",      "0",     "mousemove_relative", "--sync", "20",
                "0",         "mouseup", "1",     "mousemove",          end[0],   end[1],
                "click",     "1"});
    });
    dialogue.Adjust(window, Transparency_Value);
    EXPECT_GT(Transparency_Value, 140);
    EXPECT_EQ(window.Opacity(), Transparency_Value);
}

TEST_F(Dialogues, AMessageAndAnErrorAreClosedByKeys) {
    MessBox message(forms_);
    message.Tell("Time interval - Ok.", "Timer");
    OnceShown(message, [&] {
        Shoot("mess_box");
        Keys("Timer", {"Return"});
    });
    RunUntil([&] { return !message.IsVisible(); });

    GlobalRecord record;
    frmError error(forms_, record, platform_);
    OnceShown(error, [&] {
        Shoot("error");
        Keys("Kerner error!", {"alt+F4"});
    });
    error.Ask(13, "Type mismatch: a longer description of what went wrong, which does not fit on one line of "
                  "the dialogue.");
    EXPECT_FALSE(error.IsLoaded()) << "closed by its frame";
}

TEST_F(Dialogues, AQuestionIsAnsweredByItsMnemonic) {
    events_.Post([this] { Shoot("question"); });
    Keys("Confirm remove note", {"alt+n"});
    EXPECT_EQ(prompts_.Message("Remove selected note?\r\nAre You sure?", "Confirm remove note",
                               message_style::Question),
              Answer::No);
}

TEST_F(Dialogues, AFolderIsPickedByANameThatNoFileHas) {
    FileQuestion question{"Select directory", "All files (*.*)|*.*", "/usr", "$DIR$", 1, false, false};
    Keys("Select directory", {"Return"});
    EXPECT_EQ(prompts_.File(question), "/usr/$DIR$");
}

} // namespace quorvane
