#pragma once

#include "ui/DaypartColours.h"
#include "ui/kit/View.h"

#include <QMargins>

#include <optional>

class QVBoxLayout;

/// One section of the panel: a padded column in the daypart's colours, on a fill of its own or on the panel's
/// background.
class PanelSection : public View {
    Q_OBJECT

protected:
    PanelSection(const DaypartController& daypart, QWidget* parent, const QMargins& padding, int spacing,
                 std::optional<ColourRole> fill = {});

    [[nodiscard]] const Colours& colours() const { return m_colours; }
    [[nodiscard]] QVBoxLayout& column() const { return *m_column; }

    void paintEvent(QPaintEvent* event) override;

private:
    const DaypartColours m_colours;
    const std::optional<ColourRole> m_fill;
    QVBoxLayout* m_column;
};
