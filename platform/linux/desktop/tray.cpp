#include "platform/linux/desktop/tray.h"

#include "core/utf8.h"
#include "platform/event_loop.h"
#include "platform/forms/menu.h"
#include "platform/linux/desktop/icon.h"
#include "platform/linux/desktop/pointer_grab.h"
#include "platform/linux/desktop/qt_menu.h"
#include "platform/system.h"

#include <QApplication>
#include <QCursor>
#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>

namespace quorvane {

namespace {

constexpr int BalloonFlag = 16;
constexpr int PatienceMilliseconds = 2000;
// An area over D-Bus tells first that the menu is closed and then what was picked, or the other way round.
constexpr int PickMilliseconds = 300;
// Some tell that the menu is about to be shown when they only fetch it, along with the icon; some never tell
// that it is closed.
constexpr int FetchMilliseconds = 5000;
constexpr int LookMilliseconds = 1000;   // between two looks at whether it is still open
constexpr int OpenMilliseconds = 20'000; // for which it is taken to be so where that cannot be seen

// At most `letters` of the text, line ends as the toolkit wants them.
QString FieldText(const std::string& text, int letters) {
    const std::string_view cut = FirstLetters(text, letters);
    QString field = QString::fromUtf8(cut.data(), static_cast<qsizetype>(cut.size()));
    return field.replace(QLatin1String("\r\n"), QLatin1String("\n"))
        .replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

} // namespace

LinuxTray::LinuxTray(EventLoop& events, System& system)
    : events_(events)
    , system_(system)
    , balloons_([this](const Balloons::Balloon& balloon) {
        // An embedded icon has a balloon of the toolkit's own; an area over the bus has nothing but the
        // service that is not there.
        if (icon_ && !overBus_)
            icon_->showMessage(balloon.title, balloon.text, ProgramIcon(), balloon.milliseconds);
    }) {
    patience_.setSingleShot(true);
    patience_.setInterval(PatienceMilliseconds);
    QObject::connect(&patience_, &QTimer::timeout, [this] { ComplainOfNoArea(); });
    closed_.setSingleShot(true);
    closed_.setInterval(PickMilliseconds);
    QObject::connect(&closed_, &QTimer::timeout, [this] { ReleaseTimers(); });
    look_.setInterval(LookMilliseconds);
    QObject::connect(&look_, &QTimer::timeout, [this] {
        if (!IsPointerGrabbed().value_or(!opened_.hasExpired(OpenMilliseconds))) ReleaseTimers();
    });
}

LinuxTray::~LinuxTray() = default;

// The areas are watched until the icon is in one of them; from then on the toolkit follows that one.
bool LinuxTray::Add(const TrayRecord& record) {
    added_ = true;
    record_ = record;
    if (!icon_ && !busArea_) {
        patience_.start();
        busArea_.emplace([this] { AppearWhereThereIsAnArea(); });
        windowArea_.emplace([this] { events_.Post([this] { AppearWhereThereIsAnArea(); }); });
    }
    AppearWhereThereIsAnArea();
    return icon_ != nullptr;
}

void LinuxTray::ComplainOfNoArea() {
    system_.Complain("there is no notification area; the icon appears when there is one");
}

// Never before the bus has answered, for the toolkit asks it once and keeps to the first answer.
void LinuxTray::AppearWhereThereIsAnArea() {
    if (!added_) return;
    if (!icon_) {
        if (!busArea_->HasAnswered() || !(busArea_->HasHost() || windowArea_->IsThere())) return;
        overBus_ = busArea_->HasHost();
        windowArea_.reset();
        patience_.stop();
        icon_ = std::make_unique<QSystemTrayIcon>(ProgramIcon());
        QObject::connect(icon_.get(), &QSystemTrayIcon::activated,
                         [this](QSystemTrayIcon::ActivationReason reason) { Activated(reason); });
        icon_->setContextMenu(shownMenu_.get());
    }
    Apply();
    icon_->show();
    appeared_.start();
}

void LinuxTray::Apply() {
    icon_->setToolTip(FieldText(record_.tip, tray_field::Tip));
}

bool LinuxTray::Modify(const TrayRecord& record) {
    record_ = record;
    if (!added_) return false;
    if (icon_) Apply();
    if ((record.flags & BalloonFlag) != 0 && !record.balloonText.empty()) {
        balloons_.Show({FieldText(record.balloonTitle, tray_field::BalloonTitle),
                        FieldText(record.balloonText, tray_field::BalloonText),
                        record.balloonTimeoutMilliseconds});
    }
    return icon_ != nullptr;
}

// Icon and menu may go inside one of their own signals, by the entry that ends the program: they are left to
// the event loop to delete.
void LinuxTray::Remove() {
    added_ = false;
    patience_.stop();
    busArea_.reset();
    windowArea_.reset();
    ReleaseTimers();
    if (icon_) {
        icon_->hide();
        icon_.release()->deleteLater();
    }
}

void LinuxTray::SetMenu(Menu* menu) {
    menu_ = menu;
    if (shownMenu_) shownMenu_.release()->deleteLater();
    if (menu) {
        shownMenu_ = std::make_unique<QMenu>();
        FillMenu(*shownMenu_, menu->Entries(), events_);
        QObject::connect(shownMenu_.get(), &QMenu::aboutToShow, [this] {
            events_.Deliver([this] { FillMenu(*shownMenu_, menu_->Open(), events_); });
            HoldTimers();
        });
        QObject::connect(shownMenu_.get(), &QMenu::aboutToHide, [this] { closed_.start(); });
    }
    if (icon_) icon_->setContextMenu(shownMenu_.get());
}

// An area shows the icon's own menu by itself. One over the bus that cannot asks for it by a right click.
void LinuxTray::Popup(Menu& menu) {
    if (popupOpen_ || (&menu == menu_ && !overBus_)) return;
    popupOpen_ = true;
    const ShownMenu shown = menu.Open();
    const MenuItem* picked = nullptr;
    {
        const TimersHeld held(events_);
        picked = AskMenu(shown, QCursor::pos());
    }
    popupOpen_ = false;
    if (picked) Menu::Choose(*picked);
}

// An embedded icon's menu is the toolkit's own, which tells truly.
void LinuxTray::HoldTimers() {
    if (overBus_ && !appeared_.hasExpired(FetchMilliseconds)) return;
    if (!held_) held_.emplace(events_);
    closed_.stop();
    opened_.start();
    if (overBus_) look_.start();
}

void LinuxTray::ReleaseTimers() {
    closed_.stop();
    look_.stop();
    held_.reset();
}

// Areas over D-Bus know one kind of activation alone; two of them in quick succession are a double click,
// except where the area waits for a double click itself.
void LinuxTray::Activated(int reason) {
    if (reason != QSystemTrayIcon::Context) ReleaseTimers(); // who presses the icon has no menu open
    switch (reason) {
    case QSystemTrayIcon::DoubleClick:
        lastActivation_.invalidate();
        Tell(tray_message::LeftDoubleClick);
        break;
    case QSystemTrayIcon::Trigger:
        if (overBus_ && busArea_ &&
            (busArea_->ActivatesByDoubleClick() ||
             (lastActivation_.isValid() &&
              lastActivation_.elapsed() <= QApplication::doubleClickInterval()))) {
            lastActivation_.invalidate();
            Tell(tray_message::LeftDoubleClick);
        } else {
            lastActivation_.start();
        }
        break;
    case QSystemTrayIcon::Context:
        Tell(tray_message::RightButtonUp);
        break;
    default:
        break;
    }
}

void LinuxTray::Tell(int message) {
    events_.Deliver([this, message] {
        if (handler_) handler_(message);
    });
}

} // namespace quorvane
