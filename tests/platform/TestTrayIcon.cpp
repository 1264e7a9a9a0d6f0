#include "platform/linux/TrayIcon.h"

#include <QImage>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

qreal linear(qreal component) {
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

qreal luminance(const QColor& colour) {
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

qreal contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

}

class TestTrayIcon final : public QObject {
    Q_OBJECT

private slots:
    void everyStateStandsOutFromLightAndFromDark_data();
    void everyStateStandsOutFromLightAndFromDark();
    void everyStateHasAColourOfItsOwn();
    void everySizeHasAPictureOfItsOwn();
    void unknownSymbolStillGivesAnIcon();
};

void TestTrayIcon::everyStateStandsOutFromLightAndFromDark_data() {
    QTest::addColumn<QString>("symbolName");
    QTest::newRow("offline") << u"antenna.radiowaves.left.and.right.slash"_s;
    QTest::newRow("green") << u"checkmark.circle.fill"_s;
    QTest::newRow("amber") << u"exclamationmark.triangle.fill"_s;
    QTest::newRow("red") << u"xmark.octagon.fill"_s;
    QTest::newRow("unknown") << u"circle.dashed"_s;
}

void TestTrayIcon::everyStateStandsOutFromLightAndFromDark() {
    QFETCH(QString, symbolName);
    constexpr qreal leastContrast = 3.0;
    const QColor colour = TrayIcon::colour(symbolName);
    QVERIFY2(contrast(colour, Qt::white) >= leastContrast, qPrintable(QString::number(contrast(colour, Qt::white))));
    QVERIFY2(contrast(colour, Qt::black) >= leastContrast, qPrintable(QString::number(contrast(colour, Qt::black))));
}

void TestTrayIcon::everyStateHasAColourOfItsOwn() {
    const QColor green = TrayIcon::colour(u"checkmark.circle.fill"_s);
    const QColor amber = TrayIcon::colour(u"exclamationmark.triangle.fill"_s);
    const QColor red = TrayIcon::colour(u"xmark.octagon.fill"_s);
    const QColor grey = TrayIcon::colour(u"circle.dashed"_s);
    QVERIFY(green.green() > green.red() && green.green() > green.blue());
    QVERIFY(red.red() > 2 * red.green() && red.red() > 2 * red.blue());
    QVERIFY(amber.red() > amber.green() && amber.green() > 2 * amber.blue());
    QVERIFY(grey.hslSaturationF() < 0.1);
    QCOMPARE(TrayIcon::colour(u"antenna.radiowaves.left.and.right.slash"_s), grey);
}

void TestTrayIcon::everySizeHasAPictureOfItsOwn() {
    const QIcon icon = TrayIcon::icon(u"xmark.octagon.fill"_s);
    for (const int size : {16, 22, 24, 32, 48, 64}) {
        QVERIFY(icon.availableSizes().contains(QSize(size, size)));
        const QImage picture = icon.pixmap(QSize{size, size}, 1.0).toImage();
        QCOMPARE(picture.size(), QSize(size, size));
        QCOMPARE(picture.pixelColor(size / 2, size / 6), TrayIcon::colour(u"xmark.octagon.fill"_s));
        QCOMPARE(picture.pixelColor(0, 0).alpha(), 0);
    }
}

void TestTrayIcon::unknownSymbolStillGivesAnIcon() {
    QVERIFY(!TrayIcon::icon(u"no.such.symbol"_s).availableSizes().isEmpty());
}

QTEST_MAIN(TestTrayIcon)
#include "TestTrayIcon.moc"
