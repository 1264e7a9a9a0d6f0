#include "support/FixedColours.h"
#include "ui/kit/DotLabel.h"

#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const FixedColours colours;

QImage drawn(DotLabel& dot, qreal scale) {
    QImage image{(QSizeF{dot.size()} * scale).toSize(), QImage::Format_RGB32};
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    dot.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

/// Whether two pictures differ by no more than the rounding of smoothed edges.
bool isAlike(const QImage& first, const QImage& second) {
    constexpr int tolerance = 8;
    for (int y = 0; y < first.height(); ++y) {
        for (int x = 0; x < first.width(); ++x) {
            if (qAbs(first.pixelColor(x, y).green() - second.pixelColor(x, y).green()) > tolerance) {
                return false;
            }
        }
    }
    return true;
}

int coloured(const QImage& image, int row) {
    int count = 0;
    for (int x = 0; x < image.width(); ++x) {
        count += image.pixelColor(x, row) != QColor{Qt::white} ? 1 : 0;
    }
    return count;
}

}

class TestDotLabel final : public QObject {
    Q_OBJECT

private slots:
    void isARoundSymmetricalCircleAtEveryScale_data() {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<int>("across");
        QTest::newRow("1") << 1.0 << 6;
        QTest::newRow("1.25") << 1.25 << 7;
        QTest::newRow("1.5") << 1.5 << 9;
        QTest::newRow("2") << 2.0 << 12;
        QTest::newRow("3") << 3.0 << 18;
    }
    void isARoundSymmetricalCircleAtEveryScale() {
        QFETCH(qreal, scale);
        QFETCH(int, across);
        DotLabel dot{6, colours};
        dot.display(ColourRole::danger, u"ok"_s);
        const QImage image = drawn(dot, scale).copy(0, 0, across, across);
        QCOMPARE(coloured(image, across / 2), across);
        QCOMPARE(image.pixelColor(across / 2, across / 2), colours.of(ColourRole::danger));
        QVERIFY(isAlike(image, image.mirrored(true, false)));
        QVERIFY(isAlike(image, image.mirrored(false, true)));
        QVERIFY(image.pixelColor(0, 0).green() > 128);
    }

    void aHaloOfTheSameColourLiesAroundIt() {
        DotLabel dot{10, colours, nullptr, {.diameter = 28, .opacity = 0.18F}};
        dot.display(ColourRole::text, u"down"_s);
        QCOMPARE(dot.size(), QSize(28, 28));
        const QImage image = drawn(dot, 1);
        QCOMPARE(image.pixelColor(14, 14), colours.of(ColourRole::text));
        QVERIFY(qAbs(image.pixelColor(3, 14).red() - qRound(255 * 0.82 + colours.of(ColourRole::text).red() * 0.18)) <=
                1);
        QCOMPARE(image.pixelColor(0, 0), QColor{Qt::white});
        QCOMPARE(coloured(image, 14), 28);
    }

    void saysItsState() {
        DotLabel dot{6, colours};
        dot.display(false, ColourRole::danger);
        QCOMPARE(dot.accessibleName(), u"not ok"_s);
        dot.display(true, ColourRole::danger);
        QCOMPARE(dot.accessibleName(), u"ok"_s);
    }
};

QTEST_MAIN(TestDotLabel)
#include "TestDotLabel.moc"
