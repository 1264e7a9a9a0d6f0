#pragma once

#include "app/StatusModel.h"

#include <QWidget>

#include <utility>

class Colours;
class DotLabel;
class TextLabel;

/// One probed service in one line. Where name and detail do not both fit, each keeps at least half of the room.
class ServiceRowView final : public QWidget {
    Q_OBJECT

public:
    explicit ServiceRowView(const Colours& colours, QWidget* parent = nullptr);

    void display(const StatusModel::ServiceRow& service);

    /// The widths of two texts that want `first` and `second` and share `room`.
    [[nodiscard]] static std::pair<int, int> splitWidth(int room, int first, int second);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange();

    DotLabel* m_dot;
    TextLabel* m_name;
    TextLabel* m_detail;
};
