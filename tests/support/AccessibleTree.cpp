#include "support/AccessibleTree.h"

#include "daypart/DaypartPalette.h"
#include "support/PaintRecord.h"
#include "ui/kit/SelectableLabel.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QHelpEvent>
#include <QTextDocumentFragment>
#include <QToolTip>
#include <QWidget>

#include <algorithm>
#include <array>
#include <ranges>

using namespace Qt::StringLiterals;

namespace {

constexpr int overhang = 2;               // of a letter over its label, in points
constexpr qsizetype comparedInTip = 1500; // a tool tip shows the beginning of what is very long

constexpr int shortened = 60; // what a message shows of a long text
constexpr QChar breakInWord{u'\u200B'};

constexpr std::array controlRoles{QAccessible::Button, QAccessible::RadioButton, QAccessible::PageTab};

constexpr std::array dotStates{
    std::pair{&DaypartPalette::success, "ok"_L1},    std::pair{&DaypartPalette::warning, "not ok"_L1},
    std::pair{&DaypartPalette::danger, "not ok"_L1}, std::pair{&DaypartPalette::warning, "degraded"_L1},
    std::pair{&DaypartPalette::danger, "down"_L1},   std::pair{&DaypartPalette::textMuted, "unknown"_L1},
};

QString withoutSpaces(QString text) {
    return text.removeIf([](QChar character) { return character.isSpace(); });
}

QWidget* widgetOf(const AccessibleNode& node) {
    return qobject_cast<QWidget*>(node.interface->object());
}

/// What the tool tip over the middle of a widget says.
QString toolTipOf(QWidget& widget) {
    const QPoint middle = widget.rect().center();
    QHelpEvent help{QEvent::ToolTip, middle, widget.mapToGlobal(middle)};
    QApplication::sendEvent(&widget, &help);
    const QString tip = QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText().remove(breakInWord);
    QToolTip::hideText();
    return tip;
}

bool isOneColour(const QImage& picture, const QRect& place) {
    const QImage part = picture.copy(place);
    QImage plain = part;
    plain.fill(part.isNull() ? QColor{} : part.pixelColor(0, 0));
    return part == plain;
}

/// The innermost that a pointer at this place finds.
QAccessibleInterface* foundAt(QAccessibleInterface* window, QPoint place) {
    auto* found = window;
    while (auto* below = found->childAt(place.x(), place.y())) {
        found = below;
    }
    return found;
}

}

bool AccessibleNode::isControl() const {
    return std::ranges::find(controlRoles, interface->role()) != controlRoles.end();
}

QStringList AccessibleNode::actions() const {
    auto* actions = interface->actionInterface();
    return actions == nullptr ? QStringList{} : actions->actionNames();
}

void AccessibleNode::press() const {
    interface->actionInterface()->doAction(actions().constFirst());
}

AccessibleTree::AccessibleTree(QWidget& window)
    : m_window{window} {
    walk(QAccessible::queryAccessibleInterface(&window), window.rect());
}

void AccessibleTree::walk(QAccessibleInterface* interface, const QRect& view) {
    if (interface == nullptr || interface->state().invisible) {
        return;
    }
    const QRect place = interface->rect().translated(-m_window.mapToGlobal(QPoint{}));
    const auto index = m_nodes.size();
    m_nodes += AccessibleNode{interface, interface->text(QAccessible::Name), place, place & view, true};
    const bool scrolls = qobject_cast<QAbstractScrollArea*>(interface->object()) != nullptr;
    for (int i = 0; i < interface->childCount(); ++i) {
        walk(interface->child(i), scrolls ? view & place : view);
    }
    m_nodes[index].isLeaf = m_nodes.size() == index + 1 && interface->role() != QAccessible::ScrollBar;
}

QList<AccessibleNode> AccessibleTree::leaves() const {
    return those([](const AccessibleNode& node) { return node.isLeaf; });
}

QList<AccessibleNode> AccessibleTree::controls() const {
    return those(&AccessibleNode::isControl);
}

QList<AccessibleNode> AccessibleTree::leavesInView() const {
    return those([](const AccessibleNode& node) { return node.isLeaf && node.isInView(); });
}

std::optional<AccessibleNode> AccessibleTree::focused() const {
    const auto lastFirst = m_nodes | std::views::reverse;
    const auto last = std::ranges::find_if(lastFirst, [](const AccessibleNode& node) { return node.state().focused; });
    return last == lastFirst.end() ? std::nullopt : std::optional{*last};
}

QString AccessibleTree::disagreements(const DaypartPalette& palette) const {
    QStringList found;
    const PaintRecord painted{m_window};
    compareTexts(painted, found);
    compareDots(painted, palette, found);
    for (const auto& node : m_nodes) {
        checkNode(node, found);
        if (node.isControl()) {
            checkControl(node, painted, found);
        }
    }
    checkOrder(found);
    return found.join(u'\n');
}

/// Every text belongs to exactly one leaf, and every leaf has its name painted.
void AccessibleTree::compareTexts(const PaintRecord& painted, QStringList& found) const {
    const auto all = leaves();
    for (const auto& text : painted.texts()) {
        const auto owners = std::ranges::count_if(all, [&](const AccessibleNode& node) {
            return node.seen.adjusted(-overhang, 0, overhang, 0).contains(text.seen.toAlignedRect());
        });
        if (owners != 1) {
            found += u"“%1” is painted, and %2 nodes are there"_s.arg(text.string).arg(owners);
        }
    }
    for (const auto& node : all) {
        const QString shown = withoutSpaces(paintedIn(node, painted));
        const QString name = withoutSpaces(node.name);
        if (shown.isEmpty() || shown == name || !node.isInView()) {
            continue;
        }
        auto* const widget = widgetOf(node);
        const bool isCut = shown.endsWith(u'…') && name.startsWith(shown.chopped(1));
        if (!isCut || widget == nullptr) {
            found += u"“%1” is painted, “%2” is said"_s.arg(shown.left(shortened), name.left(shortened));
        } else if (!withoutSpaces(toolTipOf(*widget)).startsWith(name.left(comparedInTip))) {
            found += u"“%1” is cut, and no tool tip has the whole of it"_s.arg(name.left(shortened));
        }
    }
}

QString AccessibleTree::paintedIn(const AccessibleNode& node, const PaintRecord& painted) const {
    QString joined;
    for (const auto& text : painted.texts()) {
        if (node.seen.contains(text.seen.center().toPoint())) {
            joined += text.string;
        }
    }
    return joined;
}

/// What paints no text is a dot, and its colour means its name; what has no name either paints nothing at all.
void AccessibleTree::compareDots(const PaintRecord& painted, const DaypartPalette& palette, QStringList& found) const {
    for (const auto& node : leavesInView()) {
        if (!paintedIn(node, painted).isEmpty()) {
            continue;
        }
        const QRgb colour = painted.picture().pixel(node.place.center());
        const bool isEmpty = node.name.isEmpty() && !node.isControl() && isOneColour(painted.picture(), node.place);
        const bool isMeant = isEmpty || std::ranges::any_of(dotStates, [&](const auto& state) {
                                 return palette.*state.first == colour && node.name == state.second;
                             });
        if (!isMeant) {
            found += u"“%1” is said where nothing of that meaning is painted"_s.arg(node.name);
        }
    }
}

void AccessibleTree::checkNode(const AccessibleNode& node, QStringList& found) const {
    const auto role = node.interface->role();
    if (node.isLeaf && !node.isControl() && role != QAccessible::StaticText) {
        found +=
            u"“%1” at %2, %3 is neither a text nor a control"_s.arg(node.name).arg(node.place.x()).arg(node.place.y());
    }
    const bool canBeCopied = qobject_cast<SelectableLabel*>(node.interface->object()) != nullptr;
    if (!node.isControl() && node.isLeaf && !canBeCopied && (node.state().focusable || !node.actions().isEmpty())) {
        found += u"“%1” is a text and can be pressed or focused"_s.arg(node.name);
    }
    if (const auto* widget = widgetOf(node);
        widget != nullptr && node.place != QRect{widget->mapTo(&m_window, QPoint{}), widget->size()}) {
        found += u"“%1” is said to be where it is not"_s.arg(node.name);
    }
    auto* const window = QAccessible::queryAccessibleInterface(&m_window);
    const QPoint middle = m_window.mapToGlobal(node.place.center());
    if (node.isLeaf && !node.place.isEmpty() && node.isInView() && foundAt(window, middle) != node.interface) {
        found += u"“%1” is not what a pointer finds there"_s.arg(node.name);
    }
    auto* const parent = node.interface->parent();
    if (parent == nullptr || parent->child(parent->indexOfChild(node.interface)) != node.interface) {
        found += u"“%1” is not a child of its parent"_s.arg(node.name);
    }
}

void AccessibleTree::checkControl(const AccessibleNode& node, const PaintRecord& painted, QStringList& found) const {
    const auto state = node.state();
    const bool presses = node.actions().value(0) == QAccessibleActionInterface::pressAction();
    if (presses == bool(state.disabled)) {
        found += u"“%1” can be pressed without being enabled, or the reverse"_s.arg(node.name);
    }
    if (!state.focusable) {
        found += u"“%1” cannot have the keyboard"_s.arg(node.name);
    }
    for (const auto& text : painted.texts()) {
        if (node.seen.contains(text.seen.center().toPoint()) && (text.opacity < 1) != bool(state.disabled)) {
            found += u"“%1” is dimmed and enabled, or the reverse"_s.arg(node.name);
        }
    }
}

/// Of two neighbours, the second is beside the first or below it.
void AccessibleTree::checkOrder(QStringList& found) const {
    for (const auto& node : m_nodes) {
        const auto children =
            those([&](const AccessibleNode& other) { return other.interface->parent() == node.interface; });
        for (qsizetype i = 1; i < children.size(); ++i) {
            const QRect& before = children.at(i - 1).place;
            const QRect& after = children.at(i).place;
            const bool isBehind =
                m_window.isRightToLeft() ? after.right() < before.left() : after.left() > before.right();
            const bool isBeside = isBehind && after.bottom() >= before.top();
            if (!isBeside && after.top() <= before.bottom()) {
                found += u"“%1” is read before “%2”"_s.arg(children.at(i - 1).name, children.at(i).name);
            }
        }
    }
}
