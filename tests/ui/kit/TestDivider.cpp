#include "support/FixedColours.h"
#include "ui/kit/Divider.h"

#include <QImage>
#include <QTest>

class TestDivider final : public QObject {
    Q_OBJECT

private slots:
    void isEquallyThickWhereverItStands_data() {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<int>("pixels");
        QTest::newRow("1") << 1.0 << 1;
        QTest::newRow("1.25") << 1.25 << 1;
        QTest::newRow("1.5") << 1.5 << 1;
        QTest::newRow("1.75") << 1.75 << 1;
        QTest::newRow("2") << 2.0 << 2;
        QTest::newRow("3") << 3.0 << 3;
    }
    void isEquallyThickWhereverItStands() {
        QFETCH(qreal, scale);
        const FixedColours colours;
        for (int top = 10; top < 30; ++top) {
            QWidget window;
            window.resize(40, 60);
            Divider divider{colours, &window};
            divider.setGeometry(0, top, 40, Divider::thickness);
            QImage image{(QSizeF{window.size()} * scale).toSize(), QImage::Format_RGB32};
            image.setDevicePixelRatio(scale);
            image.fill(Qt::magenta);
            window.render(&image, {}, {}, QWidget::DrawChildren);
            int pixels = 0;
            for (int y = 0; y < image.height(); ++y) {
                const QColor pixel = image.pixelColor(image.width() / 2, y);
                QVERIFY(pixel == QColor{Qt::magenta} || pixel == colours.of(ColourRole::border));
                pixels += pixel == colours.of(ColourRole::border) ? 1 : 0;
            }
            QTEST(pixels, "pixels");
        }
    }
};

QTEST_MAIN(TestDivider)
#include "TestDivider.moc"
