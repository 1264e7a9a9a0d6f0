#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <QVariantMap>

#include <utility>

/// A notification server on a connection of its own that does as it is told and keeps what it gets. It owns the
/// server's name on the bus as long as it lives.
class ScriptedNotificationServer final : public QDBusVirtualObject {
public:
    enum class Manner { obliging, refusing, silent };

    struct Notification final {
        QString application;
        uint replaces = 0;
        QString icon;
        QString title;
        QString body;
        QStringList actions;
        QVariantMap hints;
        int expires = 0;
    };

    QStringList capabilities;
    Manner manner = Manner::obliging;

    QStringList methods; ///< every call, by its method, in order
    QList<Notification> notifications;

    explicit ScriptedNotificationServer(const QString& address, QStringList has = {})
        : capabilities{std::move(has)}
        , m_name{QStringLiteral("server %1").arg(reinterpret_cast<quintptr>(this))}
        , m_bus{QDBusConnection::connectToBus(address, m_name)} {
        m_bus.registerVirtualObject(QStringLiteral("/org/freedesktop/Notifications"), this);
        m_bus.registerService(QStringLiteral("org.freedesktop.Notifications"));
    }
    ~ScriptedNotificationServer() override {
        m_bus.unregisterService(QStringLiteral("org.freedesktop.Notifications"));
        QDBusConnection::disconnectFromBus(m_name);
    }

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        methods.append(message.member());
        if (message.member() == QStringLiteral("Notify")) {
            keep(message.arguments());
        }
        if (manner == Manner::obliging) {
            connection.send(message.createReply(answerTo(message.member())));
        } else if (manner == Manner::refusing) {
            connection.send(message.createErrorReply(QDBusError::AccessDenied, QStringLiteral("no")));
        }
        return true;
    }

private:
    [[nodiscard]] QVariantList answerTo(const QString& method) const {
        if (method == QStringLiteral("GetCapabilities")) {
            return {capabilities};
        }
        if (method == QStringLiteral("Notify")) {
            return {static_cast<uint>(notifications.size())};
        }
        return {QStringLiteral("scripted"), QStringLiteral("vorna"), QStringLiteral("1"), QStringLiteral("1.2")};
    }

    void keep(const QVariantList& fields) {
        notifications.append({.application = fields.value(0).toString(),
                              .replaces = fields.value(1).toUInt(),
                              .icon = fields.value(2).toString(),
                              .title = fields.value(3).toString(),
                              .body = fields.value(4).toString(),
                              .actions = fields.value(5).toStringList(),
                              .hints = qdbus_cast<QVariantMap>(fields.value(6)),
                              .expires = fields.value(7).toInt()});
    }

    QString m_name;
    QDBusConnection m_bus;
};
