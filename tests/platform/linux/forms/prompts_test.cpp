#include "dialogues/input_box.h"
#include "platform/linux/desktop/event_loop.h"
#include "platform/linux/drawing/drawing.h"
#include "platform/linux/forms/form_host.h"
#include "platform/linux/forms/prompts.h"
#include "tests/support/process.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <gtest/gtest.h>

namespace quorvane {

// Questions on a screen with a window manager, answered by the keys of that screen.
class QtQuestions : public testing::Test {
  protected:
    // A person who does nothing ends the test, not the tests.
    QtQuestions() {
        events_.StartTimer("limit", 30'000, [this] { forms_.UnloadAll(); });
    }
    // A key must not stay down when a window closes on its press: the person comes to an end.
    ~QtQuestions() override { EXPECT_TRUE(!person_ || person_->WaitForEnd() == 0); }

    // Keys to the window of that title, once it is there. They go to whatever has the keyboard, so that a key
    // that closes the window on its way down comes up again all the same.
    void Keys(const std::string& title, const std::string& keys) {
        const std::string command = "until xdotool search --onlyvisible --name '^" + title +
                                    "$' windowactivate --sync; do sleep .05; done; xdotool key " + keys;
        person_ = std::make_unique<test::Process>(std::vector<std::string>{"sh", "-c", command});
    }

    QtEventLoop events_;
    LinuxDrawing drawing_;
    QtFormHost host_;
    QtPrompts prompts_{host_};
    Forms forms_{host_, events_, drawing_};
    std::unique_ptr<test::Process> person_;
};

TEST_F(QtQuestions, AFormHasTheKeyboardAsItComesUp) {
    InputBox box(forms_);
    Keys("Set timer", "9 0 Return");
    EXPECT_EQ(box.Ask("Input timer value:", "Set timer", "00:10:00"), "90");
}

TEST_F(QtQuestions, AMessageIsAnsweredByItsMnemonic) {
    Keys("Confirm remove note", "alt+n");
    EXPECT_EQ(prompts_.Message("Remove selected note?\r\nAre You sure?", "Confirm remove note",
                               message_style::Question),
              Answer::No);
}

TEST_F(QtQuestions, TheToolkitsBoxesSayOkAsTheOthersDo) {
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

TEST_F(QtQuestions, AFolderIsPickedByANameThatNoFileHas) {
    FileQuestion question{"Select directory", "All files (*.*)|*.*", "/usr", "$DIR$", 1, false, false};
    Keys("Select directory", "Return");
    EXPECT_EQ(prompts_.File(question), "/usr/$DIR$");
}

} // namespace quorvane
