#pragma once

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <QTemporaryDir>

/// A session bus of the test's own, on which no service can be activated. While it lives it is this process's session
/// bus; to be made before anybody asks for that, since a process has one for good.
class PrivateBus final {
public:
    PrivateBus() {
        const QString file = m_directory.filePath(QStringLiteral("bus.conf"));
        QFile configuration{file};
        const QByteArray socket = QFile::encodeName(m_directory.filePath(QStringLiteral("socket")));
        if (!configuration.open(QIODevice::WriteOnly) || configuration.write(rules(socket)) < 0) {
            return;
        }
        configuration.close();
        m_daemon.setProcessChannelMode(QProcess::SeparateChannels);
        m_daemon.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--nofork"), QStringLiteral("--print-address"),
                                                       QStringLiteral("--config-file=") + file});
        if (m_daemon.waitForStarted() && m_daemon.waitForReadyRead()) {
            m_address = QString::fromUtf8(m_daemon.readLine().trimmed());
            qputenv("DBUS_SESSION_BUS_ADDRESS", m_address.toUtf8());
        }
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus() {
        m_daemon.terminate();
        m_daemon.waitForFinished();
    }

    /// Empty when there is no bus to be had.
    [[nodiscard]] QString address() const { return m_address; }

private:
    static QByteArray rules(const QByteArray& socket) {
        return R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>session</type><listen>unix:path=)" +
               socket + R"(</listen><auth>EXTERNAL</auth><policy context="default">
<allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/></policy></busconfig>)";
    }

    QTemporaryDir m_directory;
    QProcess m_daemon;
    QString m_address;
};
