#include "platform/linux/desktop/event_loop.h"
#include "platform/linux/drawing/drawing.h"
#include "platform/linux/forms/form_host.h"
#include "platform/linux/forms/form_view.h"
#include "tests/platform/linux/forms/qt_hands.h"
#include "tests/support/process.h"

#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTreeView>
#include <QWidget>
#include <QWindow>
#include <gtest/gtest.h>

namespace quorvane {

class QtForms : public testing::Test {
  protected:
    QtEventLoop events_;
    LinuxDrawing drawing_;
    QtFormHost host_;
    LocaleStrings strings_;
    Forms forms_{host_, events_, drawing_, &strings_};

    static QWidget* WindowOf(const Form& form) { return static_cast<QtFormView*>(form.View())->Window(); }
};

TEST_F(QtForms, BehaveAsEverywhere) {
    ConformanceForm form(forms_);
    QtHands hands(form);
    CheckConformance(form, hands, strings_);
}

TEST_F(QtForms, BlockEachOtherAsEverywhere) {
    CheckModality(forms_, [](SmallForm& form) {
        const QWidget* button = static_cast<QtFormView*>(form.View())->WidgetOf(form.cmdPress);
        QWindow* window = WindowOf(form)->windowHandle();
        QTest::mouseClick(window, Qt::LeftButton, {}, button->mapTo(WindowOf(form), button->rect().center()));
    });
}

// Neither task bar nor pager shows a splash or a question, and a window manager knows it from the start.
TEST_F(QtForms, StandInTheTaskBarOrNot) {
    const auto states = [](const Form& form) {
        return test::Output({"xprop", "-id", std::to_string(WindowOf(form)->winId()), "_NET_WM_STATE"});
    };
    SmallForm form(forms_, "frmNote");
    form.SetShownInTaskBar(false);
    form.Show();
    SmallForm plain(forms_, "frmPlain");
    plain.Show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(WindowOf(form)));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(WindowOf(plain)));
    EXPECT_NE(states(form).find("SKIP_TASKBAR"), std::string::npos);
    EXPECT_NE(states(form).find("SKIP_PAGER"), std::string::npos);
    EXPECT_EQ(states(plain).find("SKIP_TASKBAR"), std::string::npos);
    EXPECT_NE(states(plain).find("_NET_WM_STATE"), std::string::npos);
}

TEST_F(QtForms, LieWhereTheLayoutSaysInBothDirections) {
    LayoutForm form(forms_);
    QtHands hands(form);
    for (const bool rightToLeft : {false, true}) {
        form.SetRightToLeft(rightToLeft);
        form.Show();
        hands.Settle();
        if (const char* shots = std::getenv("QUORVANE_SHOTS"))
            WindowOf(form)->grab().save(QString(shots) + (rightToLeft ? "/layout_rtl.png" : "/layout.png"));
    }
    form.SetRightToLeft(false);
    CheckLayout(form, hands);
}

TEST_F(QtForms, KeepTheColumnsThatAPersonMade) {
    LayoutForm form(forms_);
    form.Show();
    auto* list = static_cast<QTreeView*>(static_cast<QtFormView*>(form.View())->WidgetOf(form.lvwRows));
    list->setColumnWidth(0, 77);
    form.lvwRows.AddRow({{"third"}, false, ""});
    form.lvwRows.SetColumns({{"Nome", 2000}, {"Stato", 1500}});
    EXPECT_EQ(list->columnWidth(0), 77);
    EXPECT_EQ(list->model()->headerData(0, Qt::Horizontal).toString(), "Nome");
    form.lvwRows.SetColumns({{"Nome", 3000}, {"Stato", 1500}});
    EXPECT_EQ(list->columnWidth(0), host_.Scale().PixelsX(3000));
}

// Every widget is at least as large as it would like to be, and lies inside its parent.
TEST_F(QtForms, CutNothing) {
    ConformanceForm form(forms_);
    form.cmdOk.SetCaption("&\xC3\x9C"
                          "bernehmen und schlie\xC3\x9F"
                          "en");
    form.chkActive.SetFont(FontSpec{"DejaVu Sans", 14, true, false, false, false});
    form.Show();
    const auto* view = static_cast<QtFormView*>(form.View());
    for (const Control* control : form.Controls()) {
        if (!control->IsShown() || !control->HasPlace()) continue;
        const QWidget* widget = view->WidgetOf(*control);
        const bool holdsText =
            control->Kind() == ControlKind::Label || control->Kind() == ControlKind::Button ||
            control->Kind() == ControlKind::CheckBox || control->Kind() == ControlKind::OptionButton ||
            control->Kind() == ControlKind::ComboBox || control->Kind() == ControlKind::Frame;
        const QSize wanted = holdsText ? widget->minimumSizeHint() : QSize();
        EXPECT_GE(widget->width() + 1, wanted.width()) << control->FullName();
        EXPECT_GE(widget->height() + 1, wanted.height()) << control->FullName();
        EXPECT_TRUE(widget->parentWidget()->rect().contains(widget->geometry())) << control->FullName();
    }
}

TEST_F(QtForms, ShowWhereTheKeyboardIs) {
    Form form(forms_, "frmKeys");
    Button cmdOk(form, "cmdOk"), cmdOther(form, "cmdOther");
    form.SetDefaultButton(&cmdOk);
    form.SetLayout(Row({cmdOk, cmdOther}));
    form.Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(WindowOf(form)));
    const auto isFramed = [&form](const Button& button) {
        return static_cast<QPushButton*>(static_cast<QtFormView*>(form.View())->WidgetOf(button))
            ->isDefault();
    };
    EXPECT_TRUE(isFramed(cmdOk));
    QTest::keyClick(WindowOf(form)->windowHandle(), Qt::Key_Tab);
    EXPECT_EQ(form.ActiveControl(), &cmdOther);
    EXPECT_TRUE(isFramed(cmdOther)) << "Enter presses it";
    EXPECT_FALSE(isFramed(cmdOk));
    EXPECT_TRUE(WindowOf(form)->testAttribute(Qt::WA_KeyboardFocusChange));
}

TEST_F(QtForms, AreDestroyedWhereTheyAreUnloadedOutsideEveryEvent) {
    Form form(forms_, "frmSplash");
    form.Show();
    const QPointer<QWidget> window = WindowOf(form);
    form.Unload();
    events_.Pump();
    EXPECT_FALSE(window);
}

TEST_F(QtForms, AreCutOutWhereTheyAreTransparent) {
    ConformanceForm form(forms_);
    form.SetTransparentColor(Rgb(1, 2, 3));
    form.Show();
    const QRegion shape = WindowOf(form)->mask();
    EXPECT_FALSE(shape.contains(QPoint(1, WindowOf(form)->height() - 1))) << "bare ground";
    const QWidget* face = static_cast<QtFormView*>(form.View())->WidgetOf(form.picFace);
    EXPECT_TRUE(shape.contains(face->mapTo(WindowOf(form), face->rect().center()))) << "a painted box";
}

} // namespace quorvane
