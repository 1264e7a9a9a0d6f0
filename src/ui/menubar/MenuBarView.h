#pragma once

#include "ui/menubar/PanelSection.h"

#include <QUrl>

class NotificationService;
class StatusModel;

/// What the panel asks of the application around it. All are required.
struct PanelActions final {
    std::function<void()> openSettings;
    std::function<void(const QUrl&)> openUrl;
    std::function<void()> quit;
};

/// What the panel shows: one column of fixed width, as high as its content, with a rule between each two sections. Each
/// time it has appeared it has the model poll.
class MenuBarView final : public PanelSection {
    Q_OBJECT

public:
    MenuBarView(StatusModel& status, DaypartController& daypart, NotificationService& notifications,
                const PanelActions& actions);

    /// Lays out the content and takes the height that the whole of it needs.
    void fitHeight();

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    StatusModel& m_status;
    bool m_appears = false; ///< shown, and not painted yet
};
