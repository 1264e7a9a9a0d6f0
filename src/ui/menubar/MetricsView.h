#pragma once

#include "ui/menubar/PanelSection.h"

class DaypartController;
class MetricRow;
class StatTile;
class StatusModel;
class TextLabel;

/// The three checks, the three figures of the host, the last error and the time of the last poll.
class MetricsView final : public PanelSection {
    Q_OBJECT

public:
    MetricsView(StatusModel& status, const DaypartController& daypart, QWidget* parent = nullptr);

protected:
    void render() override;

private:
    void addTiles();

    StatusModel& m_status;
    MetricRow* m_bridge;
    MetricRow* m_caddy;
    MetricRow* m_postgres;
    StatTile* m_load;
    StatTile* m_memory;
    StatTile* m_disk;
    TextLabel* m_error;
    TextLabel* m_updated;
};
