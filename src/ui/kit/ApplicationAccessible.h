#pragma once

#include <QAccessibleObject>
#include <QList>

class QWindow;

/// Tells assistive programs which windows the application has. What the toolkit itself tells leaves every popup out,
/// and where the panel is one, nobody would find it.
class ApplicationAccessible final : public QAccessibleObject {
public:
    explicit ApplicationAccessible(QObject* application);

    /// For `QAccessible::installFactory`, before the application is made: answers for the application object alone.
    static QAccessibleInterface* create(const QString& className, QObject* object);

    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QAccessibleInterface* focusChild() const override;
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;

private:
    [[nodiscard]] static QList<QAccessibleInterface*> roots();
};
