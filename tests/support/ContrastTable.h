#pragma once

#include <QColor>
#include <QList>
#include <QStringList>

class QWidget;

/// How well each text stands out from what is behind it, as a table in Markdown: a column for each appearance, and a
/// row for all texts that have the same colours in every one of them.
class ContrastTable final {
public:
    static constexpr double sufficient = 4.5;

    /// A set of colours that everything is shown in, with their names.
    struct Appearance final {
        QString title;
        QList<std::pair<QString, QColor>> roles;
    };

    /// One text as it is seen.
    struct Sight final {
        QString name;
        QColor ink;
        QColor ground;
    };

    explicit ContrastTable(QList<Appearance> appearances);

    /// What a window paints now, one for each widget and each tab that paints a text.
    [[nodiscard]] static QList<Sight> sightsIn(QWidget& window);

    /// The same texts in each appearance, in one order.
    void add(const QString& state, const QList<QList<Sight>>& looks);

    [[nodiscard]] QString markdown() const;

private:
    struct Row final {
        QString state;
        QStringList names;
        QList<Sight> sights;
    };

    [[nodiscard]] QString roleOf(const Row& row, QColor Sight::* part) const;
    [[nodiscard]] static QString ratio(const Sight& sight);

    const QList<Appearance> m_appearances;
    QList<Row> m_rows;
};
