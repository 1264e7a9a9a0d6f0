#include "PanelFixture.h"
#include "PanelReading.h"
#include "ui/menubar/DaypartPickerView.h"

#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int width = 340;

struct Shown final {
    PanelFixture panel;
    DaypartPickerView view{panel.daypart};

    Shown() {
        view.setFixedWidth(width);
        view.show();
        view.adjustSize();
        QCoreApplication::processEvents();
    }
    [[nodiscard]] QPushButton* button(const QString& title) { return PanelReading::named<QPushButton>(view, title); }
    void press(const QString& title) {
        QTest::mouseClick(button(title), Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    [[nodiscard]] bool isPlainAuto() { return PanelReading::named<QLabel>(view, u"Auto"_s) != nullptr; }
    [[nodiscard]] QString selected() {
        QStringList titles;
        for (const Daypart daypart : DaypartInfo::allCases) {
            auto* chip = button(DaypartInfo::title(daypart));
            if (chip->isChecked()) {
                titles += chip->accessibleName();
            }
        }
        return titles.join(u',');
    }
};

}

class TestDaypartPickerView final : public QObject {
    Q_OBJECT

private slots:
    void followingTheClockTheCurrentChipIsSelectedAndAutoIsAText() {
        Shown shown;
        QCOMPARE(PanelReading::names(shown.view),
                 (QStringList{u"DAYPART"_s, u"Auto"_s, u"Dawn"_s, u"Day"_s, u"Dusk"_s, u"Night"_s}));
        QCOMPARE(shown.selected(), u"Day"_s);
        QVERIFY(shown.isPlainAuto());
        QCOMPARE(shown.button(u"Auto"_s), nullptr);
    }

    void aChipPinsItsDaypartAndAutoGoesBack() {
        Shown shown;
        shown.press(u"Night"_s);
        QCOMPARE(shown.panel.daypart.daypart.value(), Daypart::night);
        QCOMPARE(shown.selected(), u"Night"_s);
        QVERIFY(!shown.isPlainAuto());

        shown.press(u"Auto"_s);
        QVERIFY(!shown.panel.daypart.isManual);
        QCOMPARE(shown.selected(), u"Day"_s);
        QVERIFY(shown.isPlainAuto());
    }

    void theCurrentChipPinsWithoutAChangeOfColour() {
        Shown shown;
        const QImage before = shown.button(u"Day"_s)->grab().toImage();
        shown.press(u"Day"_s);
        QVERIFY(shown.panel.daypart.isManual);
        QVERIFY(shown.button(u"Auto"_s) != nullptr);
        shown.button(u"Day"_s)->clearFocus();
        QCOMPARE(shown.button(u"Day"_s)->grab().toImage(), before);
    }
};

QTEST_MAIN(TestDaypartPickerView)
#include "TestDaypartPickerView.moc"
