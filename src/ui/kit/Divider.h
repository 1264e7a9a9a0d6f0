#pragma once

#include <QColor>
#include <QWidget>

/// A horizontal rule across its parent.
class Divider final : public QWidget {
    Q_OBJECT

public:
    static constexpr int thickness = 1; ///< points

    explicit Divider(QWidget* parent = nullptr);

    void setColour(const QColor& colour);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_colour;
};
