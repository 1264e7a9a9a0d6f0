#pragma once

#include "ui/menubar/PanelActions.h"
#include "ui/menubar/PanelSection.h"

class DaypartController;
class NotificationService;
class StatusModel;

/// What the panel shows: one column of fixed width, as high as its content. Each time it appears it has the model poll.
class MenuBarView final : public PanelSection {
    Q_OBJECT

public:
    MenuBarView(StatusModel& status, DaypartController& daypart, NotificationService& notifications,
                const PanelActions& actions, QWidget* parent = nullptr);

    /// Lays out the content and takes the height that the whole of it needs.
    void fitHeight();

protected:
    void render() override {}
    void showEvent(QShowEvent* event) override;

private:
    StatusModel& m_status;
};
