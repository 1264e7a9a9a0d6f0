#pragma once

#include "app/StatusModel.h"
#include "daypart/DaypartController.h"
#include "support/FakeNotificationService.h"
#include "support/FakeTool.h"
#include "support/MemoryDefaults.h"
#include "ui/menubar/MenuBarView.h"

#include <QImage>
#include <QTest>

/// The real models of a panel, at a time of day that the test chooses, and a record of what the panel asks for. But for
/// what the test says, the bridge refuses every connection, the tool is a fake one, and no poll follows from the last.
struct PanelFixture final {
    QTime time{12, 0};
    MemoryDefaults defaults{};
    FakeNotificationService notifications{};
    FakeTool tool{};
    StatusModel::ToolRunner runTool = tool.runner();
    QUrl bridge{QStringLiteral("http://127.0.0.1:1")};
    Clock clock = wallClock;
    int tickers = 0;
    StatusModel status{notifications, runTool, bridge, clock, [this](auto&&...) { ++tickers; }};
    DaypartController daypart{defaults, [this] { return QDateTime{QDate{2026, 7, 28}, time}; }};
    int settingsOpened = 0;
    QList<QUrl> pagesOpened{};
    int quits = 0;

    [[nodiscard]] PanelActions actions() {
        return {[this] { ++settingsOpened; }, [this](const QUrl& url) { pagesOpened += url; }, [this] { ++quits; }};
    }
    [[nodiscard]] std::unique_ptr<MenuBarView> makeView() {
        return std::make_unique<MenuBarView>(status, daypart, notifications, actions());
    }

    /// Waits for the end of the poll that follows on a panel's appearance, so that what a test writes stays.
    [[nodiscard]] bool settle() {
        QCoreApplication::processEvents();
        return QTest::qWaitFor([this] { return isStill(); });
    }
    [[nodiscard]] bool isStill() const { return tickers > 0 && !status.polling; }

    /// What a poll of a healthy machine writes.
    void fill() {
        status.bridgeOnline = true;
        status.hostname = QStringLiteral("workshop");
        status.hostLoad = QStringLiteral("1.73");
        status.hostMemory = QStringLiteral("64%");
        status.hostDisk = QStringLiteral("71% · 138 GB free");
        status.caddyBand = StatusModel::Band::green;
        status.caddyDetail = QStringLiteral("running · 4/4 sites");
        status.postgresOk = true;
        status.postgresDetail = QStringLiteral("accepting on 5432");
        status.services = services(12);
        status.lastError = std::nullopt;
        status.lastPoll = QDateTime{QDate{2026, 7, 28}, QTime{14, 3, 7}};
    }

    /// One text wherever the bridge or the tool says something.
    void fillWith(const QString& text) {
        fill();
        for (auto* property :
             {&status.hostLoad, &status.hostMemory, &status.hostDisk, &status.caddyDetail, &status.postgresDetail}) {
            *property = text;
        }
        status.lastError = text;
        status.cliMessage = text;
        status.services = QList<StatusModel::ServiceRow>{{text, text, true, text, {}},
                                                         {text, QStringLiteral("short"), false, text, {}},
                                                         {text, text, true, QStringLiteral("ok"), {}}};
    }

    [[nodiscard]] static QList<StatusModel::ServiceRow> services(int count) {
        static const auto names =
            QStringLiteral("caddy.process caddy.admin postgres redis mailpit minio api worker search queue cache docs")
                .split(u' ');
        QList<StatusModel::ServiceRow> rows;
        for (int i = 0; i < count; ++i) {
            const bool ok = i % 4 != 3;
            rows += {names.at(i), names.at(i), ok,
                     ok ? QStringLiteral("listening on %1").arg(5432 + i) : QStringLiteral("connection refused"),
                     QStringLiteral("service")};
        }
        return rows;
    }
};

/// The widget as it is drawn at `scale` pixels a point, once all that is pending has been rendered and laid out.
[[nodiscard]] inline QImage drawn(MenuBarView& view, qreal scale = 1) {
    view.renderPending();
    view.fitHeight();
    QImage image{(QSizeF{view.size()} * scale).toSize(), QImage::Format_RGB32};
    image.setDevicePixelRatio(scale);
    image.fill(Qt::magenta);
    static_cast<QWidget&>(view).render(&image);
    return image;
}
