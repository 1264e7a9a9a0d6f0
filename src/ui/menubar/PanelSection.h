#pragma once

#include "ui/kit/View.h"

#include <QColor>
#include <QMargins>

class QVBoxLayout;

/// One section of the panel: a padded column, on a fill of its own or on the panel's background.
class PanelSection : public View {
    Q_OBJECT

protected:
    PanelSection(QWidget* parent, const QMargins& padding, int spacing);

    [[nodiscard]] QVBoxLayout& column() const { return *m_column; }
    void setFill(const QColor& colour);

    void paintEvent(QPaintEvent* event) override;

private:
    QVBoxLayout* m_column;
    QColor m_fill;
};
