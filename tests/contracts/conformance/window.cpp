#include "tests/contracts/conformance/conformance.h"

#include <chrono>
#include <gtest/gtest.h>

namespace quorvane {

namespace {

std::string Point(const TwipPoint& at) {
    return std::to_string(at.x) + "," + std::to_string(at.y);
}

// Asks again until it holds: what a window manager does takes its time.
bool Becomes(Hands& hands, const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        hands.Settle();
    }
    return true;
}

} // namespace

void CheckLook(ConformanceForm& form, Hands& hands) {
    form.lblName.SetForeColor(Rgb(200, 10, 20));
    form.lblName.SetBackColor(Rgb(250, 240, 180));
    form.txtName.SetForeColor(Rgb(0, 70, 140));
    form.txtName.SetBackColor(Rgb(225, 245, 225));
    form.txtName.SetToolTip("Your name");
    form.txtText.SetReadOnly(true);
    EXPECT_EQ(hands.ShownLook(form.lblName), "tip \"\" fore 200,10,20 back 250,240,180");
    EXPECT_EQ(hands.ShownLook(form.txtName), "tip \"Your name\" fore 0,70,140 back 225,245,225");
    const std::string text = form.txtText.Text();
    hands.Type(form.txtText, "x");
    EXPECT_EQ(TakenLog(form, hands), "");
    EXPECT_EQ(hands.Shown(form.txtText), Quoted(text)) << "it can only be read";
    EXPECT_NE(DumpForm(form).find("TextBox txtName = " + form.txtName.ValueText() +
                                  " tip \"Your name\" fore 0,70,140 back 225,245,225\n"),
              std::string::npos);
    EXPECT_NE(DumpForm(form).find("TextBox txtText = " + Quoted(text) + " read-only\n"), std::string::npos);
    form.txtText.SetReadOnly(false);
    form.txtName.SetToolTip("");
    for (Control* control : {static_cast<Control*>(&form.lblName), static_cast<Control*>(&form.txtName)}) {
        control->SetForeColor(std::nullopt);
        control->SetBackColor(std::nullopt);
    }
    hands.Type(form.txtText, "x");
    EXPECT_EQ(TakenLog(form, hands), "txtText = " + Quoted(text + "x"));
}

void CheckLanguage(ConformanceForm& form, Hands& hands, LocaleStrings& strings) {
    strings.SetLoaded(true);
    strings.Set(201, "Erste");
    strings.Set(203, "Eine Art, die breiter ist");
    strings.Set(204, "&Allgemein");
    strings.Set(205, "Stunde(n)");
    strings.Set(206, "Jede Art");
    strings.Set(207, "&\u00D6ffnen");
    strings.Set(208, "Ihr Name");
    strings.Set(209, "Name des Weckers");
    strings.Set(210, "Anzahl");
    form.txtName.SetToolTip({"Your name", 208});
    strings.SetRightToLeft(true);
    form.Collection().Localise();
    EXPECT_EQ(TakenLog(form, hands), "") << "other words are no event";
    EXPECT_TRUE(form.RightToLeft());
    EXPECT_EQ(form.optKind[0].Caption(), "Erste");
    EXPECT_EQ(form.optKind[1].Caption(), "Second") << "a word that the file lacks";
    EXPECT_EQ(form.tabPages.Tabs()[0].Text(), "&Allgemein");
    EXPECT_EQ(form.cboUnit.Text(), "Stunde(n)");
    EXPECT_EQ(form.Caption() + form.mnuBar.Items()[0].items[0].caption.Text(), "Jede Art&\u00D6ffnen");
    EXPECT_TRUE(hands.ShownLook(form.txtName).starts_with("tip \"Ihr Name\""));
    EXPECT_EQ(form.lvwAlarms.Columns()[0].caption.Text(), "Name des Weckers");
    form.lblCount.SetCaption({"Count", 210});
    EXPECT_EQ(form.lblCount.Caption(), "Anzahl") << "set while the language holds";
    CheckMirror(form, hands, "in another language");
    strings.SetLoaded(false);
    form.Collection().Localise();
    EXPECT_FALSE(form.RightToLeft());
    EXPECT_EQ(form.cboUnit.Text() + form.lblCount.Caption(), "hour(s)Count");
    form.txtName.SetToolTip("");
    form.lblCount.SetCaption("Count");
    CheckMirror(form, hands, "in the built-in words again");
}

void CheckMouse(ConformanceForm& form, Hands& hands) {
    const TwipScale scale = form.Host().Scale();
    const auto at = [&scale](int x, int y) { return TwipPoint{scale.TwipsX(x), scale.TwipsY(y)}; };
    form.picFace.onMouse = [&form](const act::Mouse& mouse) {
        if (mouse.phase == act::MousePhase::Move && mouse.button == 0) return; // the pointer lay there anyway
        const char* phase = mouse.phase == act::MousePhase::Down ? "down "
                            : mouse.phase == act::MousePhase::Up ? "up "
                                                                 : "move ";
        form.log.push_back(phase + std::to_string(mouse.button) + " " + Point(mouse.at));
    };
    hands.Mouse(form, &form.picFace, act::MousePhase::Down, 1, 0, at(10, 5));
    hands.Mouse(form, &form.picFace, act::MousePhase::Move, 1, 0, at(14, 9));
    hands.Mouse(form, &form.picFace, act::MousePhase::Up, 1, 0, at(14, 9));
    EXPECT_EQ(TakenLog(form, hands), "down 1 " + Point(at(10, 5)) + "; move 1 " + Point(at(14, 9)) +
                                         "; up 1 " + Point(at(14, 9)) + "; picFace clicked");
    hands.Mouse(form, &form.picFace, act::MousePhase::Down, 1, 0, at(10, 5));
    hands.Mouse(form, &form.picFace, act::MousePhase::Move, 1, 0, at(-20, 5));
    hands.Mouse(form, &form.picFace, act::MousePhase::Up, 1, 0, at(-20, 5));
    EXPECT_EQ(TakenLog(form, hands),
              "down 1 " + Point(at(10, 5)) + "; move 1 " + Point(at(-20, 5)) + "; up 1 " + Point(at(-20, 5)))
        << "no click beside it";
    form.picFace.onMouse = {};
}

void CheckTabOrder(ConformanceForm& form, Hands& hands) {
    const std::string order =
        "txtName txtCount txtText rtbMessage chkActive optKind(1) optOther cboUnit cboFree "
        "lvwAlarms tabPages sldAlpha scrZone dtpStart mvwDay cmdOk cmdCancel ";
    form.txtName.SetFocus();
    ASSERT_TRUE(Becomes(hands, [&] { return form.ActiveControl() == &form.txtName; }));
    std::string visited;
    do {
        visited += form.ActiveControl()->FullName() + ' ';
        hands.PressKey(*form.ActiveControl(), key_code::Tab, 0);
        hands.Settle();
    } while (form.ActiveControl() && visited.size() < order.size());
    EXPECT_EQ(visited, order);
    EXPECT_EQ(form.ActiveControl(), &form.txtName) << "round";
    EXPECT_EQ(form.txtName.SelectionLength(), static_cast<int>(form.txtName.Text().size()));
    hands.PressKey(form.txtName, key_code::Tab, shift_state::Shift);
    hands.Settle();
    EXPECT_EQ(form.ActiveControl(), &form.cmdCancel) << "back";
    EXPECT_EQ(TakenLog(form, hands), "");
}

void CheckPlace(ConformanceForm& form, Hands& hands) {
    const TwipScale scale = form.Host().Scale();
    const auto size = [&scale](int x, int y) { return TwipSize{scale.TwipsX(x), scale.TwipsY(y)}; };
    form.SetBorder(BorderStyle::Sizable);
    hands.Settle();
    std::string told;
    form.onMove = [&told] { told += "moved "; };
    form.onResize = [&told] { told += "resized "; };
    form.onMinimize = [&told](bool minimized) { told += minimized ? "minimized " : "restored "; };

    const TwipPoint corner{scale.TwipsX(60), scale.TwipsY(50)};
    hands.MoveWindow(form, corner);
    EXPECT_TRUE(Becomes(hands, [&] { return form.Left() == corner.x && form.Top() == corner.y; }))
        << form.Left();
    EXPECT_TRUE(told.starts_with("moved ")) << told;
    const int before = form.lvwAlarms.Bounds().width;
    const TwipSize wider{form.ClientSize().width + size(40, 30).width,
                         form.ClientSize().height + size(40, 30).height};
    told.clear();
    hands.ResizeWindow(form, wider);
    EXPECT_TRUE(Becomes(hands, [&] { return form.ClientSize() == wider; })) << form.ClientSize().width;
    EXPECT_NE(told.find("resized "), std::string::npos);
    EXPECT_EQ(form.lvwAlarms.Bounds().width, before + size(40, 0).width) << "the layout takes the room";
    told.clear();
    hands.Minimise(form, true);
    EXPECT_TRUE(Becomes(hands, [&] { return form.Minimized(); }));
    hands.Minimise(form, false);
    EXPECT_TRUE(Becomes(hands, [&] { return !form.Minimized(); }));
    EXPECT_EQ(told, "minimized restored ");
    form.onMove = form.onResize = {};
    form.onMinimize = {};
}

} // namespace quorvane
