#include "ui/menubar/PanelPlacement.h"

#include <QTest>

class TestPanelPlacement final : public QObject {
    Q_OBJECT

private slots:
    void aColumnLeavesRoomForBars() {
        for (const int screenHeight : {400, 800, 1080, 1440}) {
            QCOMPARE(PanelPlacement::columnHeight(screenHeight), screenHeight - 52);
        }
    }

    void staysNextToTheIconInsideTheWorkArea_data() {
        QTest::addColumn<QRect>("anchor");
        QTest::addColumn<QRect>("workArea");
        QTest::addColumn<QPoint>("topLeft");
        const QRect underTopBar{0, 30, 1920, 1050};
        const QRect overBottomBar{0, 0, 1920, 1050};
        QTest::newRow("bar at the top") << QRect{1000, 0, 24, 30} << underTopBar << QPoint{842, 38};
        QTest::newRow("top, at the right end") << QRect{1890, 0, 24, 30} << underTopBar << QPoint{1572, 38};
        QTest::newRow("top, at the left end") << QRect{2, 0, 24, 30} << underTopBar << QPoint{8, 38};
        QTest::newRow("bar at the bottom") << QRect{1000, 1050, 24, 30} << overBottomBar << QPoint{842, 442};
        QTest::newRow("bottom, at the right end") << QRect{1890, 1050, 24, 30} << overBottomBar << QPoint{1572, 442};
        QTest::newRow("bar at the left") << QRect{0, 900, 40, 40} << QRect{40, 0, 1880, 1080} << QPoint{48, 294};
        QTest::newRow("bar at the right") << QRect{1880, 20, 40, 40} << QRect{0, 0, 1880, 1080} << QPoint{1532, 66};
        QTest::newRow("inside the work area") << QRect{900, 200, 24, 24} << underTopBar << QPoint{742, 230};
        QTest::newRow("the pointer at the top") << QRect{600, 10, 0, 0} << underTopBar << QPoint{430, 38};
        QTest::newRow("the pointer at the bottom") << QRect{600, 1070, 0, 0} << overBottomBar << QPoint{430, 442};
        QTest::newRow("second screen at the right")
            << QRect{3800, 0, 24, 30} << QRect{1920, 30, 1920, 1050} << QPoint{3492, 38};
        QTest::newRow("second screen at the left")
            << QRect{-1919, 0, 24, 30} << QRect{-1920, 30, 1920, 1050} << QPoint{-1912, 38};
        QTest::newRow("second screen above")
            << QRect{600, -30, 24, 30} << QRect{0, -1080, 1920, 1050} << QPoint{442, -638};
        QTest::newRow("anchor outside of the screen") << QRect{5000, -500, 24, 30} << underTopBar << QPoint{1572, 38};
    }
    void staysNextToTheIconInsideTheWorkArea() {
        QFETCH(QRect, anchor);
        QFETCH(QRect, workArea);
        QFETCH(QPoint, topLeft);
        const QSize panel{340, 600};
        const QRect place = PanelPlacement::place(panel, anchor, workArea);
        QCOMPARE(place, QRect(topLeft, panel));
        QVERIFY(workArea.contains(place));
    }

    void goesToTheRoomierSideWhenItFitsOnNeither_data() {
        QTest::addColumn<int>("anchorTop");
        QTest::addColumn<int>("top");
        QTest::newRow("more below") << 300 << 92;
        QTest::newRow("more above") << 400 << 8;
    }
    void goesToTheRoomierSideWhenItFitsOnNeither() {
        QFETCH(int, anchorTop);
        const QRect workArea{0, 0, 1000, 700};
        QTEST(PanelPlacement::place({340, 600}, {500, anchorTop, 24, 24}, workArea).top(), "top");
    }

    void aPanelThatIsTooHighIsMadeAsHighAsTheWorkArea() {
        const QRect workArea{0, 30, 1366, 738};
        QCOMPARE(PanelPlacement::height(600, workArea), 600);
        QCOMPARE(PanelPlacement::height(5000, workArea), 722);
        const QRect place = PanelPlacement::place({340, 722}, {1300, 0, 24, 30}, workArea);
        QCOMPARE(place, QRect(1018, 38, 340, 722));
    }

    void aWorkAreaThatIsTooNarrowShowsTheLeadingEdge() {
        QCOMPARE(PanelPlacement::place({340, 100}, {100, 0, 24, 24}, {0, 24, 300, 400}).topLeft(), QPoint(8, 32));
    }
};

QTEST_APPLESS_MAIN(TestPanelPlacement)
#include "TestPanelPlacement.moc"
