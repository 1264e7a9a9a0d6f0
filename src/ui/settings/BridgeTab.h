#pragma once

#include "ui/DaypartColours.h"
#include "ui/kit/View.h"

class DaypartController;
class DotLabel;
class FormText;
class GroupedForm;
class StatusModel;

/// Where the bridge is expected and whether it answers, the account, and how to start the bridge by hand.
class BridgeTab final : public View {
    Q_OBJECT

public:
    BridgeTab(StatusModel& status, DaypartController& daypart, QWidget* parent = nullptr);

protected:
    void render() override;

private:
    void addBridgeSection(GroupedForm& form);
    void addAccountSection(GroupedForm& form);
    static void addStartSection(GroupedForm& form);

    StatusModel& m_status;
    const DaypartColours m_colours;
    GroupedForm* m_form = nullptr;
    DotLabel* m_dot = nullptr;
    FormText* m_online = nullptr;
    FormText* m_caddy = nullptr;
    FormText* m_postgres = nullptr;
    FormText* m_account = nullptr;
};
