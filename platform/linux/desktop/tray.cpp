#include "platform/linux/desktop/tray.h"

#include "core/utf8.h"
#include "platform/event_loop.h"
#include "platform/linux/desktop/icon.h"
#include "platform/linux/desktop/qt_menu.h"
#include "platform/system.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>
#include <cstdlib>
#include <xcb/xcb.h>

namespace quorvane {

namespace {

constexpr int BalloonFlag = 16;
constexpr int SearchMilliseconds = 2000;

// At most `letters` of the text, line ends as the toolkit wants them.
QString FieldText(const std::string& text, int letters) {
    const std::string_view cut = FirstLetters(text, letters);
    QString field = QString::fromUtf8(cut.data(), static_cast<qsizetype>(cut.size()));
    return field.replace(QLatin1String("\r\n"), QLatin1String("\n"))
        .replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

// Asking for the bus starts one where none is; an area on a bus that was not there cannot be.
bool HasBusArea() {
    if (!std::getenv("DBUS_SESSION_BUS_ADDRESS")) return false;
    const QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.isConnected() &&
           bus.interface()->isServiceRegistered(QStringLiteral("org.kde.StatusNotifierWatcher"));
}

// The owner of the selection by which an area of the screen is found. Asked here and not of the toolkit,
// which asks the bus once and keeps to the first answer.
bool HasWindowArea() {
    const auto* x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11) return false;
    xcb_connection_t* connection = x11->connection();
    constexpr std::string_view Name = "_NET_SYSTEM_TRAY_S0";
    xcb_intern_atom_reply_t* atom =
        xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 0, Name.size(), Name.data()), nullptr);
    if (!atom) return false;
    xcb_get_selection_owner_reply_t* owner =
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, atom->atom), nullptr);
    const bool has = owner && owner->owner != XCB_WINDOW_NONE;
    std::free(owner);
    std::free(atom);
    return has;
}

QSystemTrayIcon::MessageIcon BalloonIcon(int number) {
    switch (number) {
    case 1:
        return QSystemTrayIcon::Information;
    case 2:
        return QSystemTrayIcon::Warning;
    case 3:
        return QSystemTrayIcon::Critical;
    default:
        return QSystemTrayIcon::NoIcon;
    }
}

} // namespace

LinuxTray::LinuxTray(EventLoop& events, System& system)
    : events_(events)
    , system_(system) {
    search_.setInterval(SearchMilliseconds);
    search_.setTimerType(Qt::VeryCoarseTimer);
    QObject::connect(&search_, &QTimer::timeout, [this] { Search(); });
}

LinuxTray::~LinuxTray() = default;

bool LinuxTray::Add(const TrayRecord& record) {
    added_ = true;
    record_ = record;
    if (AppearWhereThereIsAnArea()) return true;
    search_.start();
    return false;
}

// At log-on the area may come up a little after the program: the first round passes before anything is said.
void LinuxTray::Search() {
    if (!AppearWhereThereIsAnArea() && !complained_) {
        complained_ = true;
        system_.Complain("there is no notification area; the icon appears when there is one");
    }
}

bool LinuxTray::AppearWhereThereIsAnArea() {
    if (!icon_) {
        if (!HasBusArea() && !HasWindowArea()) return false;
        icon_ = std::make_unique<QSystemTrayIcon>(ProgramIcon());
        QObject::connect(icon_.get(), &QSystemTrayIcon::activated,
                         [this](QSystemTrayIcon::ActivationReason reason) { Activated(reason); });
        icon_->setContextMenu(shownMenu_.get());
    }
    search_.stop();
    Apply();
    icon_->show();
    return true;
}

void LinuxTray::Apply() {
    icon_->setToolTip(FieldText(record_.tip, tray_field::Tip));
}

bool LinuxTray::Modify(const TrayRecord& record) {
    record_ = record;
    if (!added_ || !icon_) return false;
    Apply();
    if ((record.flags & BalloonFlag) != 0 && !record.balloonText.empty()) {
        icon_->showMessage(FieldText(record.balloonTitle, tray_field::BalloonTitle),
                           FieldText(record.balloonText, tray_field::BalloonText),
                           BalloonIcon(record.balloonIcon), record.balloonTimeoutMilliseconds);
    }
    return true;
}

// Icon and menu may go inside one of their own signals, by the entry that ends the program: they are left to
// the event loop to delete.
void LinuxTray::Remove() {
    added_ = false;
    search_.stop();
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
        FillMenu(*shownMenu_, *menu, &events_);
        QObject::connect(shownMenu_.get(), &QMenu::aboutToShow,
                         [this] { events_.Deliver([this] { FillMenu(*shownMenu_, *menu_, &events_); }); });
    }
    if (icon_) icon_->setContextMenu(shownMenu_.get());
}

// The area shows the icon's own menu by itself.
void LinuxTray::Popup(Menu& menu) {
    if (popupOpen_ || &menu == menu_) return;
    popupOpen_ = true;
    ShowMenuAtPointer(menu);
    popupOpen_ = false;
}

// Areas over D-Bus know one kind of activation alone; two of them in quick succession are a double click.
void LinuxTray::Activated(int reason) {
    switch (reason) {
    case QSystemTrayIcon::DoubleClick:
        lastActivation_.invalidate();
        Tell(tray_message::LeftDoubleClick);
        break;
    case QSystemTrayIcon::Trigger:
        if (HasBusArea() && lastActivation_.isValid() &&
            lastActivation_.elapsed() <= QApplication::doubleClickInterval()) {
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
