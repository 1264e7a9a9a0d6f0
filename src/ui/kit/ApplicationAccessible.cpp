#include "ui/kit/ApplicationAccessible.h"

#include <QAbstractButton>
#include <QAccessibleObject>
#include <QAccessibleWidget>
#include <QApplication>
#include <QKeySequence>
#include <QLabel>

namespace {

class Application final : public QAccessibleApplication {
public:
    int childCount() const override { return static_cast<int>(shownWindows().size()); }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return static_cast<int>(shownWindows().indexOf(child));
    }
    QAccessibleInterface* child(int index) const override { return shownWindows().value(index); }
    QAccessibleInterface* focusChild() const override {
        auto* focused = QApplication::focusWidget();
        return focused != nullptr ? QAccessible::queryAccessibleInterface(focused->window()) : nullptr;
    }

private:
    static QList<QAccessibleInterface*> shownWindows() {
        QList<QAccessibleInterface*> windows;
        for (auto* widget : QApplication::topLevelWidgets()) {
            if (widget->isVisible()) {
                windows += QAccessible::queryAccessibleInterface(widget);
            }
        }
        return windows;
    }
};

/// One that can be checked is one choice of several. Every press is a click, also of a choice that is made already,
/// where what the toolkit offers does nothing, and however soon after another, where it takes two within a tenth of a
/// second for one.
class ButtonAccessible final : public QAccessibleWidget {
public:
    explicit ButtonAccessible(QAbstractButton& button)
        : QAccessibleWidget{&button, QAccessible::Button}
        , m_button{button} {}

    /// Also of one that becomes a choice only after it was asked.
    QAccessible::Role role() const override {
        return m_button.isCheckable() ? QAccessible::RadioButton : QAccessible::Button;
    }
    QString text(QAccessible::Text kind) const override {
        const QString given = QAccessibleWidget::text(kind);
        return given.isEmpty() && kind == QAccessible::Name ? m_button.text() : given;
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = m_button.isCheckable();
        state.checked = m_button.isChecked();
        state.pressed = m_button.isDown();
        return state;
    }
    QStringList actionNames() const override {
        const QStringList press{pressAction()};
        return m_button.isEnabled() ? press + QAccessibleWidget::actionNames() : QAccessibleWidget::actionNames();
    }
    void doAction(const QString& action) override {
        if (action != pressAction()) {
            QAccessibleWidget::doAction(action);
        } else if (m_button.isEnabled()) {
            // What a click leads to is not to happen within the assistive program's call.
            QMetaObject::invokeMethod(&m_button, &QAbstractButton::click, Qt::QueuedConnection);
        }
    }
    QStringList keyBindingsForAction(const QString& action) const override {
        const QString keys = m_button.shortcut().toString(QKeySequence::NativeText);
        return action == pressAction() && !keys.isEmpty() ? QStringList{keys} : QStringList{};
    }

private:
    QAbstractButton& m_button;
};

/// A text or a dot, letter by letter. What the toolkit itself offers drops ampersands from a text that names another
/// one, and lets that name stand for the other while it is empty.
class LabelAccessible final : public QAccessibleWidget {
public:
    explicit LabelAccessible(QLabel& label)
        : QAccessibleWidget{&label, QAccessible::StaticText}
        , m_label{label} {}

    QString text(QAccessible::Text kind) const override {
        if (kind != QAccessible::Name) {
            return QAccessibleWidget::text(kind);
        }
        return m_label.accessibleName().isEmpty() ? m_label.text() : m_label.accessibleName();
    }
    QList<QPair<QAccessibleInterface*, QAccessible::Relation>> relations(QAccessible::Relation match) const override {
        auto found = QAccessibleWidget::relations(match);
        if (m_label.buddy() != nullptr && match.testFlag(QAccessible::Labelled)) {
            found.append({QAccessible::queryAccessibleInterface(m_label.buddy()), QAccessible::Labelled});
        }
        return found;
    }

private:
    QLabel& m_label;
};

class DecorationAccessible final : public QAccessibleWidget {
public:
    explicit DecorationAccessible(QWidget& decoration)
        : QAccessibleWidget{&decoration, QAccessible::Separator} {}

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.invisible = true;
        return state;
    }
};

/// Asked for the class of an object, then for each class above it; a plain widget is asked for last.
QAccessibleInterface* interfaceOf(const QString& className, QObject* object) {
    if (object == QCoreApplication::instance()) {
        return new Application;
    }
    if (auto* button = qobject_cast<QAbstractButton*>(object)) {
        return new ButtonAccessible{*button};
    }
    if (auto* label = qobject_cast<QLabel*>(object); label != nullptr && !label->isWindow()) {
        return new LabelAccessible{*label};
    }
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget != nullptr && widget->testAttribute(Qt::WA_TransparentForMouseEvents)) {
        return new DecorationAccessible{*widget};
    }
    const bool isPlainWindow = widget != nullptr && widget->isWindow() && className == u"QWidget";
    return isPlainWindow ? new QAccessibleWidget{widget, QAccessible::Window} : nullptr;
}

}

void ApplicationAccessible::install() {
    QAccessible::installFactory(interfaceOf);
}
