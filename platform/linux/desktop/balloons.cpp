#include "platform/linux/desktop/balloons.h"

#include "platform/linux/desktop/icon.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QVariantMap>
#include <cstdlib>
#include <utility>

namespace quorvane {

namespace {

constexpr int IconPixels = 48;
constexpr uchar NormalUrgency = 1;
constexpr int AnswerMilliseconds = 5000; // the service may have to be started

bool HasBus() {
    return std::getenv("DBUS_SESSION_BUS_ADDRESS") && QDBusConnection::sessionBus().isConnected();
}

QDBusMessage Question(const char* method) {
    return QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("/org/freedesktop/Notifications"),
        QStringLiteral("org.freedesktop.Notifications"), QLatin1String(method));
}

// The pixels themselves, since the icon need not be installed: width, height, bytes a row, transparency, bits
// a channel, channels, bytes.
QVariant IconPicture() {
    const QImage image = ProgramIcon().pixmap(IconPixels).toImage().convertToFormat(QImage::Format_RGBA8888);
    QDBusArgument picture;
    picture.beginStructure();
    picture << image.width() << image.height() << static_cast<int>(image.bytesPerLine()) << true << 8 << 4
            << QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes());
    picture.endStructure();
    return QVariant::fromValue(picture);
}

} // namespace

void Balloons::Show(const Balloon& balloon) {
    if (!HasBus()) {
        withoutService_(balloon);
    } else if (busy_) {
        next_ = balloon;
    } else if (!textIsMarkup_) {
        next_ = balloon;
        AskWhatTextMeans();
    } else {
        Send(balloon);
    }
}

void Balloons::AskWhatTextMeans() {
    busy_ = true;
    auto* answer = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(Question("GetCapabilities"), AnswerMilliseconds), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QStringList> reply = *answer;
        busy_ = false;
        const auto balloon = std::exchange(next_, std::nullopt);
        if (reply.isValid()) textIsMarkup_ = reply.value().contains(QLatin1String("body-markup"));
        if (balloon) reply.isValid() ? Send(*balloon) : withoutService_(*balloon);
    });
}

void Balloons::Send(const Balloon& balloon) {
    busy_ = true;
    const QVariantMap hints{{QStringLiteral("urgency"), QVariant::fromValue(NormalUrgency)},
                            {QStringLiteral("transient"), true},
                            {QStringLiteral("desktop-entry"), QStringLiteral("quorvane")},
                            {QStringLiteral("image-data"), IconPicture()}};
    QDBusMessage question = Question("Notify");
    question << QStringLiteral("Quorvane") << last_ << QString() << balloon.title
             << (textIsMarkup_.value_or(false) ? balloon.text.toHtmlEscaped() : balloon.text) << QStringList()
             << hints << balloon.milliseconds;
    auto* answer = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(question, AnswerMilliseconds), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, balloon] {
        answer->deleteLater();
        Sent(*answer, balloon);
    });
}

// A service that has gone is asked anew what it takes: its successor may be another one.
void Balloons::Sent(QDBusPendingCallWatcher& answer, const Balloon& balloon) {
    const QDBusPendingReply<uint> reply = answer;
    last_ = reply.isValid() ? reply.value() : 0;
    busy_ = false;
    if (!reply.isValid()) {
        textIsMarkup_.reset();
        withoutService_(balloon);
    }
    if (const auto next = std::exchange(next_, std::nullopt)) Show(*next);
}

} // namespace quorvane
