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

using namespace Qt::StringLiterals;

namespace {

constexpr int overhang = 2;               // of a letter over its label, in points
constexpr qsizetype comparedInTip = 1500; // a tool tip shows the beginning of what is very long
constexpr int shortened = 60;             // what a message shows of a long text
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

/// What a window paints, held against what it tells of.
class Comparison final {
public:
    Comparison(const AccessibleTree& tree, QWidget& window, const DaypartPalette& palette)
        : m_tree{tree}
        , m_window{window}
        , m_painted{window} {
        everyTextBelongsToOneLeaf();
        for (const auto& node : tree.those([](const auto&) { return true; })) {
            inItsPlace(node);
            inOrder(node);
            node.isControl() ? asControl(node) : asText(node);
        }
        for (const auto& node : tree.leavesInView()) {
            const QString shown = withoutSpaces(paintedIn(node));
            shown.isEmpty() ? asDot(node, palette) : namedAs(node, shown);
        }
    }
    [[nodiscard]] QString found() const { return m_found.join(u'\n'); }

private:
    void expect(bool holds, const QString& name, const QString& otherwise) {
        m_found += holds ? QStringList{} : QStringList{u'“' + name.left(shortened) + u"” "_s + otherwise};
    }

    void everyTextBelongsToOneLeaf() {
        for (const auto& text : m_painted.texts()) {
            const auto owners = m_tree.those([&text](const AccessibleNode& node) {
                return node.isLeaf && node.seen.adjusted(-overhang, 0, overhang, 0).contains(text.seen.toAlignedRect());
            });
            expect(owners.size() == 1, text.string, u"is painted, and %1 nodes are there"_s.arg(owners.size()));
        }
    }

    void inItsPlace(const AccessibleNode& node) {
        const auto* widget = widgetOf(node);
        expect(widget == nullptr || node.place == QRect{widget->mapTo(&m_window, QPoint{}), widget->size()}, node.name,
               u"is said to be where it is not"_s);
        const QPoint middle = m_window.mapToGlobal(node.place.center());
        auto* there = QAccessible::queryAccessibleInterface(&m_window);
        while (auto* below = there->childAt(middle.x(), middle.y())) {
            there = below;
        }
        expect(!node.isLeaf || node.place.isEmpty() || !node.isInView() || there == node.interface, node.name,
               u"is not what a pointer finds there"_s);
        auto* const parent = node.interface->parent();
        expect(parent != nullptr && parent->child(parent->indexOfChild(node.interface)) == node.interface, node.name,
               u"is not a child of its parent"_s);
    }

    /// Of two neighbours, the second is beside the first or below it.
    void inOrder(const AccessibleNode& parent) {
        const auto children =
            m_tree.those([&](const AccessibleNode& node) { return node.interface->parent() == parent.interface; });
        for (qsizetype i = 1; i < children.size(); ++i) {
            const QRect& before = children.at(i - 1).place;
            const QRect& after = children.at(i).place;
            const bool isBehind =
                m_window.isRightToLeft() ? after.right() < before.left() : after.left() > before.right();
            const bool isBeside = isBehind && after.bottom() >= before.top();
            expect(isBeside || after.top() > before.bottom(), children.at(i - 1).name,
                   u"is read before "_s + children.at(i).name);
        }
    }

    void asText(const AccessibleNode& node) {
        const bool canBeCopied = qobject_cast<SelectableLabel*>(node.interface->object()) != nullptr;
        const bool canBeUsed = node.state().focusable || !node.actions().isEmpty();
        expect(!node.isLeaf || node.interface->role() == QAccessible::StaticText, node.name,
               u"is neither a text nor a control"_s);
        expect(!node.isLeaf || canBeCopied || !canBeUsed, node.name, u"is a text and can be pressed or focused"_s);
    }

    void asControl(const AccessibleNode& node) {
        const bool isDisabled = node.state().disabled;
        const bool presses = node.actions().value(0) == QAccessibleActionInterface::pressAction();
        expect(presses != isDisabled, node.name, u"can be pressed without being enabled, or the reverse"_s);
        expect(node.state().focusable, node.name, u"cannot have the keyboard"_s);
        for (const auto& text : m_painted.texts()) {
            const bool isIn = node.seen.contains(text.seen.center().toPoint());
            expect(!isIn || (text.opacity < 1) == isDisabled, node.name, u"is dimmed and enabled, or the reverse"_s);
        }
    }

    /// A text says its name; where that is cut, a tool tip has the whole of it.
    void namedAs(const AccessibleNode& node, const QString& shown) {
        const QString name = withoutSpaces(node.name);
        auto* const widget = widgetOf(node);
        const bool isCut =
            widget != nullptr && shown != name && shown.endsWith(u'…') && name.startsWith(shown.chopped(1));
        expect(shown == name || isCut, node.name, u"is said where this is painted: "_s + shown.left(shortened));
        expect(!isCut || withoutSpaces(toolTipOf(*widget)).startsWith(name.left(comparedInTip)), node.name,
               u"is cut, and no tool tip has the whole of it"_s);
    }

    /// The colour of a dot means its name; what has no name either paints nothing at all.
    void asDot(const AccessibleNode& node, const DaypartPalette& palette) {
        const QRgb colour = m_painted.picture().pixel(node.place.center());
        const bool isEmpty = node.name.isEmpty() && !node.isControl() && isOneColour(m_painted.picture(), node.place);
        const bool isMeant = isEmpty || std::ranges::any_of(dotStates, [&](const auto& state) {
                                 return palette.*state.first == colour && node.name == state.second;
                             });
        expect(isMeant, node.name, u"is said where nothing of that meaning is painted"_s);
    }

    [[nodiscard]] QString paintedIn(const AccessibleNode& node) const {
        QString joined;
        for (const auto& text : m_painted.texts()) {
            joined += node.seen.contains(text.seen.center().toPoint()) ? text.string : QString{};
        }
        return joined;
    }

    const AccessibleTree& m_tree;
    QWidget& m_window;
    const PaintRecord m_painted;
    QStringList m_found;
};

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

QList<AccessibleNode> AccessibleTree::leavesInView() const {
    return those([](const AccessibleNode& node) { return node.isLeaf && node.isInView(); });
}

std::optional<AccessibleNode> AccessibleTree::focused() const {
    const auto found = those([](const AccessibleNode& node) { return bool(node.state().focused); });
    return found.isEmpty() ? std::nullopt : std::optional{found.constLast()};
}

QString AccessibleTree::disagreements(const DaypartPalette& palette) const {
    return Comparison{*this, m_window, palette}.found();
}
