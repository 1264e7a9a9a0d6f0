#pragma once

#include <QAccessibleWidget>

#include <vector>

class QTabBar;

/// Tells assistive programs of a tab bar: a list of tabs with one of them selected, each of which can be pressed.
/// What the toolkit itself tells lacks the selection.
class TabListAccessible final : public QAccessibleWidget {
public:
    explicit TabListAccessible(QTabBar& tabs);
    ~TabListAccessible() override;
    TabListAccessible(const TabListAccessible&) = delete;
    TabListAccessible& operator=(const TabListAccessible&) = delete;

    /// Answers for every tab bar from now on.
    static void install();

    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
    [[nodiscard]] QAccessibleInterface* focusChild() const override;

private:
    QTabBar& m_tabs;
    mutable std::vector<QAccessible::Id> m_children;
};
