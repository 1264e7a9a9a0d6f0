#include "daypart/DaypartPalette.h"
#include "ui/menubar/DaypartChip.h"
#include "ui/menubar/Pixels.h"
#include "ui/menubar/StatTile.h"
#include "ui/menubar/VornaAccentButton.h"
#include "ui/menubar/VornaMenuButton.h"

#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

const DaypartPalette& palette = DaypartPalette::of(Daypart::night);
constexpr QRgb ground = 0xff00ff00;
constexpr QSize size{96, 48};
constexpr int scale = 16; // fine enough to tell a fifth of a point

using Make = std::unique_ptr<QWidget> (*)();

template <bool isPressed>
std::unique_ptr<QWidget> accentButton() {
    auto button = std::make_unique<VornaAccentButton>(u"Refresh"_s, u"arrow.clockwise"_s);
    button->setButtonStyle({palette});
    button->setDown(isPressed);
    return button;
}

std::unique_ptr<QWidget> pressedMenuButton() {
    auto button = std::make_unique<VornaMenuButton>(u"Quit vorna"_s, u"power"_s);
    button->setButtonStyle({palette});
    button->setDown(true);
    return button;
}

std::unique_ptr<QWidget> tile() {
    auto made = std::make_unique<StatTile>(u"Load"_s);
    made->display(u"1.73"_s, palette);
    return made;
}

template <bool isChosen>
std::unique_ptr<QWidget> chip() {
    auto made = std::make_unique<DaypartChip>(Daypart::day);
    made->display(isChosen, palette);
    return made;
}

/// How many pixels the diagonal from a corner runs over the ground.
int depth(const QImage& image, QPoint corner, QPoint inwards) {
    int steps = 0;
    while (steps < image.height() / 2 && image.pixel(corner + inwards * steps) == ground) {
        ++steps;
    }
    return steps;
}

}
Q_DECLARE_METATYPE(Make)

class TestPanelCorners final : public QObject {
    Q_OBJECT

private slots:
    void cornersAreAsRoundAsTheyAreDesigned_data() {
        QTest::addColumn<Make>("make");
        QTest::addColumn<int>("radius");
        QTest::addColumn<QColor>("edge");
        const QColor accent{palette.accent};
        QTest::newRow("accent button") << Make{accentButton<false>} << 8 << accent;
        QTest::newRow("pressed accent button") << Make{accentButton<true>} << 8 << accent;
        QTest::newRow("pressed menu button")
            << Make{pressedMenuButton} << 6 << Pixels::blended(palette.accent, ground, 0.15);
        QTest::newRow("tile") << Make{tile} << 6 << QColor{palette.border};
        QTest::newRow("chosen chip") << Make{chip<true>} << 6 << accent;
        QTest::newRow("other chip") << Make{chip<false>} << 6 << QColor{palette.border};
    }
    void cornersAreAsRoundAsTheyAreDesigned() {
        QFETCH(Make, make);
        QFETCH(QColor, edge);
        const auto widget = make();
        widget->resize(size);
        const QImage image = Pixels::drawn(*widget, ground, scale);
        const QRect area = image.rect();
        const std::pair<QPoint, QPoint> corners[]{{area.topLeft(), {1, 1}},
                                                  {area.topRight(), {-1, 1}},
                                                  {area.bottomLeft(), {1, -1}},
                                                  {area.bottomRight(), {-1, -1}}};
        for (const auto& [corner, inwards] : corners) {
            const int outside = depth(image, corner, inwards);
            const double radius = outside / (scale * (1 - std::sqrt(0.5)));
            QTEST(qRound(radius), "radius");
            constexpr int intoTheLine = 4;
            QVERIFY(Pixels::isNear(image.pixelColor(corner + inwards * (outside + intoTheLine)), edge));
        }
    }
};

QTEST_MAIN(TestPanelCorners)
#include "TestPanelCorners.moc"
