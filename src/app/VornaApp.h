#pragma once

#include "app/AppDelegate.h"
#include "app/StatusModel.h"
#include "daypart/DaypartController.h"
#include "platform/Desktop.h"
#include "platform/NotificationService.h"
#include "platform/StatusItem.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>

class PanelWindow;
class SettingsWindow;

/// What the companion is put together from: the desktop's own parts, unless others are handed in.
struct VornaParts final {
    std::function<DaypartController&()> daypart = DaypartController::shared;
    std::function<void()> becomeAccessory = Desktop::becomeAccessory;
    std::function<void()> activatePreviousProgram = Desktop::activatePreviousProgram;
    NotificationService& notifications = NotificationService::shared();
    std::function<std::unique_ptr<StatusItem>(const QString& title)> makeItem = StatusItem::create;
    StatusModel::ToolRunner runTool = VornaCLIRunner::run;
    QUrl bridge = StatusModel::defaultBridge();
    Ticker ticker = timerTicker;
    Delay delay = timerDelay;
};

/// The companion put together: the one status model, the shared daypart controller, the item in the tray or menu bar,
/// the panel and the settings window. Main thread only; lives as long as the application.
class VornaApp final : public QObject {
    Q_OBJECT

public:
    explicit VornaApp(const VornaParts& parts = {}, QObject* parent = nullptr);
    ~VornaApp() override;

    [[nodiscard]] StatusModel& status() { return m_status; }

    void showPanel();
    void showSettings();

private:
    void dismissPanel();
    void showSymbol();
    void makeReady();
    PanelWindow& panel();
    SettingsWindow& settings();
    void releaseMemory();

    NotificationService& m_notifications;
    const std::function<void()> m_activatePreviousProgram;
    const Delay m_delay;
    DaypartController& m_daypart;
    AppDelegate m_delegate;
    StatusModel m_status;
    std::unique_ptr<StatusItem> m_item;
    std::unique_ptr<PanelWindow> m_panel;
    std::unique_ptr<SettingsWindow> m_settings;
    QTimer m_releaseTimer;
};
