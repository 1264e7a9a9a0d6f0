#pragma once

#include "bridge/VornaBridgeClient.h"
#include "cli/VornaCLIRunner.h"
#include "support/Clock.h"
#include "support/ObservableObject.h"
#include "support/Published.h"
#include "support/Ticker.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class NotificationService;

/// The companion's one state: what the last poll of the bridge said, and what the command-line tool is doing. Views
/// read it and render after it changed. Main thread only; nothing blocks it.
class StatusModel final : public ObservableObject {
    Q_OBJECT

public:
    enum class Band { green, amber, red, unknown };

    /// One probed service as the panel shows it; `id` is its name.
    struct ServiceRow final {
        QString id;
        QString name;
        bool ok = false;
        QString detail;
        QString category;

        friend bool operator==(const ServiceRow&, const ServiceRow&) = default;
    };

    /// Runs the command-line tool: arguments and a limit in seconds.
    using ToolRunner = std::function<QCoro::Task<VornaCLIRunner::Result>(QStringList, double)>;

    explicit StatusModel(NotificationService& notifications, ToolRunner runTool = VornaCLIRunner::run,
                         QUrl bridge = defaultBridge(), Clock clock = wallClock, Ticker ticker = timerTicker,
                         QObject* parent = nullptr);

    /// "http://127.0.0.1:43105"
    [[nodiscard]] static QUrl defaultBridge();

    [[nodiscard]] static QString rawValue(Band band);
    [[nodiscard]] static std::optional<Band> bandFromRawValue(QStringView rawValue);

    Published<bool> bridgeOnline{*this, false};
    Published<Band> caddyBand{*this, Band::unknown};
    Published<QString> caddyDetail{*this, QStringLiteral("—")};
    Published<std::optional<bool>> postgresOk{*this, std::nullopt};
    Published<QString> postgresDetail{*this, QStringLiteral("—")};
    Published<QString> hostLoad{*this, QStringLiteral("—")};
    Published<QString> hostMemory{*this, QStringLiteral("—")};
    Published<QString> hostDisk{*this, QStringLiteral("—")};
    Published<QString> hostname{*this, QString()};
    Published<QList<ServiceRow>> services{*this, {}};
    Published<std::optional<QDateTime>> lastPoll{*this, std::nullopt};
    Published<std::optional<QString>> lastError{*this, std::nullopt};
    Published<bool> polling{*this, false};
    Published<bool> cliBusy{*this, false};
    Published<std::optional<QString>> cliMessage{*this, std::nullopt};
    Published<QString> accountLine{*this, QStringLiteral("Not signed in")};

    /// The name of the symbol that the status item shows, and what it means in words.
    [[nodiscard]] QString menuBarSymbol() const;
    [[nodiscard]] QString menuBarMeaning() const;

    /// Polls at once and asks for the account state; the first call also starts the poll timer, which runs as long as
    /// the model lives.
    void start();

    /// Starts one poll, whether or not another is on its way; whichever ends last decides what is shown.
    void poll();

    /// The user's actions, each one run of the command-line tool with a notification at its end. While one runs, a
    /// further one does nothing.
    QCoro::Task<> runDeskBackup();
    QCoro::Task<> runMacSyncICloud();
    QCoro::Task<> signInFromDesktop();

    /// Asks the tool for the account state in the background; on any failure the account line stays as it is.
    void reportAccountHeartbeat();

private:
    QCoro::Task<> pollOnce();
    void showUnreachable(const BridgeError& error);
    void showOffline();
    void showHealthyWithoutData();
    void applyMonitor(const DesktopMonitorPayload& payload);
    void applyCaddy(const DesktopMonitorPayload& payload);

    QCoro::Task<> runCLI(QStringList arguments, QString notifyTitle);
    QCoro::Task<> heartbeat();

    NotificationService& m_notifications;
    ToolRunner m_runTool;
    const VornaBridgeClient m_client;
    Clock m_clock;
    Ticker m_ticker;
    bool m_isTicking = false;
};
