#pragma once

#include "app/StatusModel.h"
#include "daypart/DaypartController.h"
#include "support/FakeNotificationCenter.h"
#include "support/FakeTool.h"
#include "support/MemoryDefaults.h"
#include "system/NotificationService.h"
#include "ui/menubar/MenuBarView.h"

#include <QImage>
#include <QTest>
#include <QTimer>

/// The real models of a panel, at a time of day that the test chooses, and a record of what the panel asks for. But for
/// what the test says, the bridge refuses every connection and the tool is a fake one.
struct PanelFixture final {
    QTime time{12, 0};
    MemoryDefaults defaults{};
    FakeNotificationCenter center{};
    NotificationService notifications{center};
    FakeTool tool{};
    StatusModel::ToolRunner runTool = tool.runner();
    QUrl bridge{QStringLiteral("http://127.0.0.1:1")};
    Clock clock = wallClock;
    StatusModel status{notifications, runTool, bridge, clock};
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

    /// Lets the poll that a panel's appearance starts come to its end, and starts no other, so that what a test writes
    /// stays.
    [[nodiscard]] bool settle() {
        if (auto* timer = status.findChild<QTimer*>()) {
            timer->stop();
        }
        return QTest::qWaitFor([this] { return !status.polling; });
    }

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

    [[nodiscard]] static QList<StatusModel::ServiceRow> services(int count) {
        static const QStringList names{
            QStringLiteral("caddy.process"), QStringLiteral("caddy.admin"), QStringLiteral("postgres"),
            QStringLiteral("redis"),         QStringLiteral("mailpit"),     QStringLiteral("minio"),
            QStringLiteral("api"),           QStringLiteral("worker"),      QStringLiteral("search"),
            QStringLiteral("queue"),         QStringLiteral("cache"),       QStringLiteral("docs")};
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
