#include "platform/forms/binding.h"

#include "config/font_binding.h"
#include "config/settings_record.h"
#include "platform/forms/form.h"
#include "platform/memory/memory_platform.h"

#include <gtest/gtest.h>

#include <limits>

namespace quorvane {
namespace {

// One control of each kind that can be bound, on fields of the settings.
class Page : public Form {
  public:
    explicit Page(Forms& forms)
        : Form(forms, "frmSettings") {
        ListView1.SetColumns({{"Directory", 900}, {"Levels", 900}});
        Combo1.SetItems({"EN", "DE"});
        Combo2.SetItems({"a", "b"});
        bindings.Bind(&Settings::PaintCalendar, Check1);
        bindings.Bind(&Settings::AutoStartApplication, Check2);
        bindings.Bind(&Settings::Wallpaper, Text1);
        bindings.Bind(&Settings::ChangeWallpaperInterval, Text2);
        bindings.Bind(&Settings::Latitude, Text3);
        bindings.Bind(&Settings::CaptionFont, &FontRecord::Size, Text4);
        bindings.Bind(&Settings::ScreenEvents, 2, &ScreenEvent::active, Check3);
        bindings.Bind(&Settings::CurrentLanguage, Combo1);
        bindings.Bind(&Settings::GradientStyle, Combo2);
        bindings.Bind(&Settings::Calendar_Position, {&Option1, &Option2, &Option3}, 1);
        bindings.Bind(&Settings::Caption_Color, Command1);
        bindings.Bind(&Settings::CalendarFont, Command2);
        bindings.BindRows(&Settings::WallpaperSources, ListView1, &WallpaperSource::Active,
                          {Cell(&WallpaperSource::Path), Cell(&WallpaperSource::ScanDeepLevel)});
        bindings.BindRows(&Settings::Notes, ListView2, &Note::active,
                          {{[](const Note& note) { return "<" + note.Text + ">"; }, nullptr}});
        bindings.BindBy(
            &Settings::RescanWallpaperSrcInterval,
            [this](std::int32_t minutes) { Text5.SetText(minutes == 0 ? "Never" : "Sometimes"); },
            [this](std::int32_t& minutes) {
                if (Text5.Text() == "Never") minutes = 0;
            });
    }

    CheckBox Check1{*this, "Check1"}, Check2{*this, "Check2"}, Check3{*this, "Check3"};
    TextBox Text1{*this, "Text1"}, Text2{*this, "Text2"}, Text3{*this, "Text3"}, Text4{*this, "Text4"},
        Text5{*this, "Text5"};
    ComboBox Combo1{*this, "Combo1"}, Combo2{*this, "Combo2"};
    OptionButton Option1{*this, "Option1"}, Option2{*this, "Option2"}, Option3{*this, "Option3"};
    Button Command1{*this, "Command1"}, Command2{*this, "Command2"};
    ListView ListView1{*this, "ListView1"}, ListView2{*this, "ListView2"};
    Bindings<Settings> bindings;
};

class BindingTest : public testing::Test {
  protected:
    BindingTest() {
        settings_.PaintCalendar = true;
        settings_.AutoStartApplication = -1;
        settings_.Wallpaper = "/w.bmp";
        settings_.ChangeWallpaperInterval = 300;
        settings_.Latitude = 0.1 + 0.2;
        settings_.CaptionFont.Size = 9.7F;
        settings_.ScreenEvents[2].active = 7;
        settings_.CurrentLanguage = "FR";
        settings_.GradientStyle = 2;
        settings_.Calendar_Position = 3;
        settings_.Caption_Color = Rgb(0, 64, 0);
        settings_.CalendarFont = {true, false, 14, false, true, "Serif"};
        settings_.WallpaperSources.Add({"/a", true, "*.png", "0"});
        settings_.WallpaperSources.Add({"/b", false, "*.jpg", "INF"});
        settings_.Notes.Add({-1, "text", 10, 20});
        settings_.RescanWallpaperSrcInterval = 10;
    }

    MemoryPlatform machine_;
    const Platform platform_ = machine_.Services();
    Forms forms_{platform_};
    Page page_{forms_};
    Settings settings_;
};

TEST_F(BindingTest, WhatIsFilledAndNotEditedComesBackAsItWas) {
    page_.bindings.Fill(settings_);
    EXPECT_TRUE(page_.Check2.Value() && page_.Check3.Value());
    EXPECT_EQ(page_.Text3.Text(), "0.3");
    EXPECT_EQ(page_.Text4.Text(), "9.7");
    EXPECT_EQ(page_.Combo1.ListIndex() + page_.Combo2.ListIndex(), -2) << "not in the lists";
    EXPECT_TRUE(page_.Option3.Value());
    EXPECT_EQ(page_.Command1.BackColor(), Rgb(0, 64, 0));
    EXPECT_EQ(page_.Command2.Font()->name, "Serif");
    EXPECT_EQ(page_.ListView1.Rows()[1].cells, (std::vector<std::string>{"/b", "INF"}));
    EXPECT_TRUE(page_.ListView2.Rows()[0].checked);
    Settings draft = settings_;
    page_.bindings.Apply(draft);
    EXPECT_TRUE(draft == settings_);
}

TEST_F(BindingTest, EditsReachTheDraftThatTheyAreAppliedTo) {
    page_.bindings.Fill(settings_);
    page_.Check2.SetValue(false);
    page_.Text2.SetText("99999999999");
    page_.Text3.SetText("north");
    page_.Text4.SetText("1e39");
    page_.Text5.SetText("Never");
    page_.Combo1.SetListIndex(1);
    page_.Option1.SetValue(true);
    page_.Command1.SetBackColor(Rgb(1, 2, 3));
    page_.Command2.SetFont(FontSpec{"Sans", 8, false, true, false, true});
    page_.ListView1.SetCell(1, 1, "3");
    page_.ListView1.RemoveRow(0);
    page_.ListView1.AddRow({{"/c"}, true, ""});
    page_.ListView2.SetChecked(0, false);
    Settings draft = settings_;
    page_.bindings.Apply(draft);
    EXPECT_EQ(draft.AutoStartApplication, 0);
    EXPECT_EQ(draft.ChangeWallpaperInterval, 300) << "too large for the field";
    EXPECT_EQ(draft.Latitude, 0) << "no number";
    EXPECT_EQ(draft.CaptionFont.Size, 9.7F);
    EXPECT_EQ(draft.RescanWallpaperSrcInterval, 0);
    EXPECT_EQ(draft.CurrentLanguage, "DE");
    EXPECT_EQ(draft.Calendar_Position, 1);
    EXPECT_EQ(draft.Caption_Color, Rgb(1, 2, 3));
    EXPECT_EQ(draft.CalendarFont, (FontRecord{false, true, 8, true, false, "Sans"}));
    ASSERT_EQ(draft.WallpaperSrcCnt(), 2);
    EXPECT_EQ(draft.WallpaperSources[1], (WallpaperSource{"/b", false, "*.jpg", "3"}))
        << "its pattern came along";
    EXPECT_EQ(draft.WallpaperSources[2], (WallpaperSource{"/c", true, "", ""}));
    EXPECT_EQ(draft.Notes[1], (Note{0, "text", 10, 20}));
    const auto fields = page_.bindings.Fields(draft);
    EXPECT_EQ(fields.size(), 15U);
    EXPECT_EQ(fields[5], &draft.CaptionFont.Size);
}

template<typename Field, typename Kind>
concept Binds = requires(Bindings<Settings> bindings, Field Settings::*field, Kind& control) {
    bindings.Bind(field, control);
};
static_assert(Binds<bool, CheckBox> && Binds<std::int16_t, TextBox> && Binds<std::string, RichTextBox>);
static_assert(!Binds<bool, TextBox> && !Binds<std::string, CheckBox> && !Binds<double, Slider>);
static_assert(!Binds<std::int64_t, TextBox> && !Binds<FontRecord, TextBox> && !Binds<float, CheckBox>);

} // namespace
} // namespace quorvane
