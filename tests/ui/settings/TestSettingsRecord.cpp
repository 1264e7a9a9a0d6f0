#include "platform/AppInfo.h"
#include "support/AccessibleTree.h"
#include "support/ApprovedRecord.h"
#include "ui/VersionLabels.h"
#include "ui/kit/ApplicationAccessible.h"
#include "ui/settings/FormColours.h"
#include "ui/settings/SettingsFixture.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace SettingsStates;
using Tab = SettingsFixture::Tab;

namespace {

void longTexts(OpenSettings& settings) {
    settings.status.caddyDetail = u"refused on every address that was tried "_s.repeated(20);
    settings.status.postgresDetail = QString{500, u'w'};
    settings.status.accountLine = u"Installed · sign in to hide download CTA"_s;
}

/// Of what the style draws only texts, symbols and places: its colours are no role's. Nothing that another release or
/// another machine changes.
QString painted(QWidget& view, const DaypartController& daypart) {
    static const QRegularExpression ofTheStyle{u"^(fill|outline|cut) .*#.*$"_s};
    const FormColours colours{daypart};
    auto lines = ApprovedRecord::painted(view, colours).split(u'\n');
    lines.removeIf([](const QString& line) {
        const bool changes = line.contains(VersionLabels::label()) || line.contains(AppInfo::architecture());
        return changes || ofTheStyle.match(line).hasMatch();
    });
    for (const auto* button : view.findChildren<QAbstractButton*>()) {
        if (button->isVisible()) {
            const QRect place{button->mapTo(&view, QPoint{}), button->size()};
            lines += u"button “%1” %2 %3 %4 %5%6"_s.arg(button->text())
                         .arg(place.x())
                         .arg(place.y())
                         .arg(place.width())
                         .arg(place.height())
                         .arg(button->isChecked() ? u", checked"_s : QString{});
        }
    }
    return lines.join(u'\n') + u'\n';
}

/// The style gives buttons and tabs another point of room in other releases of Qt.
ApprovedRecord::Places places() {
    const auto version = QLibraryInfo::version();
    using enum ApprovedRecord::Places;
    return version >= QVersionNumber{6, 4} && version < QVersionNumber{6, 5} ? count : differ;
}

struct State final {
    const char* name;
    Tab tab;
    const QPalette& palette = light;
    void (*make)(OpenSettings&) = asItIs;
    Qt::LayoutDirection direction = Qt::LeftToRight;
};

const State states[]{
    {"bridge, light", Tab::bridge},
    {"bridge, dark", Tab::bridge, dark},
    {"bridge, online", Tab::bridge, light, online},
    {"bridge, long", Tab::bridge, light, longTexts},
    {"bridge, right to left", Tab::bridge, light, longTexts, Qt::RightToLeft},
    {"permissions, light", Tab::permissions},
    {"permissions, dark", Tab::permissions, dark},
    {"permissions, each", Tab::permissions, light, everyStatus},
    {"permissions, right to left", Tab::permissions, light, everyStatus, Qt::RightToLeft},
    {"daypart, light", Tab::daypart},
    {"daypart, dark", Tab::daypart, dark},
    {"daypart, pinned", Tab::daypart, light, pinned<Daypart::dusk>},
    {"daypart, right to left", Tab::daypart, light, asItIs, Qt::RightToLeft},
    {"about, light", Tab::about},
    {"about, dark", Tab::about, dark},
};

}

Q_DECLARE_METATYPE(const State*)

/// What each tab paints is what was looked at and approved, and what assistive programs are told.
class TestSettingsRecord final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { ApplicationAccessible::install(); }
    void cleanup() {
        QApplication::setPalette(m_palette);
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

    void paintsWhatWasApprovedAndIsTold_data() {
        QTest::addColumn<const State*>("state");
        for (const auto& state : states) {
            QTest::newRow(state.name) << &state;
        }
    }
    void paintsWhatWasApprovedAndIsTold() {
        QFETCH(const State*, state);
        QApplication::setPalette(state->palette);
        QApplication::setLayoutDirection(state->direction);
        OpenSettings settings;
        QVERIFY(QTest::qWaitForWindowActive(settings.view()));
        settings.view()->setGeometry(40, 30, 520, 680);
        settings.show(state->tab);
        state->make(settings);
        settings.settle();
        const QString name = u"settings, "_s + QString::fromLatin1(state->name);
        const auto difference = ApprovedRecord::difference(name, painted(*settings.view(), settings.daypart), places());
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
        const auto disagreements = AccessibleTree{*settings.view()}.disagreements(settings.daypart.palette);
        QVERIFY2(disagreements.isEmpty(), qPrintable(disagreements));
    }

private:
    const QPalette m_palette = QApplication::palette();
};

QTEST_MAIN(TestSettingsRecord)

#include "TestSettingsRecord.moc"
