#pragma once

#include <QRadioButton>

/// One choice of a list in a form: a row with a radio mark, a symbol and a title.
class ChoiceButton final : public QRadioButton {
    Q_OBJECT

public:
    ChoiceButton(const QString& title, const QString& symbolName, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& position) const override;

private:
    void paintMark(QPainter& painter, const QRectF& area) const;

    const QString m_symbolName;
};
