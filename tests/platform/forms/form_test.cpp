#include "platform/forms/form.h"

#include "core/locale_strings.h"
#include "platform/forms/controls.h"
#include "platform/forms/menu.h"
#include "platform/memory/memory_platform.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

class FormTest : public testing::Test {
  protected:
    MemoryPlatform machine_;
    Forms forms_{machine_.Services()};
};

class Noted : public Form {
  public:
    Noted(Forms& forms, std::string name, std::string& log)
        : Form(forms, std::move(name))
        , log_(log) {}
    ~Noted() override { log_ += "~" + Name() + " "; }
    std::function<void()> inUnload;

  protected:
    void OnLoad() override { log_ += "+" + Name() + " "; }
    void OnUnload() override {
        log_ += "-" + Name() + " ";
        if (inUnload) inUnload();
    }

  private:
    std::string& log_;
};

TEST_F(FormTest, TimersRunWhileAHiddenFormIsLoadedAndAskNothingOfTheHost) {
    Form form(forms_, "frmEngine");
    int ticks = 0;
    Timer Timer1(form, "Timer1", 1000);
    Timer off(form, "off", 1000, false);
    Timer1.onTimer = [&] { ++ticks; };
    machine_.events.Advance(5000);
    EXPECT_EQ(ticks, 0) << "not loaded";
    form.Load();
    EXPECT_EQ(machine_.events.TimerNames(), (std::vector<std::string>{"Timer1"}));
    machine_.events.Advance(3000);
    EXPECT_EQ(ticks, 3);
    Timer1.SetInterval(500);
    machine_.events.Advance(1000);
    EXPECT_EQ(ticks, 5);
    Timer1.SetInterval(0);
    off.SetEnabled(true);
    EXPECT_EQ(machine_.events.TimerNames(), (std::vector<std::string>{"off"}));
    form.Unload();
    EXPECT_TRUE(machine_.events.TimerNames().empty());
    EXPECT_TRUE(machine_.calls.lines.empty());
}

// A load that takes its time lets events run, and the form's own timers must not find it half loaded.
TEST_F(FormTest, TimersStartWhenTheLoadHasReturned) {
    class Slow : public Form {
      public:
        using Form::Form;
        Timer Timer1{*this, "Timer1", 1000};
        Timer late{*this, "late", 500, false};
        std::function<void()> inLoad;

      protected:
        void OnLoad() override { inLoad(); }
    };
    Slow form(forms_, "frmEngine");
    int ticks = 0;
    form.Timer1.onTimer = form.late.onTimer = [&] { ++ticks; };
    form.inLoad = [&] {
        form.late.SetEnabled(true);
        form.Timer1.SetInterval(700);
        machine_.events.Advance(6000);
    };
    form.Load();
    EXPECT_EQ(ticks, 0);
    machine_.events.Advance(700);
    EXPECT_EQ(ticks, 2);
    form.Unload();
    form.inLoad = [&] { form.Unload(); };
    form.Load();
    EXPECT_TRUE(machine_.events.TimerNames().empty()) << "a load that ended in its own end";
}

TEST_F(FormTest, AllAreUnloadedFromTheLastToTheFirst) {
    std::string log;
    Noted first(forms_, "frmFirst", log);
    Noted& second = forms_.Own(std::make_unique<Noted>(forms_, "frmNote", log));
    Noted third(forms_, "frmError", log);
    Noted late(forms_, "frmLate", log);
    first.Load();
    second.Load();
    third.Load();
    second.inUnload = [&] { late.Load(); };
    EXPECT_EQ(forms_.Find("frmNote"), &second);
    log.clear();
    forms_.UnloadAll("frmError");
    EXPECT_EQ(log, "-frmNote +frmLate -frmLate -frmFirst ") << "one that comes meanwhile goes as well";
    EXPECT_EQ(forms_.Loaded(), (std::vector<Form*>{&third}));
    machine_.events.Pump();
    EXPECT_TRUE(log.ends_with("~frmNote ")) << "an owned form goes once its handlers are over";
}

TEST_F(FormTest, AFailingUnloadStillTakesTheWindowAway) {
    std::string log;
    Noted form(forms_, "frmNote", log);
    form.Show();
    form.inUnload = [] { throw RunTimeError::TypeMismatch(); };
    EXPECT_THROW(form.Unload(), RunTimeError);
    EXPECT_TRUE(forms_.Loaded().empty());
    EXPECT_TRUE(machine_.calls.Has("frmNote.Destroy"));
}

TEST_F(FormTest, HandlersFailIntoTheLoopAndNotIntoTheHost) {
    Form form(forms_, "frmAny");
    Button Command1(form, "Command1", "Fail");
    Command1.onClick = [] { throw RunTimeError::DivisionByZero(); };
    form.SetLayout(Column({Command1}));
    std::string failure;
    machine_.events.OnFailure([&](int number, const char* text) { failure = std::to_string(number) + text; });
    form.Show();
    MemoryFormView::Do(form, &Command1, act::Click{});
    EXPECT_EQ(failure, "11Division by zero");
}

TEST_F(FormTest, LayoutGivesEveryTextItsRoomAndTheRestToWhatStretches) {
    Form form(forms_, "frmAny");
    Label Label1(form, "Label1", "Ten letter");
    TextBox Text1(form, "Text1");
    Button Command1(form, "Command1", "Ok");
    Button Command2(form, "Command2", "A much longer caption");
    CheckBox hidden(form, "hidden", "Takes no room");
    hidden.SetVisible(false);
    form.SetMargin(100);
    form.SetLayout(Column(
        {Row({Label1, Place(Text1).Stretched()}), hidden, Row({Stretch(), Command1, Command2}).Equal()}));
    form.Show();
    EXPECT_EQ(Label1.Bounds().width, 900) << "ten letters of six pixels";
    EXPECT_EQ(Command2.Bounds().width, 21 * 90 + 300);
    EXPECT_EQ(Command1.Bounds().width, Command2.Bounds().width);
    EXPECT_EQ(form.ClientSize().width, 2 * Command2.Bounds().width + 90 + 200);
    EXPECT_EQ(Text1.Bounds().x + Text1.Bounds().width, form.ClientSize().width - 100);
    EXPECT_EQ(Command2.Bounds().y + Command2.Bounds().height, form.ClientSize().height - 100);

    const int before = form.ClientSize().width;
    Command1.SetCaption("A caption of another language, longer than all");
    machine_.events.Pump();
    EXPECT_GT(form.ClientSize().width, before) << "a translated caption is not cut";
    hidden.SetVisible(true);
    machine_.events.Pump();
    EXPECT_GT(hidden.Bounds().height, 0);
    EXPECT_GT(Command1.Bounds().y, hidden.Bounds().y);
}

TEST_F(FormTest, WordsThatComeWhileALanguageHoldsAreInIt) {
    LocaleStrings strings;
    strings.SetLoaded(true);
    strings.Set(9, "Be&enden");
    strings.Set(210, "Rahmen");
    Forms forms(machine_.Services(), &strings);
    Form form(forms, "frmAny");
    Frame late(form, "late", {"Frame", 210});
    EXPECT_EQ(late.Caption(), "Rahmen");
    Menu mnu_popup(form, "mnu_popup");
    mnu_popup.onOpen = [&] { mnu_popup.Add("late", 0, {"E&xit", 9}); };
    mnu_popup.Open();
    EXPECT_EQ(mnu_popup.Items()[0].caption.Text(), "Be&enden");
}

TEST_F(FormTest, AResizeIsForFormsThatHaveNoSizeOfTheirOwn) {
    Form form(forms_, "frmAny");
    Button Command1(form, "Command1", "Ok");
    form.SetLayout(Column({Command1}));
    int resized = 0;
    form.onResize = [&] { ++resized; };
    form.Resize({9000, 9000});
    EXPECT_NE(form.NativeHandle(Command1), 0U) << "before the first showing";
    EXPECT_TRUE(form.IsLoaded());
    EXPECT_FALSE(form.IsVisible());
    const TwipSize own = form.ClientSize();
    form.Resize({9000, 9000});
    EXPECT_EQ(form.ClientSize(), own);
    EXPECT_EQ(resized, 0);
    form.SetBorder(BorderStyle::Sizable);
    form.Resize({9000, 10});
    EXPECT_EQ(form.ClientSize(), (TwipSize{9000, own.height})) << "no less than the layout needs";
    EXPECT_EQ(resized, 1);
    Form painted(forms_, "frmPainted");
    painted.Resize({10, 20});
    EXPECT_EQ(painted.ClientSize(), (TwipSize{10, 20}));
}

TEST_F(FormTest, APictureIsPaintedOnceForSizeAndContentTogether) {
    Form form(forms_, "frmAny");
    PictureBox Picture1(form, "Picture1");
    int paints = 0;
    Picture1.onPaint = [&](Surface&) { ++paints; };
    form.SetLayout(Column({Picture1}));
    form.Show();
    EXPECT_EQ(paints, 1);
    Picture1.SetBackColor(Rgb(9, 9, 9));
    Picture1.SetBackColor(Rgb(9, 9, 9));
    EXPECT_EQ(paints, 2);
    EXPECT_EQ(Picture1.Painted()->Pixels().top[0], 9) << "the ground has the new colour";
    Picture1.SetPreferred({3000, 3000});
    Picture1.Refresh();
    machine_.events.Pump();
    EXPECT_EQ(paints, 3);
    EXPECT_EQ(Picture1.Painted()->Size(), (PixelSize{200, 200}));
    Picture1.Refresh();
    EXPECT_EQ(paints, 4);
}

TEST_F(FormTest, ThirteenTabsStandInRowsThatFitADialogue) {
    Form form(forms_, "frmAny");
    TabStrip TabStrip1(form, "TabStrip1");
    Label Label1(TabStrip1, "Label1",
                 "A page of a usual width, as dialogues have them: seventy letters in all.");
    TabStrip1.SetLayout(Column({Label1}));
    TabStrip1.SetTabs(std::vector<Words>(13, "&Blacklisted things"));
    form.SetLayout(Column({TabStrip1}));
    form.Show();
    EXPECT_EQ(TabStrip1.TabRows(), (std::vector<int>{4, 4, 4, 1}));
    EXPECT_LT(form.LeastSize().width, 600 * 15 + 400);
    EXPECT_EQ(TabStrip1.Bounds().width, 4 * (18 * 90 + 360)) << "as narrow as so many rows can be";
    const int height = form.LeastSize().height;
    TabStrip1.SetTabs({"&General", "&Notes"});
    machine_.events.Pump();
    EXPECT_EQ(TabStrip1.TabRows(), (std::vector<int>{2}));
    EXPECT_EQ(height - form.LeastSize().height, 3 * 330) << "three rows less";
}

TEST_F(FormTest, TextsOfArbitraryBytesPassTheFilter) {
    Form form(forms_, "frmAny");
    TextBox Text1(form, "Text1");
    Text1.keyFilter = [](char32_t letter) -> char32_t { return letter == U'x' ? 0 : letter; };
    Text1.maxLength = 6;
    form.Show();
    for (const std::string text :
         {"\xFF\xFE", "a\xC3", "\xC3\xA9x\xC3", "\xE2\x82\xACx\xF0\x9F", "", "\x80\x80\x80"}) {
        MemoryFormView::Do(form, &Text1, act::Type{text, static_cast<int>(text.size())});
        EXPECT_EQ(Text1.Text().find('x'), std::string::npos);
        EXPECT_LE(Text1.SelectionStart(), static_cast<int>(Text1.Text().size()));
    }
    Text1.SetText("abc");
    MemoryFormView::Do(form, &Text1, act::Type{"axbyc", 4});
    EXPECT_EQ(Text1.Text(), "abyc");
}

} // namespace
} // namespace quorvane
