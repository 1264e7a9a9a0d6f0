#include "platform/NotificationService.h"

#include <QCoro/QCoroSignal>

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QStringList>
#include <QVariantMap>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString serviceName = u"org.freedesktop.Notifications"_s;
const QString objectPath = u"/org/freedesktop/Notifications"_s;
const QString applicationName = u"vorna"_s;
const QString applicationIcon = u"vorna-companion"_s;
const QString markupCapability = u"body-markup"_s;
constexpr uint replacesNothing = 0;
constexpr int serverDecidesWhenItGoes = -1;

/// A server that has not answered by then is as good as none.
constexpr std::chrono::milliseconds answerTimeout = 3s;

QVariantMap hints() {
    return {{u"desktop-entry"_s, u"vorna-companion"_s}, {u"sound-name"_s, u"message-new-instant"_s}};
}

bool isControl(QChar character) {
    return character.category() == QChar::Other_Control;
}

/// Control characters mean nothing in a notification, and a null would cut it off; lines are all that a body keeps.
QString bodyText(QString text) {
    text.replace(u'\t', u' ');
    text.removeIf([](QChar character) { return isControl(character) && character != u'\n'; });
    return text;
}

QString titleText(QString text) {
    return bodyText(std::move(text)).replace(u'\n', u' ');
}

/// `& < >` only: quotes mean nothing between tags, and some servers show their escapes.
QString escaped(QString text) {
    return text.replace(u'&', u"&amp;"_s).replace(u'<', u"&lt;"_s).replace(u'>', u"&gt;"_s);
}

QDBusMessage methodCall(const QString& method) {
    return QDBusMessage::createMethodCall(serviceName, objectPath, serviceName, method);
}

/// Sends at once; the answer comes in a later turn of the event loop, as an error after the timeout.
QCoro::Task<QDBusMessage> call(QDBusMessage message) {
    auto bus = QDBusConnection::sessionBus();
    const auto pending = bus.isConnected() ? bus.asyncCall(message, static_cast<int>(answerTimeout.count()))
                                           : QDBusPendingCall::fromError(QDBusError{QDBusError::Disconnected, {}});
    auto* const watcher = new QDBusPendingCallWatcher{pending};
    co_await qCoro(watcher, &QDBusPendingCallWatcher::finished);
    watcher->deleteLater();
    co_return watcher->reply();
}

/// The session's notification server over D-Bus. The connection is made when it is first needed. It keeps no state:
/// what the server can do is asked before each post, since a session may change its server.
class SessionNotificationService final : public NotificationService {
public:
    QCoro::Task<bool> requestAuthorization() override {
        co_return co_await authorizationStatus() == Authorization::authorized;
    }

    QCoro::Task<Authorization> authorizationStatus() override {
        const auto reply = co_await call(methodCall(u"GetServerInformation"_s));
        const bool answered = reply.type() == QDBusMessage::ReplyMessage;
        co_return answered ? Authorization::authorized : Authorization::notDetermined;
    }

    QCoro::Task<> notify(QString title, QString body, QString /*identifier*/) override {
        const auto reply = co_await call(methodCall(u"GetCapabilities"_s));
        const bool hasMarkup = reply.type() == QDBusMessage::ReplyMessage &&
                               reply.arguments().value(0).toStringList().contains(markupCapability);
        const QString text = bodyText(body);
        QDBusMessage message = methodCall(u"Notify"_s);
        message << applicationName << replacesNothing << applicationIcon << titleText(title)
                << (hasMarkup ? escaped(text) : text) << QStringList{} << hints() << serverDecidesWhenItGoes;
        const auto posted = call(message);
        // A server that was waited for already may show it when it goes on.
        if (QDBusError{reply}.type() != QDBusError::NoReply) {
            co_await posted;
        }
    }
};

}

std::unique_ptr<NotificationService> NotificationService::standard() {
    return std::make_unique<SessionNotificationService>();
}
