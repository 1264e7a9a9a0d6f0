#pragma once

#include <QScrollArea>

class QVBoxLayout;

/// A page of the settings window: its content is at most as wide as the page and scrolls when it is higher. It takes
/// the keyboard, to be scrolled, only while there is something to scroll.
class ScrollPage final : public QScrollArea {
    Q_OBJECT

public:
    explicit ScrollPage(const QString& name, QWidget* parent = nullptr);

    /// Where the content goes, from top to bottom.
    [[nodiscard]] QVBoxLayout& content() const { return *m_content; }

    /// Gives everything its place at once after texts or rows changed. A change that deep down would else travel one
    /// level a turn of the event loop, with half-drawn frames between.
    void layOutNow();

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    QVBoxLayout* m_content;
};
