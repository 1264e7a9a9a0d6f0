#pragma once

#include <QWidget>

class QVBoxLayout;

/// Rows in a rounded frame, with a line between each two that are shown.
class FormGroup final : public QWidget {
    Q_OBJECT

public:
    explicit FormGroup(QWidget* parent = nullptr);

    /// Takes the row over.
    void addRow(QWidget& row);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QVBoxLayout* m_rows;
};
