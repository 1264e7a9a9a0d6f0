#pragma once

#include "ui/menubar/PanelSection.h"

class DaypartController;
class DotLabel;
class StatusModel;
class TextLabel;

/// The panel's head: the product, its version, the daypart, and a dot for the state of the reverse proxy.
class HeaderView final : public PanelSection {
    Q_OBJECT

public:
    HeaderView(StatusModel& status, DaypartController& daypart, QWidget* parent = nullptr);

protected:
    void render() override;

private:
    StatusModel& m_status;
    DaypartController& m_daypart;
    TextLabel* m_subtitle = nullptr;
    DotLabel* m_dot = nullptr;
};
