#pragma once

#include "ui/menubar/PanelSection.h"

#include <QList>

class DaypartController;
class ServiceRowView;
class StatusModel;
class TextLabel;

/// The first eight probed services, or why there are none.
class ServicesView final : public PanelSection {
    Q_OBJECT

public:
    ServicesView(StatusModel& status, DaypartController& daypart, QWidget* parent = nullptr);

protected:
    void render() override;

private:
    StatusModel& m_status;
    DaypartController& m_daypart;
    TextLabel* m_heading;
    TextLabel* m_empty;
    QList<ServiceRowView*> m_rows;
};
