#pragma once

#include "app/StatusModel.h"
#include "daypart/DaypartPalette.h"

#include <QWidget>

#include <utility>

class DotLabel;
class TextLabel;

/// One probed service in one line. Where name and detail do not both fit, each keeps at least half of the room.
class ServiceRowView final : public QWidget {
    Q_OBJECT

public:
    explicit ServiceRowView(QWidget* parent = nullptr);

    void display(const StatusModel::ServiceRow& service, const DaypartPalette& palette);

    /// The widths of two texts that want `first` and `second` and share `room`.
    [[nodiscard]] static std::pair<int, int> share(int room, int first, int second);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange();

    DotLabel* m_dot;
    TextLabel* m_name;
    TextLabel* m_detail;
};
