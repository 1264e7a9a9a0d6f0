#include "ui/settings/TabListAccessible.h"

#include <QPointer>
#include <QTabBar>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace {

class TabAccessible final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    TabAccessible(QTabBar& tabs, int index)
        : m_tabs{&tabs}
        , m_index{index} {}

    bool isValid() const override { return !m_tabs.isNull() && m_index < m_tabs->count(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_tabs->window()->windowHandle(); }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(m_tabs.data()); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::PageTab; }
    void setText(QAccessible::Text, const QString&) override {}

    QString text(QAccessible::Text kind) const override {
        return isValid() && kind == QAccessible::Name ? m_tabs->tabText(m_index) : QString{};
    }

    QRect rect() const override {
        const auto tab = m_tabs->tabRect(m_index);
        return {m_tabs->mapToGlobal(tab.topLeft()), tab.size()};
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        if (isValid()) {
            const auto isCurrent = m_index == m_tabs->currentIndex();
            state.selectable = true;
            state.selected = isCurrent;
            state.focusable = true;
            state.focused = isCurrent && m_tabs->hasFocus();
            state.invisible = !m_tabs->isVisible();
        }
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }

    QStringList actionNames() const override { return {pressAction()}; }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }
    void doAction(const QString& action) override {
        if (isValid() && action == pressAction()) {
            m_tabs->setCurrentIndex(m_index);
        }
    }

private:
    QPointer<QTabBar> m_tabs;
    int m_index;
};

}

TabListAccessible::TabListAccessible(QTabBar& tabs)
    : QAccessibleWidget{&tabs, QAccessible::PageTabList}
    , m_tabs{tabs} {}

TabListAccessible::~TabListAccessible() {
    std::ranges::for_each(m_children, &QAccessible::deleteAccessibleInterface);
}

void TabListAccessible::install() {
    constexpr auto create = [](const QString&, QObject* object) -> QAccessibleInterface* {
        auto* const tabs = qobject_cast<QTabBar*>(object);
        return tabs == nullptr ? nullptr : new TabListAccessible{*tabs};
    };
    [[maybe_unused]] static const bool isInstalled = (QAccessible::installFactory(create), true);
}

int TabListAccessible::childCount() const {
    return m_tabs.count();
}

QAccessibleInterface* TabListAccessible::child(int index) const {
    if (index < 0 || index >= m_tabs.count()) {
        return nullptr;
    }
    while (std::cmp_less_equal(m_children.size(), index)) {
        const auto next = static_cast<int>(m_children.size());
        m_children.push_back(QAccessible::registerAccessibleInterface(new TabAccessible{m_tabs, next}));
    }
    return QAccessible::accessibleInterface(m_children.at(static_cast<std::size_t>(index)));
}

int TabListAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto found = std::ranges::find_if(
        m_children, [&](QAccessible::Id id) { return QAccessible::accessibleInterface(id) == child; });
    return found == m_children.end() ? -1 : static_cast<int>(found - m_children.begin());
}

QAccessibleInterface* TabListAccessible::childAt(int x, int y) const {
    return child(m_tabs.tabAt(m_tabs.mapFromGlobal(QPoint{x, y})));
}

QAccessibleInterface* TabListAccessible::focusChild() const {
    return m_tabs.hasFocus() ? child(m_tabs.currentIndex()) : nullptr;
}
