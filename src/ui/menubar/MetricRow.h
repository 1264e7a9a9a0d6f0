#pragma once

#include <QWidget>

class Colours;
class DotLabel;
class TextLabel;

/// One check: its label, what it says, and a dot. A check that is not ok stands in the warning colour.
class MetricRow final : public QWidget {
    Q_OBJECT

public:
    MetricRow(const QString& label, const Colours& colours, QWidget* parent = nullptr);

    void display(const QString& value, bool ok);

private:
    TextLabel* m_value = nullptr;
    DotLabel* m_dot = nullptr;
};
