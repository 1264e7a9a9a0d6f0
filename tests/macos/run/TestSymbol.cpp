#include "platform/Symbol.h"

#include "Doubles.h"

#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// The smallest rectangle around all that is painted, or nothing.
QRect inked(const QImage& picture) {
    QRect box;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y).alpha() != 0) {
                box |= QRect{x, y, 1, 1};
            }
        }
    }
    return box;
}

}

class TestSymbol final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void asksForTheSizeAndWeight_data();
    void asksForTheSizeAndWeight();
    void hasTheAskedSizeOnEveryScale_data();
    void hasTheAskedSizeOnEveryScale();
    void standsInTheMiddleAndFits_data();
    void standsInTheMiddleAndFits();
    void widerSymbolsAreAsLargeAsTheirNeighbours_data();
    void widerSymbolsAreAsLargeAsTheirNeighbours();
    void hasExactlyTheAskedColour();
    void aNameWithoutASymbolGivesATransparentPicture();
    void leavesTheGraphicsAsTheyWere();
};

void TestSymbol::init() {
    Doubles::reset();
}

void TestSymbol::asksForTheSizeAndWeight_data() {
    QTest::addColumn<Symbol::Weight>("weight");
    QTest::addColumn<double>("expected");
    QTest::newRow("regular") << Symbol::Weight::regular << 0.0;
    QTest::newRow("semibold") << Symbol::Weight::semibold << 0.3;
}

void TestSymbol::asksForTheSizeAndWeight() {
    QFETCH(Symbol::Weight, weight);
    (void)Symbol::pixmap(u"bell"_s, 16, Qt::black, 2, weight);
    QCOMPARE(Doubles::state().symbolPointSize, 12.0);
    QTEST(Doubles::state().symbolWeight, "expected");
}

void TestSymbol::hasTheAskedSizeOnEveryScale_data() {
    QTest::addColumn<double>("size");
    QTest::addColumn<double>("scale");
    QTest::addColumn<int>("pixels");
    QTest::newRow("1x") << 16.0 << 1.0 << 16;
    QTest::newRow("2x") << 16.0 << 2.0 << 32;
    QTest::newRow("not a whole number") << 13.0 << 1.25 << 16;
    QTest::newRow("nothing") << 0.0 << 1.0 << 1;
}

void TestSymbol::hasTheAskedSizeOnEveryScale() {
    QFETCH(double, size);
    QFETCH(double, scale);
    for (const QString& name : {u"bell"_s, u"no.such.symbol"_s}) {
        const QPixmap picture = Symbol::pixmap(name, size, Qt::black, scale);
        QTEST(picture.width(), "pixels");
        QTEST(picture.height(), "pixels");
        QCOMPARE(picture.devicePixelRatio(), scale);
    }
}

void TestSymbol::standsInTheMiddleAndFits_data() {
    QTest::addColumn<QSizeF>("natural");
    QTest::addColumn<double>("scale");
    QTest::addColumn<QRect>("place");
    QTest::newRow("as large as the picture") << QSizeF{20, 20} << 1.0 << QRect{0, 0, 20, 20};
    QTest::newRow("smaller") << QSizeF{10, 12} << 1.0 << QRect{5, 4, 10, 12};
    QTest::newRow("smaller at 2x") << QSizeF{10, 12} << 2.0 << QRect{10, 8, 20, 24};
    QTest::newRow("wider") << QSizeF{40, 20} << 1.0 << QRect{0, 5, 20, 10};
    QTest::newRow("higher, at 2x") << QSizeF{10, 40} << 2.0 << QRect{15, 0, 10, 40};
}

void TestSymbol::standsInTheMiddleAndFits() {
    QFETCH(QSizeF, natural);
    QFETCH(double, scale);
    Doubles::state().symbolSize = natural;
    QTEST(inked(Symbol::pixmap(u"bell"_s, 20, Qt::black, scale).toImage()), "place");
}

void TestSymbol::widerSymbolsAreAsLargeAsTheirNeighbours_data() {
    QTest::addColumn<QSizeF>("natural");
    QTest::addColumn<double>("scale");
    QTest::addColumn<QSize>("picture");
    QTest::addColumn<QRect>("place");
    QTest::newRow("smaller") << QSizeF{10, 12} << 1.0 << QSize{20, 20} << QRect{5, 4, 10, 12};
    QTest::newRow("wider") << QSizeF{24, 18} << 1.0 << QSize{24, 20} << QRect{0, 1, 24, 18};
    QTest::newRow("wider by an odd number of pixels") << QSizeF{23, 18} << 2.0 << QSize{46, 40} << QRect{0, 2, 46, 36};
    QTest::newRow("wider and higher") << QSizeF{60, 40} << 1.0 << QSize{30, 20} << QRect{0, 0, 30, 20};
}

void TestSymbol::widerSymbolsAreAsLargeAsTheirNeighbours() {
    QFETCH(QSizeF, natural);
    QFETCH(double, scale);
    Doubles::state().symbolSize = natural;
    const QPixmap picture =
        Symbol::pixmap(u"bell"_s, 20, Qt::black, scale, Symbol::Weight::regular, Symbol::Fit::height);
    QTEST(picture.size(), "picture");
    QTEST(inked(picture.toImage()), "place");
}

void TestSymbol::hasExactlyTheAskedColour() {
    const QColor colour{0x12, 0x9a, 0xf3};
    const QImage picture = Symbol::pixmap(u"bell"_s, 16, colour, 1).toImage();
    QCOMPARE(picture.pixelColor(8, 8), colour);
    QColor faint = colour;
    faint.setAlpha(128);
    QCOMPARE(Symbol::pixmap(u"bell"_s, 16, faint, 1).toImage().pixelColor(8, 8).alpha(), 128);
}

void TestSymbol::aNameWithoutASymbolGivesATransparentPicture() {
    const QPixmap picture = Symbol::pixmap(u"no.such.symbol"_s, 16, Qt::red, 2);
    QCOMPARE(picture.size(), (QSize{32, 32}));
    QVERIFY(inked(picture.toImage()).isEmpty());
}

void TestSymbol::leavesTheGraphicsAsTheyWere() {
    (void)Symbol::pixmap(u"bell"_s, 16, Qt::black, 1);
    QCOMPARE(Doubles::state().openGraphicsStates, 0);
    QCOMPARE(Doubles::state().flushes, 1);
}

QTEST_MAIN(TestSymbol)
#include "TestSymbol.moc"
