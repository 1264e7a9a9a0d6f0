#include "support/FixedColours.h"
#include "ui/kit/DotLabel.h"

#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

class TestDotLabel final : public QObject {
    Q_OBJECT

private slots:
    void isARoundSymmetricalCircleAtEveryScale() {
        for (const qreal scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
            const int across = int(6 * scale);
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
            const QImage shape =
                image.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither); // but for smooth edges
            QCOMPARE(shape.transformed(QTransform{-1, 0, 0, 1, 0, 0}), shape);
            QCOMPARE(shape.transformed(QTransform{1, 0, 0, -1, 0, 0}), shape);
            QVERIFY(image.pixelColor(0, 0).green() > 128);
        }
    }
};

QTEST_MAIN(TestDotLabel)
#include "TestDotLabel.moc"
