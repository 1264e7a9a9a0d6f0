#pragma once

#include "platform/Desktop.h"
#include "platform/SystemSettings.h"
#include "ui/settings/FormColours.h"
#include "ui/settings/Tabs.h"

#include <QWidget>

#include <memory>

class QTabWidget;

/// What the settings hand over to the desktop.
struct SettingsLinks final {
    OpenUrl openPage = Desktop::openUrl;
    OpenUrl openPane = SystemSettings::open;
};

/// The content of the settings window: four tabs, the first of them chosen. It is never smaller than they need, in
/// whatever font. It lives as long as the window is open, and its permission center with it. The models must outlive
/// it.
class SettingsView final : public QWidget {
    Q_OBJECT

public:
    SettingsView(StatusModel& status, DaypartController& daypart, std::unique_ptr<PermissionCenter> permissions,
                 const SettingsLinks& links, QWidget* parent = nullptr);
    ~SettingsView() override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void addTab(const QString& title, const QString& symbolName, QWidget& page);

    /// Lets the symbols grow with the texts beside them.
    void fitSymbols();

    const FormColours m_colours;
    std::unique_ptr<PermissionCenter> m_permissions;
    QTabWidget* m_tabs;
};
