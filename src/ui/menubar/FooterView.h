#pragma once

#include "ui/menubar/PanelActions.h"
#include "ui/menubar/PanelSection.h"

class Button;
class DaypartController;
class NotificationService;

/// A test notification, the settings, and the end of the program; the last two have keys as well.
class FooterView final : public PanelSection {
    Q_OBJECT

public:
    FooterView(DaypartController& daypart, NotificationService& notifications, const PanelActions& actions,
               QWidget* parent = nullptr);

protected:
    void render() override {}

private:
    void postTestNotification();
    Button* addButton(const QString& title, const QString& symbolName, std::function<void()> action);

    DaypartController& m_daypart;
    NotificationService& m_notifications;
};
