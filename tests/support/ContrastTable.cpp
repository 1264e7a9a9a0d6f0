#include "support/ContrastTable.h"

#include "platform/AppInfo.h"
#include "support/PaintRecord.h"
#include "ui/VersionLabels.h"
#include "ui/settings/FormColours.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTabBar>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

QString nameAt(const QWidget& window, QPoint place) {
    const QWidget* widget = window.childAt(place);
    if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) {
        return tabs->tabText(tabs->tabAt(tabs->mapFrom(&window, place)));
    }
    if (!widget->accessibleName().isEmpty()) {
        return widget->accessibleName();
    }
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    const auto* label = qobject_cast<const QLabel*>(widget);
    return button != nullptr ? button->text() : label != nullptr ? label->text() : QString{};
}

bool isAlike(const QList<ContrastTable::Sight>& one, const QList<ContrastTable::Sight>& other) {
    return std::ranges::equal(one, other, [](const auto& first, const auto& second) {
        return first.ink == second.ink && first.ground == second.ground;
    });
}

}

ContrastTable::ContrastTable(QList<Appearance> appearances)
    : m_appearances{std::move(appearances)} {}

QList<ContrastTable::Sight> ContrastTable::sightsIn(QWidget& window) {
    QList<Sight> sights;
    const PaintRecord painted{window};
    for (const auto& text : painted.texts()) {
        QString name = nameAt(window, text.place.center().toPoint());
        if (name.contains(VersionLabels::caption()) || name == VersionLabels::label()) {
            name = u"(the version)"_s;
        }
        if (name == AppInfo::architecture()) {
            name = u"(the architecture)"_s;
        }
        const bool isNew = sights.isEmpty() || sights.constLast().name != name;
        if (isNew) {
            sights += {name, text.ink, text.ground};
        }
    }
    return sights;
}

void ContrastTable::add(const QString& state, const QList<QList<Sight>>& looks) {
    for (qsizetype i = 0; i < looks.constFirst().size(); ++i) {
        Row row{state, {looks.constFirst().at(i).name}, {}};
        for (const auto& look : looks) {
            if (look.size() != looks.constFirst().size() || look.at(i).name != row.names.constFirst()) {
                qFatal("not every appearance shows “%s”", qPrintable(row.names.constFirst()));
            }
            row.sights += look.at(i);
        }
        const auto known = std::ranges::find_if(
            m_rows, [&](const Row& other) { return other.state == state && isAlike(other.sights, row.sights); });
        if (known == m_rows.end()) {
            m_rows += row;
        } else if (!known->names.contains(row.names.constFirst())) {
            known->names += row.names.constFirst();
        }
    }
}

QString ContrastTable::markdown() const {
    QString table = u"| State | Colours | Texts |"_s;
    for (const auto& appearance : m_appearances) {
        table += u' ' + appearance.title + u" |"_s;
    }
    table += u"\n|---|---|---|"_s + u"---:|"_s.repeated(m_appearances.size()) + u'\n';
    for (const auto& row : m_rows) {
        table += u"| %1 | %2 on %3 | “%4” |"_s.arg(row.state, roleOf(row, &Sight::ink), roleOf(row, &Sight::ground),
                                                   row.names.join(u"”, “"_s));
        for (const auto& sight : row.sights) {
            table += u' ' + ratio(sight) + u" |"_s;
        }
        table += u'\n';
    }
    return table;
}

/// The role whose colour it is in every appearance; what was mixed from two has none.
QString ContrastTable::roleOf(const Row& row, QColor Sight::* part) const {
    for (qsizetype role = 0; role < m_appearances.constFirst().roles.size(); ++role) {
        const bool isIt = std::ranges::equal(m_appearances, row.sights, [&](const auto& appearance, const auto& sight) {
            return appearance.roles.at(role).second.rgb() == (sight.*part).rgb();
        });
        if (isIt) {
            return m_appearances.constFirst().roles.at(role).first;
        }
    }
    return u"a mixture"_s;
}

QString ContrastTable::ratio(const Sight& sight) {
    constexpr double hundred = 100;
    const double exact = FormColours::contrast(sight.ink, sight.ground);
    const QString shown = QString::number(std::floor(exact * hundred) / hundred, 'f', 2);
    return exact < sufficient ? u"**"_s + shown + u"**"_s : shown;
}
