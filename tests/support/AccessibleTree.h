#pragma once

#include <QAccessible>
#include <QList>
#include <QRect>
#include <QStringList>

#include <algorithm>
#include <optional>

class QWidget;
struct DaypartPalette;

/// One thing that a window tells assistive programs of, in the window's coordinates.
struct AccessibleNode final {
    QAccessibleInterface* interface = nullptr;
    QString name;
    QRect place;
    QRect seen;          ///< the part that is not scrolled away
    bool isLeaf = false; ///< a text, a dot or a control

    [[nodiscard]] QAccessible::State state() const { return interface->state(); }

    /// Whether it is there to be pressed: a button, a choice, a tab.
    [[nodiscard]] bool isControl() const;
    [[nodiscard]] bool isInView() const { return seen == place; }
    [[nodiscard]] QStringList actions() const;
    void press() const;
};

/// Everything that a window tells assistive programs of, and whether that is what the window paints.
class AccessibleTree final {
public:
    explicit AccessibleTree(QWidget& window);

    /// What shows, depth first: that is the order in which it is read.
    [[nodiscard]] QList<AccessibleNode> those(auto&& isWanted) const {
        QList<AccessibleNode> found;
        std::ranges::copy_if(m_nodes, std::back_inserter(found), isWanted);
        return found;
    }
    [[nodiscard]] QList<AccessibleNode> leaves() const { return those(&AccessibleNode::isLeaf); }
    [[nodiscard]] QList<AccessibleNode> controls() const { return those(&AccessibleNode::isControl); }
    [[nodiscard]] std::optional<AccessibleNode> focused() const;

    /// The leaves of which all is in view; the others are scrolled away.
    [[nodiscard]] QList<AccessibleNode> leavesInView() const;

    /// Everything in which the tree and what is painted now disagree, a sentence a line; empty where all is well. The
    /// palette says which colour a dot has in which state.
    [[nodiscard]] QString disagreements(const DaypartPalette& palette) const;

private:
    void walk(QAccessibleInterface* interface, const QRect& view);

    QWidget& m_window;
    QList<AccessibleNode> m_nodes;
};
