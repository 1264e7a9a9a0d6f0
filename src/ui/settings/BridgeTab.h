#pragma once

#include "ui/settings/Form.h"

class DaypartController;
class DotLabel;
class StatusModel;

/// Where the bridge is expected and whether it answers, the account, and how to start the bridge by hand.
class BridgeTab final : public Form {
    Q_OBJECT

public:
    BridgeTab(StatusModel& status, DaypartController& daypart, const Colours& colours, QWidget* parent = nullptr);

protected:
    void render() override;

private:
    void addBridge(const Colours& colours);
    void addAccount();
    void addStart();

    StatusModel& m_status;
    DotLabel* m_dot = nullptr;
    TextLabel* m_online = nullptr;
    TextLabel* m_caddy = nullptr;
    TextLabel* m_postgres = nullptr;
    TextLabel* m_account = nullptr;
};
