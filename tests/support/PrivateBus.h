#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryFile>

/// A session bus of the test's own, on which no service can be activated. While it lives it is this process's session
/// bus; to be made before anybody asks for that, since a process has one for good.
class PrivateBus final {
public:
    PrivateBus() {
        if (m_configuration.open() && m_configuration.write(rules) > 0 && m_configuration.flush()) {
            m_daemon.start(QStringLiteral("dbus-daemon"),
                           {QStringLiteral("--nofork"), QStringLiteral("--print-address"),
                            QStringLiteral("--config-file=") + m_configuration.fileName()});
        }
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
    static constexpr auto rules = R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><auth>EXTERNAL</auth><policy context="default">
<allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/></policy></busconfig>)";

    QTemporaryFile m_configuration;
    QProcess m_daemon;
    QString m_address;
};
