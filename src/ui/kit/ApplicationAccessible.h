#pragma once

#include <QAccessibleObject>

/// The application as assistive programs see it, with every window that shows: Qt leaves out the popups, and the panel
/// is one on some desktops. Our own windows say that they are windows, buttons are pressed by clicks, and decorations
/// are passed over. Install it once, before the first window; from then on `QAccessible` owns what it makes.
class ApplicationAccessible final : public QAccessibleApplication {
public:
    static void install();

    [[nodiscard]] int childCount() const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] QAccessibleInterface* focusChild() const override;
};
