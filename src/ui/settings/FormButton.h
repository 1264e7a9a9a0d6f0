#pragma once

#include <QPushButton>

/// A button that is a row of a form: its title leading, in the accent colour. A title that had to be cut is whole
/// in the tool tip.
class FormButton final : public QPushButton {
    Q_OBJECT

public:
    explicit FormButton(const QString& title, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QRect titlePlace() const;
    [[nodiscard]] QString shownTitle() const;
};
