#pragma once

#include "ui/menubar/PanelActions.h"
#include "ui/menubar/PanelSection.h"

#include <QList>

class DaypartController;
class QHBoxLayout;
class StatusModel;
class TextLabel;
class VornaAccentButton;
class VornaMenuButton;

/// The quick actions, the two actions of the command-line tool, and what the last of these said.
class ActionsView final : public PanelSection {
    Q_OBJECT

public:
    ActionsView(StatusModel& status, DaypartController& daypart, const PanelActions& actions,
                QWidget* parent = nullptr);

protected:
    void render() override;

private:
    void addQuickActions();
    void addToolActions();
    void renderToolLine();
    VornaAccentButton* actionButton(const QString& title, const QString& symbolName, std::function<void()> action);
    VornaMenuButton* toolButton(const QString& title, const QString& symbolName, std::function<void()> action);

    StatusModel& m_status;
    DaypartController& m_daypart;
    const PanelActions m_actions;
    QList<VornaAccentButton*> m_quickButtons;
    TextLabel* m_heading = nullptr;
    QList<VornaMenuButton*> m_toolButtons;
    TextLabel* m_busy = nullptr;
    TextLabel* m_message = nullptr;
};
