#include "ui/settings/TabListAccessible.h"

#include <QAccessibleWidget>
#include <QTabBar>

namespace {

class Tab final : public QAccessibleObject, public QAccessibleActionInterface {
public:
    /// The object, which the bar owns, stands for the tab.
    Tab(QObject& tab, QTabBar& bar, int index)
        : QAccessibleObject{&tab}
        , m_bar{bar}
        , m_index{index} {}

    QWindow* window() const override { return m_bar.window()->windowHandle(); }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(&m_bar); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::PageTab; }

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? m_bar.tabText(m_index) : QString{};
    }

    QRect rect() const override {
        const auto tab = m_bar.tabRect(m_index);
        return {m_bar.mapToGlobal(tab.topLeft()), tab.size()};
    }

    QAccessible::State state() const override {
        const bool isCurrent = m_index == m_bar.currentIndex();
        QAccessible::State state;
        state.selectable = true;
        state.selected = isCurrent;
        state.focusable = true;
        state.focused = isCurrent && m_bar.hasFocus();
        state.invisible = !m_bar.isVisible();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }

    QStringList actionNames() const override { return {pressAction()}; }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }
    void doAction(const QString& action) override {
        if (action == pressAction()) {
            m_bar.setCurrentIndex(m_index);
        }
    }

private:
    QTabBar& m_bar;
    int m_index;
};

class TabList final : public QAccessibleWidget {
public:
    explicit TabList(QTabBar& bar)
        : QAccessibleWidget{&bar, QAccessible::PageTabList}
        , m_bar{bar} {}

    int childCount() const override { return m_bar.count(); }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return static_cast<int>(m_tabs.indexOf(child->object()));
    }

    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= m_bar.count()) {
            return nullptr;
        }
        for (auto next = static_cast<int>(m_tabs.size()); next <= index; ++next) {
            m_tabs.append(new QObject{&m_bar});
            QAccessible::registerAccessibleInterface(new Tab{*m_tabs.constLast(), m_bar, next});
        }
        return QAccessible::queryAccessibleInterface(m_tabs.at(index));
    }

    QAccessibleInterface* focusChild() const override {
        return m_bar.hasFocus() ? child(m_bar.currentIndex()) : nullptr;
    }

private:
    QTabBar& m_bar;
    mutable QObjectList m_tabs;
};

QAccessibleInterface* listOf(const QString&, QObject* object) {
    auto* const bar = qobject_cast<QTabBar*>(object);
    return bar == nullptr ? nullptr : new TabList{*bar};
}

}

void TabListAccessible::install() {
    QAccessible::installFactory(listOf);
}
