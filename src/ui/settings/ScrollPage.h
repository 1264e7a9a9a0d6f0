#pragma once

#include <QScrollArea>

/// A page of the settings window: its content is as wide as the page and scrolls when it is higher. What gets the
/// keyboard by a key comes into view. The page itself takes the keyboard, to be scrolled, only while there is something
/// to scroll.
class ScrollPage final : public QScrollArea {
    Q_OBJECT

public:
    /// Takes the content over.
    ScrollPage(const QString& name, QWidget& content);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};
