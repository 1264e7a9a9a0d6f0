#pragma once

#include "ui/menubar/PanelSection.h"

class DaypartController;
class DotLabel;
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
    /// What a check says, and its dot. One that is not ok stands in the warning colour.
    struct Check final {
        TextLabel* value;
        DotLabel* dot;

        void display(const QString& text, bool ok) const;
    };

    Check addCheck(const QString& label);
    void addTiles();

    StatusModel& m_status;
    const Check m_bridge;
    const Check m_caddy;
    const Check m_postgres;
    StatTile* m_load;
    StatTile* m_memory;
    StatTile* m_disk;
    TextLabel* m_error;
    TextLabel* m_updated;
};
