#include "ui/kit/ApplicationAccessible.h"

#include "ui/kit/ButtonAccessible.h"
#include "ui/kit/Decoration.h"
#include "ui/kit/LabelAccessible.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QApplication>
#include <QLabel>
#include <QWidget>

namespace {

QList<QAccessibleInterface*> shownWindows() {
    QList<QAccessibleInterface*> windows;
    const auto widgets = QApplication::topLevelWidgets();
    for (auto* widget : widgets) {
        if (widget->isVisible()) {
            windows.append(QAccessible::queryAccessibleInterface(widget));
        }
    }
    return windows;
}

class DecorationAccessible final : public QAccessibleWidget {
public:
    explicit DecorationAccessible(Decoration& decoration)
        : QAccessibleWidget{&decoration, QAccessible::Separator} {}

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.invisible = true;
        return state;
    }
};

/// Asked for the class of an object, then for each class above it; a plain widget is asked for last.
QAccessibleInterface* interfaceOf(const QString& className, QObject* object) {
    if (object == QCoreApplication::instance()) {
        return new ApplicationAccessible;
    }
    if (auto* button = qobject_cast<QAbstractButton*>(object)) {
        return new ButtonAccessible{*button};
    }
    if (auto* label = qobject_cast<QLabel*>(object); label != nullptr && !label->isWindow()) {
        return new LabelAccessible{*label};
    }
    if (auto* decoration = qobject_cast<Decoration*>(object)) {
        return new DecorationAccessible{*decoration};
    }
    auto* widget = qobject_cast<QWidget*>(object);
    const bool isPlainWindow = widget != nullptr && widget->isWindow() && className == u"QWidget";
    return isPlainWindow ? new QAccessibleWidget{widget, QAccessible::Window} : nullptr;
}

}

void ApplicationAccessible::install() {
    QAccessible::installFactory(interfaceOf);
}

int ApplicationAccessible::childCount() const {
    return static_cast<int>(shownWindows().size());
}

int ApplicationAccessible::indexOfChild(const QAccessibleInterface* child) const {
    return static_cast<int>(shownWindows().indexOf(child));
}

QAccessibleInterface* ApplicationAccessible::child(int index) const {
    return shownWindows().value(index);
}

QAccessibleInterface* ApplicationAccessible::focusChild() const {
    auto* focused = QApplication::focusWidget();
    return focused != nullptr ? QAccessible::queryAccessibleInterface(focused->window()) : nullptr;
}
