#include "tests/contracts/conformance/conformance.h"

#include "core/text.h"

#include <gtest/gtest.h>

namespace quorvane {

ConformanceForm::ConformanceForm(Forms& forms)
    : Form(forms, "frmConformance") {
    SetCaption({"Every kind of control", 206});
    SetDefaultButton(&cmdOk);
    SetCancelButton(&cmdCancel);
    Fill();
    Listen();
    Arrange();
}

void ConformanceForm::Fill() {
    txtName.SetText("Quorvane");
    txtCount.SetText("5");
    txtCount.maxLength = 4;
    txtCount.keyFilter = [](char32_t letter) -> char32_t {
        if (letter >= U'a' && letter <= U'z') letter -= U'a' - U'A';
        return (letter >= U'0' && letter <= U'9') || letter == U'I' ? letter : 0;
    };
    txtText.SetText("one\r\ntwo");
    txtText.lines = 2;
    txtText.columns = 24;
    rtbMessage.SetText("Wake up");
    rtbMessage.lines = 2;
    rtbMessage.columns = 24;
    optKind[0].SetValue(true);
    optOther.SetValue(true);
    cboUnit.SetItems({"second(s)", "minute(s)", {"hour(s)", 205}});
    cboUnit.SetListIndex(1);
    cboFree.SetItems({"Arial", "Courier"});
    cboFree.SetText("Tahoma");
    lvwAlarms.SetColumns({{{"Alarm name", 209}, 1500}, {"Alarm time", 1500}});
    lvwAlarms.SetCheckBoxes(true);
    lvwAlarms.SetRows(
        {{{"Tea", "HH == 17"}, true, ""}, {{"Meeting", "DW = 1"}, false, ""}, {{"Holiday"}, false, ""}});
    lvwAlarms.lines = 4;
    tabPages.SetTabs({{"&General", 204}, "&Notes", "Abou&t"});
    lblPage[2].SetVisible(false);
    sldAlpha.SetRange(0, 255);
    sldAlpha.SetValue(128);
    prgDone.SetRange(0, 75);
    prgDone.SetValue(25);
    scrZone.SetRange(-12, 13);
    dtpStart.SetValue({2008, 2, 29, 12, 30, 15});
    mvwDay.SetValue({2008, 2, 29});
    picFace.SetPreferred({1200, 900});
    picFace.onPaint = [](Surface& surface) {
        const PixelSize size = surface.Size();
        surface.Fill({0, 0, size.width, size.height}, Rgb(20, 60, 140));
        surface.Fill({size.width / 4, size.height / 4, size.width / 2, size.height / 2}, Rgb(250, 220, 90));
    };
    cmdOff.SetEnabled(false);

    MenuItem& file = mnuBar.Add("mnu_file", NoIndex, "&File");
    file.Add("mnu_open", 0, {"&Open", 207}, [this] { log.push_back("menu Open"); });
    file.AddSeparator();
    file.Add("mnu_exit", 1, "E&xit", [this] { log.push_back("menu Exit"); });
    MenuItem& views = mnuBar.Add("mnu_views", NoIndex, "&Views");
    views.Add("mnu_top", 0, "On top").checked = true;
    views.items[0].onClick = [this] {
        MenuItem& top = mnuBar.Items()[1].items[0];
        top.checked = !top.checked;
        log.push_back(top.checked ? "menu On top" : "menu not on top");
    };
    mnuBar.onOpen = [this] { log.push_back("bar opens"); };
    SetMenuBar(&mnuBar);
    popup.onOpen = [this] {
        log.push_back("popup opens");
        BuildPopup("as opened");
        tmrTick.SetEnabled(true);
    };
    tmrTick.onTimer = [this] {
        tmrTick.SetEnabled(false);
        BuildPopup("built anew");
    };
    SetPopupMenu(&popup);
}

void ConformanceForm::BuildPopup(const std::string& when) {
    popup.Clear();
    for (int i = 0; i < 3; ++i) {
        const std::string caption = "Entry " + std::to_string(i) + ' ' + when;
        popup.Add("mnu_popup", i, caption, [this, caption] { log.push_back(caption); });
    }
}

void ConformanceForm::Listen() {
    const auto logClicks = [this](auto&... controls) {
        ((controls.onClick = [this, &controls] { log.push_back(controls.FullName() + " clicked"); }), ...);
    };
    const auto logValue = [this](Control& control) {
        return [this, &control] { log.push_back(control.FullName() + " = " + control.ValueText()); };
    };
    const auto logChoices = [&](auto&... controls) { ((controls.onClick = logValue(controls)), ...); };
    const auto logChanges = [&](auto&... controls) { ((controls.onChange = logValue(controls)), ...); };
    logClicks(lblPage[1], fraKind, picFace, cmdOk, cmdCancel, cmdOff);
    logChoices(chkActive, optKind[0], optKind[1], optOther, cboUnit, cboFree);
    logChanges(txtName, txtCount, txtText, rtbMessage, cboFree, sldAlpha, scrZone, dtpStart, mvwDay);
    lvwAlarms.onItemClick = [this] { log.push_back("row " + std::to_string(lvwAlarms.SelectedRow())); };
    lvwAlarms.onItemCheck = [this](int row) {
        log.push_back("row " + std::to_string(row) + " checked or cleared");
    };
    lvwAlarms.onDoubleClick = [this] { log.push_back("lvwAlarms double click"); };
    tabPages.onClick = [this] {
        lblPage[1].SetVisible(tabPages.SelectedTab() == 0);
        lblPage[2].SetVisible(tabPages.SelectedTab() == 1);
        log.push_back("tab " + std::to_string(tabPages.SelectedTab()));
    };
    onMouse = [this](const act::Mouse& mouse) {
        const char* const phases[] = {"down", "move", "up"};
        const bool inCorner = mouse.at.x < Margin() && mouse.at.y > ClientSize().height - Margin();
        const std::string line = std::string("mouse ") + phases[static_cast<int>(mouse.phase)] + ' ' +
                                 std::to_string(mouse.button) + ' ' + std::to_string(mouse.shift) +
                                 (inCorner ? "" : " elsewhere");
        // Displays tell more moves than there were.
        if (mouse.phase != act::MousePhase::Move ||
            (mouse.button != 0 && (log.empty() || line != log.back())))
            log.push_back(line);
    };
    onDoubleClick = [this] { log.push_back("double click"); };
    txtText.onKeyDown = [this](const act::Key& key) {
        if (key.code != key_code::Enter || key.shift != shift_state::Ctrl) return false;
        log.push_back("txtText Ctrl+Enter");
        return true;
    };
}

void ConformanceForm::Arrange() {
    fraKind.SetLayout(Column({optKind[0], optKind[1], optOther}));
    tabPages.SetLayout(Stack({Column({lblPage[1]}), Column({lblPage[2]})}));
    SetLayout(Column({
        Row({
            Column({
                Grid(2, {lblName, Place(txtName).Stretched(), lblCount, txtCount}),
                txtText,
                rtbMessage,
                chkActive,
                fraKind,
                Row({cboUnit, cboFree}),
            }),
            Column({Place(lvwAlarms).Stretched(), tabPages, sldAlpha, prgDone, scrZone}).Stretched(),
            Column({dtpStart, mvwDay, Row({Stretch(), picFace, Stretch()})}),
        }),
        Row({Stretch(), cmdOk, cmdCancel, cmdOff}).Equal(),
    }));
}

bool ConformanceForm::OnCloseByFrame() {
    log.push_back("close by frame");
    return true;
}

TwipPoint GroundOf(const Form& form) {
    return {form.Margin() / 2, form.ClientSize().height - form.Margin() / 2};
}

std::string LookText(const std::string& tip, Color fore, Color back) {
    const auto text = [](Color color) {
        return std::to_string(Red(color)) + "," + std::to_string(Green(color)) + "," +
               std::to_string(Blue(color));
    };
    return "tip " + Quoted(tip) + " fore " + text(fore) + " back " + text(back);
}

std::string TakenLog(ConformanceForm& form, Hands& hands) {
    hands.Settle();
    std::string lines;
    for (const std::string& line : form.log)
        lines += (lines.empty() ? "" : "; ") + line;
    form.log.clear();
    return lines;
}

void CheckMirror(ConformanceForm& form, Hands& hands, const char* when) {
    hands.Settle();
    for (Control* control : form.Controls())
        EXPECT_EQ(hands.Shown(*control), control->ValueText()) << control->FullName() << ' ' << when;
}

namespace {

void CheckPerson(ConformanceForm& form, Hands& hands) {
    hands.Type(form.txtName, "s");
    EXPECT_EQ(TakenLog(form, hands), "txtName = \"Quorvanes\"");
    hands.Type(form.txtName, "\xC3\xA9");
    EXPECT_EQ(TakenLog(form, hands), "txtName = \"Quorvanes\xC3\xA9\"");
    hands.Type(form.txtCount, "i-7");
    EXPECT_EQ(TakenLog(form, hands), "txtCount = \"5I\"; txtCount = \"5I7\"")
        << "letters are filtered and folded";
    hands.Type(form.txtCount, "89");
    EXPECT_EQ(TakenLog(form, hands), "txtCount = \"5I78\"") << "no more than four letters";
    hands.Type(form.txtText, "!\n");
    EXPECT_EQ(TakenLog(form, hands), "txtText = \"one\\r\\ntwo!\"; txtText = \"one\\r\\ntwo!\\r\\n\"");
    hands.PressKey(form.txtText, key_code::Enter, shift_state::Ctrl);
    EXPECT_EQ(TakenLog(form, hands), "txtText Ctrl+Enter") << "the key is used up, the text stays";
    hands.Type(form.rtbMessage, "!");
    EXPECT_EQ(TakenLog(form, hands), "rtbMessage = \"Wake up!\"");
    hands.Toggle(form.chkActive);
    hands.Toggle(form.chkActive);
    EXPECT_EQ(TakenLog(form, hands), "chkActive = checked; chkActive = clear");
    hands.Toggle(form.optKind[1]);
    hands.Toggle(form.optKind[1]);
    EXPECT_EQ(TakenLog(form, hands), "optKind(1) = chosen") << "a chosen option stays, and says so once";
    EXPECT_FALSE(form.optKind[0].Value());
    EXPECT_TRUE(form.optOther.Value()) << "another group";
    hands.Choose(form.cboUnit, 2);
    EXPECT_EQ(TakenLog(form, hands), "cboUnit = 2 \"hour(s)\" of 3");
    hands.Type(form.cboFree, "s");
    EXPECT_EQ(TakenLog(form, hands), "cboFree = -1 \"Tahomas\" of 2");
    hands.Choose(form.cboFree, 1);
    EXPECT_EQ(TakenLog(form, hands), "cboFree = 1 \"Courier\" of 2");
    hands.Choose(form.lvwAlarms, 1);
    EXPECT_EQ(TakenLog(form, hands), "row 1");
    hands.CheckRow(form.lvwAlarms, 1);
    EXPECT_EQ(TakenLog(form, hands), "row 1 checked or cleared");
    hands.DoubleClick(form.lvwAlarms);
    EXPECT_EQ(TakenLog(form, hands), "lvwAlarms double click");
    hands.Choose(form.tabPages, 1);
    EXPECT_EQ(TakenLog(form, hands), "tab 1");
    EXPECT_TRUE(form.lblPage[2].IsShown());
    hands.Choose(form.tabPages, 0);
    EXPECT_EQ(TakenLog(form, hands), "tab 0");
    hands.Step(form.sldAlpha, 1);
    EXPECT_EQ(TakenLog(form, hands), "sldAlpha = 129 in 0..255");
    hands.Step(form.scrZone, -1);
    EXPECT_EQ(TakenLog(form, hands), "scrZone = -1 in -12..13");
    hands.PickDate(form.dtpStart, {2009, 12, 31, 23, 59, 58});
    EXPECT_EQ(form.dtpStart.Value(), (DateTime{2009, 12, 31, 23, 59, 58}));
    EXPECT_TRUE(TakenLog(form, hands).ends_with("dtpStart = 2009-12-31 23:59:58"));
    hands.PickDate(form.mvwDay, {2008, 2, 14});
    EXPECT_EQ(TakenLog(form, hands), "mvwDay = 2008-02-14");
    hands.Click(form.lblPage[1]);
    EXPECT_EQ(TakenLog(form, hands), "lblPage(1) clicked");
    hands.Click(form.fraKind);
    EXPECT_EQ(TakenLog(form, hands), "fraKind clicked");
    hands.Click(form.picFace);
    EXPECT_EQ(TakenLog(form, hands), "picFace clicked");
    hands.Click(form.cmdOk);
    EXPECT_EQ(TakenLog(form, hands), "cmdOk clicked");
    hands.Click(form.cmdOff);
    EXPECT_EQ(TakenLog(form, hands), "") << "a button that is switched off";
    form.fraKind.SetEnabled(false);
    hands.Toggle(form.optKind[0]);
    EXPECT_EQ(TakenLog(form, hands), "") << "in a frame that is switched off";
    form.fraKind.SetEnabled(true);
    hands.PressKey(form.txtName, key_code::Enter, 0);
    EXPECT_EQ(TakenLog(form, hands), "cmdOk clicked");
    hands.PressKey(form.txtName, key_code::Escape, 0);
    EXPECT_EQ(TakenLog(form, hands), "cmdCancel clicked");
    hands.ChooseFromMenuBar(form, 0, 2);
    EXPECT_EQ(TakenLog(form, hands), "bar opens; menu Exit");
    hands.ChooseFromMenuBar(form, 1, 0);
    EXPECT_EQ(TakenLog(form, hands), "bar opens; menu not on top");
}

// What is done to the form itself.
void CheckGround(ConformanceForm& form, Hands& hands) {
    using enum act::MousePhase;
    const auto mouse = [&](act::MousePhase phase, int button, int shift) {
        TwipPoint at = GroundOf(form);
        if (phase == Move) at.x += form.Host().Scale().TwipsX(1);
        hands.Mouse(form, nullptr, phase, button, shift, at);
    };
    mouse(Down, 1, shift_state::Ctrl);
    mouse(Move, 1, 0);
    mouse(Up, 1, 0);
    EXPECT_EQ(TakenLog(form, hands), "mouse down 1 2; mouse move 1 0; mouse up 1 0");
    mouse(Down, 4, 0);
    mouse(Up, 4, 0);
    EXPECT_EQ(TakenLog(form, hands), "mouse down 4 0; mouse up 4 0");
    hands.DoubleClickGround(form);
    EXPECT_EQ(TakenLog(form, hands),
              "mouse down 1 0; mouse up 1 0; mouse down 1 0; double click; mouse up 1 0");
    const auto builtAnew = [&form] { return form.popup.Items()[0].caption.Text().ends_with("built anew"); };
    hands.PickFromPopup(form, nullptr, 2, builtAnew);
    EXPECT_EQ(TakenLog(form, hands), "mouse down 2 0; mouse up 2 0; popup opens; Entry 2 as opened");
    hands.PickFromPopup(form, &form.cmdOk, 1, builtAnew);
    EXPECT_EQ(TakenLog(form, hands), "popup opens; Entry 1 as opened") << "what was shown is what was picked";
}

// The same events by code. The host shows the new values and reports nothing of its own.
void CheckCode(ConformanceForm& form, Hands& hands) {
    form.txtName.SetText("\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82");
    form.txtName.SetText(form.txtName.Text());
    form.txtText.SetText("a\r\n\r\nb");
    form.rtbMessage.SetText("x");
    form.chkActive.SetValue(true);
    form.optKind[0].SetValue(true);
    form.cboUnit.SetListIndex(0);
    form.cboFree.SetText("Courier New");
    form.lvwAlarms.SelectRow(2);
    form.lvwAlarms.SetChecked(0, false);
    form.tabPages.SelectTab(2);
    form.sldAlpha.SetValue(400);
    form.prgDone.SetValue(50);
    form.scrZone.SetValue(13);
    form.dtpStart.SetValue({1999, 1, 2, 3, 4, 5});
    form.mvwDay.SetValue({2000, 2, 29});
    EXPECT_EQ(
        TakenLog(form, hands),
        "txtName = \"\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82\"; "
        "txtText = \"a\\r\\n\\r\\nb\"; rtbMessage = \"x\"; chkActive = checked; "
        "optKind(0) = chosen; cboUnit = 0 \"second(s)\" of 3; cboFree = -1 \"Courier New\" of 2; row 2; "
        "row 0 checked or cleared; tab 2; sldAlpha = 255 in 0..255; scrZone = 13 in -12..13; "
        "dtpStart = 1999-01-02 03:04:05; mvwDay = 2000-02-29");
    CheckMirror(form, hands, "after changes by code");

    form.lvwAlarms.RemoveRow(0);
    form.lvwAlarms.AddRow({{"New", "now"}, true, ""});
    form.lvwAlarms.SetCell(0, 1, "never");
    form.cboUnit.SetItems({"day(s)"});
    form.tabPages.SetTabCaption(0, "All&gemein");
    form.scrZone.SetRange(0, 5);
    form.prgDone.SetRange(0, 10);
    EXPECT_EQ(TakenLog(form, hands), "scrZone = 5 in 0..5");
    CheckMirror(form, hands, "after new entries and limits");
}

} // namespace

SmallForm::SmallForm(Forms& forms, std::string name)
    : Form(forms, std::move(name)) {
    SetCaption(Name());
    SetLayout(Column({cmdPress}));
    cmdPress.onClick = [this] { ++presses; };
}

void CheckModality(Forms& forms, const Presser& press) {
    SmallForm below(forms, "frmBelow");
    SmallForm modal(forms, "frmModal");
    SmallForm alarm(forms, "frmAlarm");
    SmallForm second(forms, "frmSecond");
    SmallForm late(forms, "frmLate");
    // Those that a person can use, of the ones that are shown.
    const auto free = [&] {
        std::string names;
        for (SmallForm* form : {&below, &modal, &alarm, &second, &late}) {
            if (!form->IsVisible()) continue;
            const int before = form->presses;
            press(*form);
            EXPECT_EQ(form->presses > before, !form->IsBlocked()) << form->Name();
            if (form->presses > before) names += form->Name().substr(3) + ' ';
        }
        return names;
    };
    int place = 0;
    for (SmallForm* form : {&below, &modal, &alarm, &second, &late})
        form->MoveTo(3000 * place, 1500 * place), ++place;
    below.Show();
    EXPECT_EQ(free(), "Below ");
    forms.Events().Post([&] {
        EXPECT_EQ(free(), "Modal ");
        EXPECT_FALSE(modal.HasTaskBarEntry()) << "the window below leads to it";
        alarm.Show();
        EXPECT_EQ(free(), "Modal Alarm ") << "what is shown later is free";
        forms.Events().Post([&] {
            EXPECT_EQ(free(), "Second ");
            late.Show();
            EXPECT_EQ(free(), "Second Late ");
            alarm.Unload();
            alarm.Show();
            EXPECT_EQ(free(), "Alarm Second Late ") << "shown anew";
            second.Hide();
        });
        second.ShowModal();
        EXPECT_EQ(free(), "Modal Alarm Late ") << "the one below rules again";
        below.Unload();
        EXPECT_TRUE(modal.HasTaskBarEntry()) << "nothing else leads to it";
        EXPECT_EQ(free(), "Modal Alarm Late ") << "though the one that it came up over has gone";
        below.Show();
        modal.Hide();
    });
    modal.ShowModal();
    EXPECT_EQ(free(), "Below Alarm Late ");
    for (SmallForm* form : {&below, &modal, &alarm, &second, &late})
        form->Unload();
}

void CheckConformance(ConformanceForm& form, Hands& hands, LocaleStrings& strings) {
    form.Show();
    CheckMirror(form, hands, "when first shown");
    EXPECT_EQ(TakenLog(form, hands), "") << "showing a form raises nothing";
    CheckPerson(form, hands);
    CheckGround(form, hands);
    Control* const before = form.ActiveControl();
    form.txtNowhere.SetFocus();
    EXPECT_EQ(TakenLog(form, hands), "");
    EXPECT_EQ(form.ActiveControl(), before) << "what has no place cannot have the keyboard";
    CheckMirror(form, hands, "after what a person did");
    CheckTabOrder(form, hands);
    CheckMouse(form, hands);
    CheckLook(form, hands);
    CheckLanguage(form, hands, strings);
    CheckCode(form, hands);

    EXPECT_EQ(DumpForm(form),
              "Form frmConformance \"Every kind of control\" #206\n"
              "  Menu mnuBar bar\n"
              "    MenuItem mnu_file \"&File\"\n"
              "      MenuItem mnu_open(0) \"&Open\" #207\n"
              "      MenuItem \"-\"\n"
              "      MenuItem mnu_exit(1) \"E&xit\"\n"
              "    MenuItem mnu_views \"&Views\"\n"
              "      MenuItem mnu_top(0) \"On top\"\n"
              "  Label lblName \"&Name:\"\n"
              "  TextBox txtName = \"\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82\"\n"
              "  Label lblCount \"Count\"\n"
              "  TextBox txtCount = \"5I78\"\n"
              "  TextBox txtText = \"a\\r\\n\\r\\nb\"\n"
              "  RichTextBox rtbMessage = \"x\"\n"
              "  CheckBox chkActive \"&Active && shown\" = checked\n"
              "  Frame fraKind \"Kind\" #203\n"
              "    OptionButton optKind(0) \"First\" #201 = chosen\n"
              "    OptionButton optKind(1) \"Second\" #202 = clear\n"
              "    OptionButton optOther \"Other group\" = chosen\n"
              "  ComboBox cboUnit = -1 \"\" of 1\n"
              "  ComboBox cboFree = -1 \"Courier New\" of 2\n"
              "  ListView lvwAlarms = 1 [x] \"Meeting\"|\"never\" [ ] \"Holiday\"|\"\" [x] \"New\"|\"now\"\n"
              "  TabStrip tabPages = 2 \"All&gemein\" \"&Notes\" \"Abou&t\"\n"
              "    Label lblPage(1) \"Page of the first tab\" hidden\n"
              "    Label lblPage(2) \"A longer page of the second tab\" hidden\n"
              "  Slider sldAlpha = 255 in 0..255\n"
              "  ProgressBar prgDone = 10 in 0..10\n"
              "  ScrollBar scrZone = 5 in 0..5\n"
              "  DatePicker dtpStart = 1999-01-02 03:04:05\n"
              "  MonthView mvwDay = 2000-02-29\n"
              "  PictureBox picFace\n"
              "  Button cmdOk \"&Ok\" default\n"
              "  Button cmdCancel \"Cancel\" cancel\n"
              "  Button cmdOff \"Not now\" disabled\n"
              "  TextBox txtNowhere = \"\"\n"
              "  Timer tmrTick = 50 disabled\n");

    CheckPlace(form, hands);
    hands.CloseByFrame(form);
    EXPECT_EQ(TakenLog(form, hands), "close by frame; unload");
    EXPECT_FALSE(form.IsLoaded());
    form.Show();
    CheckMirror(form, hands, "when shown again");
    CheckRows(form.lvwAlarms, hands);
    form.cmdOk.onClick = [&form] { form.Unload(); };
    hands.PressKey(form.cmdOk, key_code::Space, 0);
    EXPECT_EQ(TakenLog(form, hands), "unload") << "by a button of its own, in the middle of its key";
}

} // namespace quorvane
