#include "platform/AppInfo.h"
#include "support/ApprovedRecord.h"
#include "ui/VersionLabels.h"
#include "ui/settings/FormColours.h"
#include "ui/settings/SettingsFixture.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using Item = PermissionCenter::Item;
using Status = Item::Status;
using Tab = SettingsFixture::Tab;

namespace {

QPalette desktop(QRgb window, QRgb text, QRgb button) {
    QPalette palette{QColor{button}, QColor{window}};
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Highlight, QColor{53, 132, 228});
    return palette;
}

const auto light = desktop(0xfff1f1f2, 0xff1d1d1f, 0xffffffff);
const auto dark = desktop(0xff242428, 0xfff2f2f3, 0xff3a3a3f);

void online(OpenSettings& settings) {
    settings.status.bridgeOnline = true;
    settings.status.caddyDetail = u"running · 3/4 sites"_s;
    settings.status.postgresDetail = u"accepting on 5432"_s;
    settings.status.accountLine = u"Signed in · CTA hidden"_s;
}

void longTexts(OpenSettings& settings) {
    settings.status.caddyDetail = u"refused on every address that was tried "_s.repeated(20);
    settings.status.postgresDetail = QString{500, u'w'};
    settings.status.accountLine = u"Installed · sign in to hide download CTA"_s;
}

void everyStatus(OpenSettings& settings) {
    QList<Item> items;
    for (const auto status : {Status::granted, Status::denied, Status::notDetermined, Status::unknown}) {
        const auto number = QString::number(items.size());
        const auto link = status == Status::granted ? std::nullopt : std::optional{QUrl{u"pane:"_s + number}};
        items += {number, u"Permission "_s + number, u"What it is for"_s, status, link};
    }
    settings.permissionCenter->items = items;
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

struct State final {
    const char* name;
    Tab tab;
    QPalette palette;
    void (*make)(OpenSettings&);
};

}

Q_DECLARE_METATYPE(const State*)

/// What each tab paints is what was looked at and approved.
class TestSettingsRecord final : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { QApplication::setPalette(m_palette); }

    void paintsWhatWasApproved_data();
    void paintsWhatWasApproved();

private:
    const QPalette m_palette = QApplication::palette();
};

void TestSettingsRecord::paintsWhatWasApproved_data() {
    static constexpr auto asItIs = [](OpenSettings&) {};
    static constexpr auto pinned = [](OpenSettings& settings) { settings.daypart.set(Daypart::dusk); };
    static const State states[]{
        {"bridge, light", Tab::bridge, light, asItIs},
        {"bridge, dark", Tab::bridge, dark, asItIs},
        {"bridge, online", Tab::bridge, light, online},
        {"bridge, long", Tab::bridge, light, longTexts},
        {"permissions, light", Tab::permissions, light, asItIs},
        {"permissions, dark", Tab::permissions, dark, asItIs},
        {"permissions, each", Tab::permissions, light, everyStatus},
        {"daypart, light", Tab::daypart, light, asItIs},
        {"daypart, dark", Tab::daypart, dark, asItIs},
        {"daypart, pinned", Tab::daypart, light, pinned},
        {"about, light", Tab::about, light, asItIs},
        {"about, dark", Tab::about, dark, asItIs},
    };
    QTest::addColumn<const State*>("state");
    for (const auto& state : states) {
        QTest::newRow(state.name) << &state;
    }
}

void TestSettingsRecord::paintsWhatWasApproved() {
    QFETCH(const State*, state);
    QApplication::setPalette(state->palette);
    OpenSettings settings;
    QVERIFY(QTest::qWaitForWindowActive(settings.view()));
    settings.view()->resize(520, 680);
    settings.show(state->tab);
    QCoreApplication::processEvents();
    state->make(settings);
    for (int turn = 0; turn < 4; ++turn) { // announced, rendered, laid out
        QCoreApplication::processEvents();
    }
    const QString name = u"settings, "_s + QString::fromLatin1(state->name);
    const auto difference = ApprovedRecord::difference(name, painted(*settings.view(), settings.daypart));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

QTEST_MAIN(TestSettingsRecord)

#include "TestSettingsRecord.moc"
