#include "platform/NotificationCenter.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <chrono>
#include <optional>
#include <utility>
#include <vector>

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

/// The session's notification server over D-Bus. The connection is made when it is first needed.
class SessionNotificationCenter final : public QObject, public NotificationCenter {
public:
    void requestAuthorization(std::function<void(bool)> answer) override {
        authorization(
            [answer = std::move(answer)](Authorization state) { answer(state == Authorization::authorized); });
    }

    void authorization(std::function<void(Authorization)> answer) override {
        call(methodCall(u"GetServerInformation"_s), [answer = std::move(answer)](const QDBusMessage& reply) {
            const bool answered = reply.type() == QDBusMessage::ReplyMessage;
            answer(answered ? Authorization::authorized : Authorization::notDetermined);
        });
    }

    void post(const Request& request, std::function<void()> done) override {
        if (m_hasMarkup) {
            send(request, std::move(done), *m_hasMarkup);
            return;
        }
        m_waiting.push_back({request, std::move(done)});
        if (m_waiting.size() == 1) {
            askForCapabilities();
        }
    }

private:
    struct Waiting {
        Request request;
        std::function<void()> done;
    };

    /// Answers in a later turn of the event loop, with an error message after the timeout; not once this is gone.
    void call(const QDBusMessage& message, std::function<void(const QDBusMessage&)> answer) {
        auto bus = QDBusConnection::sessionBus();
        if (!bus.isConnected()) {
            const auto failure = QDBusMessage::createError(QDBusError::Disconnected, QString());
            QMetaObject::invokeMethod(
                this, [answer = std::move(answer), failure] { answer(failure); }, Qt::QueuedConnection);
            return;
        }
        const auto pending = bus.asyncCall(message, static_cast<int>(answerTimeout.count()));
        auto* watcher = new QDBusPendingCallWatcher{pending, this};
        connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [answer = std::move(answer), watcher] {
            watcher->deleteLater();
            answer(watcher->reply());
        });
    }

    void askForCapabilities() {
        forgetCapabilitiesWithTheirServer();
        call(methodCall(u"GetCapabilities"_s), [this, server = m_server](const QDBusMessage& reply) {
            const auto waiting = std::exchange(m_waiting, {});
            const bool answered = reply.type() == QDBusMessage::ReplyMessage;
            const bool hasMarkup = answered && reply.arguments().value(0).toStringList().contains(markupCapability);
            if (answered && server == m_server) {
                m_hasMarkup = hasMarkup;
            }
            const bool isSilent = QDBusError{reply}.type() == QDBusError::NoReply;
            for (const Waiting& each : waiting) {
                if (isSilent) {
                    sendWithoutWaiting(each);
                } else {
                    send(each.request, each.done, hasMarkup);
                }
            }
        });
    }

    /// To a server that was waited for already, and may show it when it goes on.
    void sendWithoutWaiting(const Waiting& waiting) {
        send(waiting.request, [] {}, false);
        QMetaObject::invokeMethod(this, waiting.done, Qt::QueuedConnection);
    }

    void forgetCapabilitiesWithTheirServer() {
        if (m_watcher != nullptr) {
            return;
        }
        m_watcher = new QDBusServiceWatcher{serviceName, QDBusConnection::sessionBus(),
                                            QDBusServiceWatcher::WatchForOwnerChange, this};
        connect(m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, [this] {
            m_hasMarkup.reset();
            ++m_server;
        });
    }

    void send(const Request& request, std::function<void()> done, bool hasMarkup) {
        const QString body = bodyText(request.body);
        QDBusMessage message = methodCall(u"Notify"_s);
        message << applicationName << replacesNothing << applicationIcon << titleText(request.title)
                << (hasMarkup ? escaped(body) : body) << QStringList{} << hints() << serverDecidesWhenItGoes;
        call(message, [done = std::move(done)](const QDBusMessage&) { done(); });
    }

    std::optional<bool> m_hasMarkup;
    std::vector<Waiting> m_waiting;
    QDBusServiceWatcher* m_watcher = nullptr;
    int m_server = 0;
};

}

std::unique_ptr<NotificationCenter> NotificationCenter::standard() {
    return std::make_unique<SessionNotificationCenter>();
}
