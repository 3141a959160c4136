#include "tests/platform/linux/forms/qt_hands.h"

#include "core/utf8.h"
#include "platform/linux/forms/form_view.h"
#include "platform/linux/forms/qt_text.h"
#include "tests/support/process.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <QTabBar>
#include <QTableView>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QTreeView>
#include <QWindow>
#include <gtest/gtest.h>

namespace quorvane {

namespace {

// What a widget shows, in the words of Control::ValueText.
class Reader final : public ControlVisitor {
  public:
    explicit Reader(QWidget* widget)
        : widget_(widget) {}

    std::string value;

    void Visit(Label& control) override {
        EXPECT_EQ(PlainCaption(As<QLabel>()->text().toStdString()), PlainCaption(control.Caption()));
    }
    void Visit(Button& control) override {
        EXPECT_EQ(As<QPushButton>()->text().toStdString(), control.Caption());
    }
    void Visit(Frame& control) override {
        EXPECT_EQ(As<QGroupBox>()->title().toStdString(), control.Caption());
    }
    void Visit(PictureBox&) override {}
    void Visit(TextBox& control) override {
        value = Quoted(FromWidgetText(control.MultiLine() ? As<QPlainTextEdit>()->toPlainText()
                                                          : As<QLineEdit>()->text()));
    }
    void Visit(RichTextBox&) override { value = Quoted(FromWidgetText(As<QTextEdit>()->toPlainText())); }
    void Visit(CheckBox&) override { value = As<QCheckBox>()->isChecked() ? "checked" : "clear"; }
    void Visit(OptionButton&) override { value = As<QRadioButton>()->isChecked() ? "chosen" : "clear"; }
    void Visit(ComboBox&) override {
        const auto* box = As<QComboBox>();
        value = std::to_string(box->currentIndex()) + ' ' + Quoted(box->currentText().toStdString()) +
                " of " + std::to_string(box->count());
    }
    void Visit(ListView& control) override {
        const auto* list = As<QTreeView>();
        const QAbstractItemModel& rows = *list->model();
        const QModelIndexList chosen = list->selectionModel()->selectedRows();
        value = std::to_string(chosen.empty() ? -1 : chosen.front().row());
        for (int row = 0; row < rows.rowCount(); ++row) {
            const bool checked = rows.index(row, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked;
            value += control.CheckBoxes() ? (checked ? " [x] " : " [ ] ") : " ";
            for (int column = 0; column < rows.columnCount(); ++column) {
                value +=
                    (column > 0 ? "|" : "") + Quoted(rows.index(row, column).data().toString().toStdString());
            }
        }
    }
    void Visit(TabStrip&) override {
        std::string tabs;
        int chosen = -1;
        int first = 0;
        const auto bars = widget_->findChildren<QTabBar*>();
        for (const QTabBar* bar : bars) { // each with an empty tab behind its own
            if (bar->currentIndex() < bar->count() - 1) chosen = first + bar->currentIndex();
            for (int i = 0; i < bar->count() - 1; ++i, ++first)
                tabs += ' ' + Quoted(bar->tabText(i).toStdString());
        }
        value = std::to_string(chosen) + tabs;
    }
    void Visit(Slider&) override { ReadRange(*As<QSlider>()); }
    void Visit(ScrollBar&) override { ReadRange(*As<QScrollBar>()); }
    void Visit(ProgressBar&) override { ReadRange(*As<QProgressBar>()); }
    void Visit(DatePicker&) override {
        value = As<QDateTimeEdit>()->dateTime().toString("yyyy-MM-dd HH:mm:ss").toStdString();
    }
    void Visit(MonthView&) override {
        value = As<QCalendarWidget>()->selectedDate().toString("yyyy-MM-dd").toStdString();
    }

  private:
    template<typename Kind>
    Kind* As() const {
        return qobject_cast<Kind*>(widget_);
    }
    template<typename Range>
    void ReadRange(const Range& range) {
        value = std::to_string(range.value()) + " in " + std::to_string(range.minimum()) + ".." +
                std::to_string(range.maximum());
    }

    QWidget* widget_;
};

} // namespace

QWidget* QtHands::WidgetOf(const Control& control) const {
    return static_cast<QtFormView*>(form_.View())->WidgetOf(control);
}

template<typename Kind>
Kind* QtHands::As(const Control& control) const {
    return qobject_cast<Kind*>(WidgetOf(control));
}

void QtHands::Click(Control& control) {
    QTest::mouseClick(WidgetOf(control), Qt::LeftButton);
}

void QtHands::DoubleClick(Control& control) {
    auto* list = As<QTreeView>(control);
    const QRect row = list->visualRect(list->currentIndex());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row.center());
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, row.center());
}

void QtHands::Toggle(Control& control) {
    QWidget* widget = WidgetOf(control);
    QTest::mouseClick(widget, Qt::LeftButton, {}, {8, widget->height() / 2});
}

void QtHands::Type(Control& control, const std::string& letters) {
    QWidget* widget = WidgetOf(control);
    widget->setFocus();
    QTest::keyClick(widget, Qt::Key_End, Qt::ControlModifier);
    for (const QChar letter : QString::fromStdString(letters)) {
        if (letter == QLatin1Char('\n')) {
            QTest::keyClick(widget, Qt::Key_Return);
        } else {
            QTest::sendKeyEvent(QTest::Click, widget,
                                letter.unicode() < 128 ? QTest::asciiToKey(letter.toLatin1())
                                                       : Qt::Key_unknown,
                                QString(letter), Qt::NoModifier);
        }
    }
}

void QtHands::PressKey(Control& control, int code, int shift) {
    QWidget* widget = WidgetOf(control);
    widget->setFocus();
    const Qt::Key key = code == key_code::Enter   ? Qt::Key_Return
                        : code == key_code::Space ? Qt::Key_Space
                        : code != key_code::Tab   ? Qt::Key_Escape
                        : shift == 0              ? Qt::Key_Tab
                                                  : Qt::Key_Backtab;
    QTest::keyClick(widget, key,
                    shift & shift_state::Ctrl    ? Qt::ControlModifier
                    : shift & shift_state::Shift ? Qt::ShiftModifier
                                                 : Qt::NoModifier);
}

void QtHands::Choose(Control& control, int index) {
    if (auto* box = As<QComboBox>(control)) {
        box->showPopup();
        QAbstractItemView* list = box->view();
        const QRect row = list->visualRect(box->model()->index(index, 0));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row.center());
    } else if (auto* list = As<QTreeView>(control)) {
        const QRect row = list->visualRect(list->model()->index(index, 0));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row.center());
    } else {
        const auto bars = WidgetOf(control)->findChildren<QTabBar*>();
        for (QTabBar* bar : bars) {
            if (index >= 0 && index < bar->count() - 1)
                QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(index).center());
            index -= bar->count() - 1;
        }
    }
}

void QtHands::CheckRow(ListView& list, int row) {
    auto* tree = As<QTreeView>(list);
    const QRect place = tree->visualRect(tree->model()->index(row, 0));
    const int x = tree->isRightToLeft() ? place.right() - 10 : place.left() + 10;
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, {x, place.center().y()});
}

void QtHands::Step(RangeControl& control, int by) {
    QWidget* widget = WidgetOf(control);
    widget->setFocus();
    for (int i = 0; i < std::abs(by); ++i)
        QTest::keyClick(widget, by > 0 ? Qt::Key_Right : Qt::Key_Left);
}

void QtHands::PickDate(Control& control, const DateTime& value) {
    if (auto* edit = As<QDateTimeEdit>(control)) {
        edit->setFocus();
        const std::pair<QDateTimeEdit::Section, int> parts[] = {
            {QDateTimeEdit::YearSection, value.year},     {QDateTimeEdit::MonthSection, value.month},
            {QDateTimeEdit::DaySection, value.day},       {QDateTimeEdit::HourSection, value.hour},
            {QDateTimeEdit::MinuteSection, value.minute}, {QDateTimeEdit::SecondSection, value.second}};
        for (const auto& [section, number] : parts) {
            edit->setSelectedSection(section);
            QTest::keyClicks(edit, QString::number(number).rightJustified(2, QLatin1Char('0')));
        }
        return;
    }
    auto* days = As<QCalendarWidget>(control)->findChild<QTableView*>();
    for (int row = 1; row < days->model()->rowCount(); ++row) {
        for (int column = 0; column < days->model()->columnCount(); ++column) {
            const QModelIndex cell = days->model()->index(row, column);
            if (cell.data().toInt() != value.day) continue;
            QTest::mouseClick(days->viewport(), Qt::LeftButton, {}, days->visualRect(cell).center());
            return;
        }
    }
}

void QtHands::ChooseFromMenuBar(Form& form, int menu, int entry) {
    auto* bar = static_cast<QtFormView*>(form.View())->Window()->findChild<QMenuBar*>();
    QAction* title = bar->actions().at(menu);
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(title).center());
    QMenu* below = title->menu();
    QTest::mouseClick(below, Qt::LeftButton, {}, below->actionGeometry(below->actions().at(entry)).center());
}

// Through the window, which sends them on as the display's own are.
void QtHands::Mouse(Form& form, Control* control, act::MousePhase phase, int button, int shift,
                    TwipPoint at) {
    const TwipScale scale = form.Host().Scale();
    const QWidget* window = static_cast<QtFormView*>(form.View())->Window();
    const QPoint inside(scale.PixelsX(at.x), scale.PixelsY(at.y));
    const int menuBar = window->height() - scale.PixelsY(form.ClientSize().height);
    const QPoint place = control ? WidgetOf(*control)->mapTo(window, inside) : inside + QPoint(0, menuBar);
    const Qt::MouseButton which = button == 1   ? Qt::LeftButton
                                  : button == 2 ? Qt::RightButton
                                                : Qt::MiddleButton;
    const auto modifiers = shift & shift_state::Ctrl ? Qt::ControlModifier : Qt::NoModifier;
    switch (phase) {
    case act::MousePhase::Down:
        return QTest::mousePress(window->windowHandle(), which, modifiers, place);
    case act::MousePhase::Move:
        return QTest::mouseMove(window->windowHandle(), place);
    case act::MousePhase::Up:
        return QTest::mouseRelease(window->windowHandle(), which, modifiers, place);
    }
}

void QtHands::DoubleClickGround(Form& form) {
    QWidget* window = static_cast<QtFormView*>(form.View())->Window();
    QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, QPoint(4, window->height() - 4));
}

void QtHands::PickFromPopup(Form& form, Control* control, int entry, const std::function<bool()>& ready) {
    QTimer pick;
    QObject::connect(&pick, &QTimer::timeout, [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu || !ready()) return;
        pick.stop();
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().at(entry)).center());
    });
    pick.start(10);
    if (control) {
        WidgetOf(*control)->setFocus();
        // Only the display's own key asks for a menu.
        QWidget* window = static_cast<QtFormView*>(form.View())->Window();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
        const test::Process key({"xdotool", "key", "Menu"});
        EXPECT_TRUE(QTest::qWaitFor([&pick] { return !pick.isActive(); }, 20'000));
    } else {
        Mouse(form, nullptr, act::MousePhase::Down, 2, 0, GroundOf(form));
        Mouse(form, nullptr, act::MousePhase::Up, 2, 0, GroundOf(form));
    }
}

void QtHands::MoveWindow(Form& form, TwipPoint upperLeft) {
    const TwipScale scale = form.Host().Scale();
    static_cast<QtFormView*>(form.View())
        ->Window()
        ->move(scale.PixelsX(upperLeft.x), scale.PixelsY(upperLeft.y));
}

void QtHands::ResizeWindow(Form& form, TwipSize client) {
    const TwipScale scale = form.Host().Scale();
    QWidget* window = static_cast<QtFormView*>(form.View())->Window();
    const auto* bar = window->findChild<QMenuBar*>();
    window->resize(scale.PixelsX(client.width), scale.PixelsY(client.height) + (bar ? bar->height() : 0));
}

void QtHands::Minimise(Form& form, bool minimized) {
    QWidget* window = static_cast<QtFormView*>(form.View())->Window();
    minimized ? window->showMinimized() : window->showNormal();
}

void QtHands::CloseByFrame(Form& form) {
    static_cast<QtFormView*>(form.View())->Window()->close();
}

std::string QtHands::Shown(Control& control) {
    Reader reader(WidgetOf(control));
    control.Accept(reader);
    return reader.value;
}

// The ground by a pixel that no letter reaches.
std::string QtHands::ShownLook(Control& control) {
    const QWidget* widget = WidgetOf(control);
    const QColor fore = widget->palette().color(QPalette::Text);
    const QImage image = WidgetOf(control)->grab().toImage();
    const QColor back = image.pixelColor(image.width() - 6, 4);
    return LookText(widget->toolTip().toStdString(), Rgb(fore.red(), fore.green(), fore.blue()),
                    Rgb(back.red(), back.green(), back.blue()));
}

PixelRect QtHands::PlaceOf(Control& control) {
    const QWidget* widget = WidgetOf(control);
    const QPoint corner = widget->mapTo(widget->window(), QPoint());
    return {corner.x(), corner.y(), widget->width(), widget->height()};
}

const Control* QtHands::SeenAt(Control& control) {
    const QWidget* widget = WidgetOf(control);
    const QWidget* seen = widget->window()->childAt(widget->mapTo(widget->window(), widget->rect().center()));
    for (; seen; seen = seen->parentWidget()) {
        for (const Control* each : form_.Controls()) {
            if (WidgetOf(*each) == seen) return each;
        }
    }
    return nullptr;
}

void QtHands::Settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace quorvane
