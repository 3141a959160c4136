#include "config/system_colors.h"
#include "dialogues/frm_transparency.h"
#include "dialogues/input_box.h"
#include "dialogues/mess_box.h"
#include "platform/forms/dump.h"
#include "platform/memory/memory_platform.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

class SmallDialogues : public testing::Test {
  protected:
    // What a person does while the next modal form waits.
    void WhenAsked(std::function<void()> act) { machine_.events.WhenWaiting(std::move(act)); }

    MemoryPlatform machine_;
    const Platform platform_ = machine_.Services();
    Forms forms_{platform_};
};

TEST_F(SmallDialogues, AnInputBoxAnswersItsLineOrNothing) {
    InputBox box(forms_);
    WhenAsked([&] {
        EXPECT_EQ(DumpForm(box), "Form InputBox \"Set timer\"\n"
                                 "  Label Label1 \"Hours && minutes:\"\n"
                                 "  TextBox Text1 = \"00:10:00\"\n"
                                 "  Button Command1 \"&Ok\" #120 default\n"
                                 "  Button Command2 \"&Cancel\" #121 cancel\n");
        EXPECT_EQ(box.Text1.SelectionLength(), 8) << "typing replaces the preset";
        MemoryFormView::Do(box, &box.Text1, act::Type{"90", 2});
        MemoryFormView::Do(box, &box.Text1, act::Key{key_code::Enter, 0});
    });
    EXPECT_EQ(box.Ask("Hours & minutes:", "Set timer", "00:10:00"), "90");
    WhenAsked([&] { MemoryFormView::Do(box, &box.Text1, act::Key{key_code::Escape, 0}); });
    EXPECT_EQ(box.Ask("Again:", "Set timer", "1"), "");
    WhenAsked([&] { MemoryFormView::Do(box, nullptr, act::CloseByFrame{}); });
    EXPECT_EQ(box.Ask("Again:", "Set timer", "1"), "");
}

TEST_F(SmallDialogues, AMessageDoesNotWaitAndASecondOneTakesTheFirstOnesPlace) {
    MessBox box(forms_);
    box.Tell("Time interval - Ok.", "Timer");
    box.Tell("Another message", "Clock");
    EXPECT_EQ(machine_.calls.Count("MessBox.Create"), 1);
    EXPECT_EQ(DumpForm(box), "Form MessBox \"Clock\"\n"
                             "  Label Label1 \"Another message\"\n"
                             "  Button Command1 \"&Ok\" #120 default cancel\n");
    MemoryFormView::Do(box, &box.Command1, act::Click{});
    EXPECT_FALSE(box.IsVisible());
    box.Tell("Third", "Clock");
    MemoryFormView::Do(box, nullptr, act::CloseByFrame{});
    EXPECT_FALSE(box.IsVisible());
    EXPECT_TRUE(box.IsLoaded());
}

TEST_F(SmallDialogues, TransparencyShowsEachStepAndKeepsOnlyWhatIsApplied) {
    Form window(forms_, "FrmClock");
    std::int32_t Transparency_Value = 200;
    frmTransparency dialogue(forms_);
    WhenAsked([&] {
        EXPECT_EQ(DumpForm(dialogue), "Form frmTransparency \"Transparency\" #123\n"
                                      "  Frame Frame1 \"Transparency value\" #124\n"
                                      "    Slider Slider1 = 200 in 0..255\n"
                                      "    Label lblValue \"200\"\n"
                                      "  Button Command1 \"&Apply\" #122 default\n"
                                      "  Button Command2 \"&Cancel\" #121 cancel\n");
        EXPECT_EQ(window.Opacity(), 200);
        MemoryFormView::Do(dialogue, &dialogue.Slider1, act::Slide{120, true});
        EXPECT_EQ(window.Opacity(), 120) << "while the thumb is held";
        MemoryFormView::Do(dialogue, &dialogue.Slider1, act::Slide{90, false});
        EXPECT_EQ(window.Opacity(), 90);
        EXPECT_EQ(Transparency_Value, 200);
        dialogue.Command2.Press();
    });
    dialogue.Adjust(window, Transparency_Value);
    EXPECT_EQ(window.Opacity(), 200) << "cancelled";
    WhenAsked([&] {
        MemoryFormView::Do(dialogue, &dialogue.Slider1, act::Slide{64, false});
        dialogue.Command1.Press();
    });
    dialogue.Adjust(window, Transparency_Value);
    EXPECT_EQ(window.Opacity(), 64);
    EXPECT_EQ(Transparency_Value, 64);
    EXPECT_FALSE(dialogue.IsLoaded());
}

TEST(ButtonFace, IsPartedAtItsFirstAndLastBlank) {
    EXPECT_EQ(ParseSystemColor("212   208   200"), Rgb(212, 208, 200)) << "further blanks lie between";
    EXPECT_EQ(ParseSystemColor("1 2 3 4"), Rgb(1, 23, 4)) << "all between the outer ones is one number";
    EXPECT_EQ(ParseSystemColor("300 -5 7"), Rgb(255, 0, 7));
    for (const char* none : {"212 208", "red", ""})
        EXPECT_EQ(ParseSystemColor(none), std::nullopt) << none;
}

} // namespace
} // namespace quorvane
