#include "PanelFixture.h"
#include "PanelReading.h"
#include "Pixels.h"
#include "ui/VersionLabels.h"
#include "ui/kit/DotLabel.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/HeaderView.h"

using namespace Qt::StringLiterals;
using Band = StatusModel::Band;
Q_DECLARE_METATYPE(Band)
using Role = QRgb DaypartPalette::*;
Q_DECLARE_METATYPE(Role)

namespace {

void addBands() {
    QTest::addColumn<Band>("band");
    QTest::addColumn<Role>("role");
    QTest::addColumn<QString>("state");
    QTest::newRow("green") << Band::green << &DaypartPalette::success << u"ok"_s;
    QTest::newRow("amber") << Band::amber << &DaypartPalette::warning << u"degraded"_s;
    QTest::newRow("red") << Band::red << &DaypartPalette::danger << u"down"_s;
    QTest::newRow("unknown") << Band::unknown << &DaypartPalette::textMuted << u"unknown"_s;
}

}

class TestHeaderView final : public QObject {
    Q_OBJECT

private slots:
    void theDotFollowsTheBandWhateverTheBridgeSays_data() { addBands(); }
    void theDotFollowsTheBandWhateverTheBridgeSays() {
        QFETCH(Band, band);
        QFETCH(Role, role);
        PanelFixture panel;
        HeaderView header{panel.status, panel.daypart};
        header.show();
        for (const bool isOnline : {false, true}) {
            panel.status.bridgeOnline = isOnline;
            panel.status.caddyBand = band;
            QCoreApplication::processEvents();
            auto* dot = header.findChild<DotLabel*>();
            QCOMPARE(dot->colour(), QColor{panel.daypart.palette.value().*role});
            QTEST(dot->accessibleName(), "state");
        }
    }

    void theHaloIsOfTheDotsColourAndFaint_data() { addBands(); }
    void theHaloIsOfTheDotsColourAndFaint() {
        QFETCH(Band, band);
        QFETCH(Role, role);
        PanelFixture panel;
        HeaderView header{panel.status, panel.daypart};
        header.show();
        for (const Daypart daypart : DaypartInfo::allCases) {
            panel.daypart.set(daypart);
            panel.status.caddyBand = band;
            QCoreApplication::processEvents();
            const DaypartPalette& palette = panel.daypart.palette;
            const auto* dot = header.findChild<DotLabel*>();
            const QPoint centre = dot->mapTo(&header, QPoint{14, 14});
            const QImage image = Pixels::drawn(header, palette.background);
            const auto at = [&](int left) { return image.pixelColor(centre - QPoint{left, 0}); };
            const QColor halo = Pixels::blended(palette.*role, palette.surface, 0.18);
            QCOMPARE(at(0), QColor{palette.*role});
            QCOMPARE(at(4), QColor{palette.*role});
            QVERIFY(Pixels::isNear(at(7), halo));
            QVERIFY(Pixels::isNear(at(9), halo));
            QVERIFY(Pixels::isNear(at(13), halo));
            QCOMPARE(at(16), QColor{palette.surface});
        }
    }

    void beforeTheFirstPollTheDotIsMuted() {
        PanelFixture panel;
        HeaderView header{panel.status, panel.daypart};
        header.show();
        QCOMPARE(header.findChild<DotLabel*>()->colour(), QColor{panel.daypart.palette.value().textMuted});
    }

    void theTextsKeepTwiceTheSpacingFromTheDot() {
        PanelFixture panel;
        HeaderView header{panel.status, panel.daypart};
        header.setFixedWidth(340);
        header.show();
        QCoreApplication::processEvents();
        QCOMPARE(header.findChild<TextLabel*>()->geometry().left(), 14);
        QCOMPARE(header.findChild<TextLabel*>()->width(), 340 - 2 * 14 - 2 * 10 - 28);
    }

    void theSubtitleEndsWithTheDaypart() {
        PanelFixture panel;
        HeaderView header{panel.status, panel.daypart};
        header.show();
        for (const Daypart daypart : DaypartInfo::allCases) {
            panel.daypart.set(daypart);
            QCoreApplication::processEvents();
            QCOMPARE(PanelReading::names(header),
                     (QStringList{u"vorna"_s, VersionLabels::caption() + u" · " + DaypartInfo::title(daypart),
                                  u"unknown"_s}));
        }
    }
};

QTEST_MAIN(TestHeaderView)
#include "TestHeaderView.moc"
