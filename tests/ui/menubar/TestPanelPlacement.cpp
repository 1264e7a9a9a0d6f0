#include "ui/menubar/PanelPlacement.h"

#include "support/Rows.h"

class TestPanelPlacement final : public QObject {
    Q_OBJECT

private slots:
    void columnLeavesRoomForBars() { QCOMPARE(PanelPlacement::columnHeight(800), 748); }

    void staysNextToTheIconInsideTheWorkArea_data() {
        const Rows<QRect, QRect, QPoint> row{"anchor", "area", "place"};
        const QRect below{0, 30, 1920, 1050}; // a bar at the top
        const QRect above{0, 0, 1920, 1050};  // a bar at the bottom
        const QRect between{0, 0, 1880, 1080};
        row("bar at the top", QRect{1000, 0, 24, 30}, below, QPoint{842, 38});
        row("top, at the right end", QRect{1890, 0, 24, 30}, below, QPoint{1572, 38});
        row("top, at the left end", QRect{2, 0, 24, 30}, below, QPoint{8, 38});
        row("bar at the bottom", QRect{1000, 1050, 24, 30}, above, QPoint{842, 442});
        row("bottom, at the right end", QRect{1890, 1050, 24, 30}, above, QPoint{1572, 442});
        row("bar at the left", QRect{0, 900, 40, 40}, between.translated(40, 0), QPoint{48, 294});
        row("bar at the right", QRect{1880, 20, 40, 40}, between, QPoint{1532, 66});
        row("inside the work area", QRect{900, 200, 24, 24}, below, QPoint{742, 230});
        row("the pointer at the top", QRect{600, 10, 0, 0}, below, QPoint{430, 38});
        row("the pointer at the bottom", QRect{600, 1070, 0, 0}, above, QPoint{430, 442});
        row("screen at the right", QRect{3800, 0, 24, 30}, below.translated(1920, 0), QPoint{3492, 38});
        row("screen at the left", QRect{-1919, 0, 24, 30}, below.translated(-1920, 0), QPoint{-1912, 38});
        row("screen above", QRect{600, -30, 24, 30}, above.translated(0, -1080), QPoint{442, -638});
        row("anchor outside of the screen", QRect{5000, -500, 24, 30}, below, QPoint{1572, 38});
    }
    void staysNextToTheIconInsideTheWorkArea() {
        QFETCH(QRect, anchor);
        QFETCH(QRect, area);
        const QRect place = PanelPlacement::place({340, 600}, anchor, area);
        QTEST(place.topLeft(), "place");
        QCOMPARE(place.size(), QSize(340, 600));
        QVERIFY(area.contains(place));
    }

    void goesToTheRoomierSideWhenItFitsOnNeither() {
        const QRect area{0, 0, 1000, 700};
        QCOMPARE(PanelPlacement::place({340, 600}, {500, 300, 24, 24}, area).top(), 92);
        QCOMPARE(PanelPlacement::place({340, 600}, {500, 400, 24, 24}, area).top(), 8);
    }

    void panelThatIsTooHighIsMadeAsHighAsTheWorkArea() {
        const QRect area{0, 30, 1366, 738};
        QCOMPARE(PanelPlacement::height(600, area), 600);
        QCOMPARE(PanelPlacement::height(5000, area), 722);
        QCOMPARE(PanelPlacement::place({340, 722}, {1300, 0, 24, 30}, area), QRect(1018, 38, 340, 722));
    }

    void workAreaThatIsTooNarrowShowsTheLeadingEdge() {
        QCOMPARE(PanelPlacement::place({340, 100}, {100, 0, 24, 24}, {0, 24, 300, 400}).topLeft(), QPoint(8, 32));
    }
};

QTEST_APPLESS_MAIN(TestPanelPlacement)
#include "TestPanelPlacement.moc"
