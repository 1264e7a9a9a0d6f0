#pragma once

#include "daypart/DaypartPalette.h"

#include <QColor>
#include <QWidget>

class TextLabel;

/// One figure with its title above it, in a bordered tile. Its size does not depend on the figure.
class StatTile final : public QWidget {
    Q_OBJECT

public:
    /// The title is shown in upper case.
    explicit StatTile(const QString& title, QWidget* parent = nullptr);

    void display(const QString& value, const DaypartPalette& palette);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    TextLabel* m_title;
    TextLabel* m_value;
    QColor m_fill;
    QColor m_border;
};
