#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QPalette>

/// Makes the application's palette light or dark as the user has asked of the desktop: now, whenever they change their
/// mind, and when the portal that tells of it starts late or anew. A palette of the toolkit's that agrees stays, and so
/// does any where the desktop has no wish. Never waits for the desktop. Main thread only.
class ColourScheme final : public QObject {
    Q_OBJECT

public:
    explicit ColourScheme(QObject* parent);

    /// The palette itself where it is as the portal's number wishes, else one of ours.
    [[nodiscard]] static QPalette adapted(const QPalette& own, uint wish);

private slots:
    void ask();

private:
    static void follow(uint wish);

    QDBusConnection m_bus = QDBusConnection::sessionBus();
    QDBusServiceWatcher m_portal;
};
