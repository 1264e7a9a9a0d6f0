#include "platform/linux/StatusNotifierHostWatch.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QLibraryInfo>
#include <QVersionNumber>

using namespace Qt::StringLiterals;

namespace {

const QString watcherService = u"org.kde.StatusNotifierWatcher"_s;
const QString watcherPath = u"/StatusNotifierWatcher"_s;

/// What a watcher without a host means. Later Qt hands every icon to a watcher that is there, and asks for no host: an
/// icon of the older kind can be had only once the watcher has gone.
StatusNotifierHostWatch::Host hostlessMeans() {
    const bool later = QLibraryInfo::version() >= QVersionNumber{6, 5};
    return later ? StatusNotifierHostWatch::Host::unknown : StatusNotifierHostWatch::Host::absent;
}

QDBusMessage hostQuestion() {
    QDBusMessage question =
        QDBusMessage::createMethodCall(watcherService, watcherPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question << watcherService << u"IsStatusNotifierHostRegistered"_s;
    question.setAutoStartService(false);
    return question;
}

}

StatusNotifierHostWatch::StatusNotifierHostWatch(QObject* parent)
    : QObject{parent} {
    if (!m_bus.isConnected()) {
        m_host = Host::absent;
        return;
    }
    auto* const service =
        new QDBusServiceWatcher{watcherService, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this};
    connect(service, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) { ownerChanged(owner); });
    // Any sender: naming one would make Qt wait for the bus to tell who that is.
    for (const QString& signal : {u"StatusNotifierHostRegistered"_s, u"StatusNotifierHostUnregistered"_s}) {
        m_bus.connect(QString{}, watcherPath, watcherService, signal, this, SLOT(ask()));
    }
    ask();
}

void StatusNotifierHostWatch::ownerChanged(const QString& owner) {
    settle(owner.isEmpty() ? Host::absent : Host::unknown);
    ask();
}

void StatusNotifierHostWatch::ask() {
    const int question = ++m_question;
    auto* const answer = new QDBusPendingCallWatcher{m_bus.asyncCall(hostQuestion()), this};
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, question] {
        answer->deleteLater();
        if (question != m_question) {
            return;
        }
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (reply.isValid()) {
            settle(reply.value().variant().toBool() ? Host::present : hostlessMeans());
        } else {
            settle(reply.error().type() == QDBusError::NoReply ? Host::unknown : Host::absent);
        }
    });
}

void StatusNotifierHostWatch::settle(Host host) {
    if (host == m_host) {
        return;
    }
    m_host = host;
    emit changed();
}

#include "moc_StatusNotifierHostWatch.cpp"
