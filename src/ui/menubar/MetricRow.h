#pragma once

#include "daypart/DaypartPalette.h"

#include <QWidget>

class DotLabel;
class TextLabel;

/// One check: its label, what it says, and a dot. A check that is not ok stands in the warning colour.
class MetricRow final : public QWidget {
    Q_OBJECT

public:
    explicit MetricRow(const QString& label, QWidget* parent = nullptr);

    void display(const QString& value, bool ok, const DaypartPalette& palette);

private:
    TextLabel* m_label;
    TextLabel* m_value;
    DotLabel* m_dot;
};
