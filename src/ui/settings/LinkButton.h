#pragma once

#include <QPushButton>

/// A button that looks like a link: its title alone, in the accent colour, underlined under the pointer.
class LinkButton final : public QPushButton {
    Q_OBJECT

public:
    explicit LinkButton(const QString& title, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
};
