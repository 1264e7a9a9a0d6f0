#pragma once

#include "app/AppDelegate.h"
#include "app/StatusModel.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <memory>

class DaypartController;
class PanelWindow;
class SettingsWindow;
class StatusItem;

/// The companion put together: the one status model, the shared daypart controller, the item in the tray or menu bar,
/// the panel and the settings window. Main thread only; lives as long as the application.
class VornaApp final : public QObject {
    Q_OBJECT

public:
    explicit VornaApp(std::chrono::milliseconds pollInterval = StatusModel::usualPollInterval,
                      QObject* parent = nullptr);
    ~VornaApp() override;

    void showPanel();
    void showSettings();

private:
    void dismissPanel();
    void scheduleSymbol();
    void showSymbol();
    PanelWindow& panel();
    SettingsWindow& settings();
    void giveBack();

    DaypartController& m_daypart;
    AppDelegate m_delegate;
    StatusModel m_status;
    std::unique_ptr<StatusItem> m_item;
    std::unique_ptr<PanelWindow> m_panel;
    std::unique_ptr<SettingsWindow> m_settings;
    QTimer m_giveBackTimer;
    bool m_symbolScheduled = false;
};
