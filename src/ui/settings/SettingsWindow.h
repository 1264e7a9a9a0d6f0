#pragma once

#include "ui/settings/SettingsView.h"

#include <QIcon>
#include <QObject>
#include <QPointer>

/// The settings window: one at a time, made when it is opened and given back when it is closed. Closing it ends
/// nothing else. The models must outlive it.
class SettingsWindow final : public QObject {
    Q_OBJECT

public:
    using MakePermissions = std::function<std::unique_ptr<PermissionCenter>()>;

    SettingsWindow(StatusModel& status, DaypartController& daypart, MakePermissions makePermissions,
                   SettingsLinks links = {}, QObject* parent = nullptr);
    ~SettingsWindow() override;

    /// How large it opens on a screen with this much room, frame and all.
    [[nodiscard]] static QSize firstSize(const QSize& room);

    /// Opens the window on its first tab, or brings the open one to the front as it is.
    void open();

signals:
    /// The window is closed and given back.
    void closed();

private:
    void create();

    StatusModel& m_status;
    DaypartController& m_daypart;
    MakePermissions m_makePermissions;
    SettingsLinks m_links;
    QIcon m_icon;
    QPointer<SettingsView> m_view;
};
