#pragma once

#include "ui/menubar/PanelActions.h"
#include "ui/menubar/PanelSection.h"

#include <QList>

class Button;
class DaypartController;
class StatusModel;
struct ButtonStyle;
class TextLabel;

/// The quick actions, the two actions of the command-line tool, and what the last of these said.
class ActionsView final : public PanelSection {
    Q_OBJECT

public:
    ActionsView(StatusModel& status, const DaypartController& daypart, const PanelActions& actions,
                QWidget* parent = nullptr);

protected:
    void render() override;

private:
    void addQuickActions();
    void addToolActions();
    void renderToolLine();
    Button* newButton(const QString& title, const QString& symbolName, const ButtonStyle& style,
                      std::function<void()> action);

    StatusModel& m_status;
    const PanelActions m_actions;
    QList<Button*> m_toolButtons;
    TextLabel* m_busy = nullptr;
    TextLabel* m_message = nullptr;
};
