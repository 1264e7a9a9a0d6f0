#pragma once

#include "ui/menubar/PanelSection.h"

#include <QList>

class DaypartController;
class SelectableLabel;
class ServiceRowView;
class StatusModel;

/// The first eight probed services, or why there are none.
class ServicesView final : public PanelSection {
    Q_OBJECT

public:
    ServicesView(StatusModel& status, const DaypartController& daypart, QWidget* parent = nullptr);

protected:
    void render() override;

private:
    StatusModel& m_status;
    SelectableLabel* m_empty = nullptr;
    QList<ServiceRowView*> m_rows;
};
