#pragma once

#include <QPushButton>

/// A button that is a row of a form: its title leading, in the accent colour.
class FormButton final : public QPushButton {
    Q_OBJECT

public:
    explicit FormButton(const QString& title, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
