#include "support/FixedColours.h"
#include "ui/kit/DotLabel.h"

#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// Whether two pictures differ by no more than the rounding of smoothed edges.
bool isAlike(const QImage& first, const QImage& second) {
    constexpr int tolerance = 8;
    for (int i = 0; i < first.width() * first.height(); ++i) {
        const QPoint place{i % first.width(), i / first.width()};
        if (qAbs(first.pixelColor(place).green() - second.pixelColor(place).green()) > tolerance) {
            return false;
        }
    }
    return true;
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
        const FixedColours colours;
        DotLabel dot{6, colours};
        dot.display(ColourRole::danger, u"ok"_s);
        QImage whole{(QSizeF{dot.size()} * scale).toSize(), QImage::Format_RGB32};
        whole.setDevicePixelRatio(scale);
        whole.fill(Qt::white);
        dot.render(&whole, {}, {}, QWidget::DrawChildren);
        const QImage image = whole.copy(0, 0, across, across);
        for (int x = 0; x < across; ++x) {
            QVERIFY(image.pixelColor(x, across / 2) != QColor{Qt::white});
        }
        QCOMPARE(image.pixelColor(across / 2, across / 2), colours.of(ColourRole::danger));
        QVERIFY(isAlike(image, image.transformed(QTransform{-1, 0, 0, 1, 0, 0})));
        QVERIFY(isAlike(image, image.transformed(QTransform{1, 0, 0, -1, 0, 0})));
        QVERIFY(image.pixelColor(0, 0).green() > 128);
    }
};

QTEST_MAIN(TestDotLabel)
#include "TestDotLabel.moc"
