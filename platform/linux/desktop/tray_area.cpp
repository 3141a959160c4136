#include "platform/linux/desktop/tray_area.h"

#include "platform/linux/desktop/xcb_reply.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QGuiApplication>
#include <cstdlib>
#include <utility>

namespace quorvane {

namespace {

constexpr QLatin1String Watcher("org.kde.StatusNotifierWatcher");
constexpr QLatin1String WatcherPath("/StatusNotifierWatcher");
constexpr int AnswerMilliseconds = 2000; // what a watcher that hangs is given

// Asking for the bus starts one where none is; an area on a bus that was not there cannot be.
QDBusConnection Bus() {
    return std::getenv("DBUS_SESSION_BUS_ADDRESS") ? QDBusConnection::sessionBus()
                                                   : QDBusConnection(QStringLiteral("none"));
}

QDBusMessage Question(QLatin1String service, QLatin1String path, QLatin1String interface, const char* method,
                      const QVariantList& arguments) {
    QDBusMessage question = QDBusMessage::createMethodCall(service, path, interface, QLatin1String(method));
    question.setArguments(arguments);
    question.setAutoStartService(false);
    return question;
}

QDBusMessage NameOwner(QLatin1String name) {
    return Question(QLatin1String("org.freedesktop.DBus"), QLatin1String("/org/freedesktop/DBus"),
                    QLatin1String("org.freedesktop.DBus"), "GetNameOwner", {QString(name)});
}

xcb_connection_t* ToolkitConnection() {
    const auto* x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

} // namespace

BusTrayArea::BusTrayArea(std::function<void()> changed)
    : changed_(std::move(changed))
    , bus_(Bus()) {
    if (!bus_.isConnected()) return;
    watcher_ = std::make_unique<QDBusServiceWatcher>(Watcher, bus_, QDBusServiceWatcher::WatchForOwnerChange);
    connect(watcher_.get(), &QDBusServiceWatcher::serviceOwnerChanged, this, &BusTrayArea::Ask);
    for (const char* news : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        bus_.connect(Watcher, WatcherPath, Watcher, QLatin1String(news), this, SLOT(Ask()));
    Ask();
}

BusTrayArea::~BusTrayArea() = default;

void BusTrayArea::Ask() {
    pending_ += 2;
    AskForHost();
    AskForOwner();
}

void BusTrayArea::AskForHost() {
    auto* answer = new QDBusPendingCallWatcher(
        bus_.asyncCall(Question(Watcher, WatcherPath, QLatin1String("org.freedesktop.DBus.Properties"), "Get",
                                {QString(Watcher), QStringLiteral("IsStatusNotifierHostRegistered")}),
                       AnswerMilliseconds),
        this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        hasHost_ = reply.isValid() && reply.value().variant().toBool();
        answer->deleteLater();
        Answered();
    });
}

void BusTrayArea::AskForOwner() {
    auto* owner = new QDBusPendingCallWatcher(bus_.asyncCall(NameOwner(Watcher)), this);
    auto* shell =
        new QDBusPendingCallWatcher(bus_.asyncCall(NameOwner(QLatin1String("org.gnome.Shell"))), this);
    // The bus answers in the order of the questions.
    connect(shell, &QDBusPendingCallWatcher::finished, this, [this, owner, shell] {
        const QDBusPendingReply<QString> first = *owner;
        const QDBusPendingReply<QString> second = *shell;
        isShells_ = first.isValid() && second.isValid() && first.value() == second.value();
        owner->deleteLater();
        shell->deleteLater();
        Answered();
    });
}

void BusTrayArea::Answered() {
    --pending_;
    if (pending_ == 0) changed_();
}

WindowTrayArea::WindowTrayArea(std::function<void()> appeared)
    : appeared_(std::move(appeared)) {
    xcb_connection_t* connection = ToolkitConnection();
    if (!connection) return;
    manager_ = InternAtom(connection, "MANAGER");
    selection_ = InternAtom(connection, "_NET_SYSTEM_TRAY_S0");
    qApp->installNativeEventFilter(this);
}

WindowTrayArea::~WindowTrayArea() {
    if (qApp) qApp->removeNativeEventFilter(this);
}

// Asked here and not of the toolkit, which asks the bus once and keeps to the first answer.
bool WindowTrayArea::IsThere() const {
    xcb_connection_t* connection = ToolkitConnection();
    if (!connection) return false;
    const auto owner = Own(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, selection_), nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

// The toolkit listens to the root window as well and has asked for what the announcement comes with.
bool WindowTrayArea::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
    if (type != "xcb_generic_event_t") return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7F) != XCB_CLIENT_MESSAGE) return false;
    const auto* told = static_cast<const xcb_client_message_event_t*>(message);
    if (told->type == manager_ && told->data.data32[1] == selection_) appeared_();
    return false;
}

} // namespace quorvane
