#include "platform/Symbol.h"

#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr qreal smallSize = 16;

const QStringList knownNames{
    u"antenna.radiowaves.left.and.right.slash"_s,
    u"arrow.clockwise"_s,
    u"bell"_s,
    u"bubble.left.and.bubble.right"_s,
    u"checkmark.circle.fill"_s,
    u"circle.dashed"_s,
    u"cpu"_s,
    u"exclamationmark.triangle.fill"_s,
    u"externaldrive.badge.timemachine"_s,
    u"gearshape"_s,
    u"icloud.and.arrow.up"_s,
    u"info.circle"_s,
    u"lock.shield"_s,
    u"moon.stars.fill"_s,
    u"network"_s,
    u"power"_s,
    u"rectangle.connected.to.line.below"_s,
    u"sun.horizon"_s,
    u"sun.max.fill"_s,
    u"sunrise.fill"_s,
    u"sunset.fill"_s,
    u"xmark.octagon.fill"_s,
};

/// How much of the picture is covered, 0…1.
qreal ink(const QImage& picture) {
    qreal sum = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            sum += picture.pixelColor(x, y).alphaF();
        }
    }
    return sum / (picture.width() * picture.height());
}

QImage draw(const QString& name, qreal size = smallSize, Symbol::Weight weight = Symbol::Weight::regular) {
    return Symbol::pixmap(name, size, Qt::black, 1, weight).toImage();
}

/// Every dotted name in quotes of the sources that ends in a word that symbols end in.
QStringList namesInSources() {
    static const QRegularExpression dotted{u"\"([a-z0-9]+(?:\\.[a-z0-9]+)*)\"_s"_s};
    static const QRegularExpression symbolic{
        u"\\.(fill|slash|dashed|clockwise|below|right|left|up|down|timemachine|shield|horizon|circle|badge)$"_s};
    QStringList names;
    QDirIterator files{
        QStringLiteral(VORNA_SOURCE_DIR), {u"*.cpp"_s, u"*.h"_s}, QDir::Files, QDirIterator::Subdirectories};
    while (files.hasNext()) {
        QFile file{files.next()};
        if (!file.open(QFile::ReadOnly)) {
            continue;
        }
        auto matches = dotted.globalMatch(QString::fromUtf8(file.readAll()));
        while (matches.hasNext()) {
            const QString name = matches.next().captured(1);
            if (symbolic.match(name).hasMatch()) {
                names.append(name);
            }
        }
    }
    return names;
}

}

class TestSymbol final : public QObject {
    Q_OBJECT

private slots:
    void everyKnownNameHasAPictureThatIsLegibleWhenSmall_data();
    void everyKnownNameHasAPictureThatIsLegibleWhenSmall();
    void everyNameInTheSourcesHasAPicture();
    void noTwoNamesShareAPicture();
    void tintIsExactlyTheAskedColour_data();
    void tintIsExactlyTheAskedColour();
    void pictureHasTheAskedSizeOnEveryScale_data();
    void pictureHasTheAskedSizeOnEveryScale();
    void unknownNameGivesATransparentPicture_data();
    void unknownNameGivesATransparentPicture();
    void semiboldHasMoreInkThanRegular();
    void marksOfFilledSymbolsAreCutOut();
};

void TestSymbol::everyKnownNameHasAPictureThatIsLegibleWhenSmall_data() {
    QTest::addColumn<QString>("name");
    for (const QString& name : knownNames) {
        QTest::newRow(qPrintable(name)) << name;
    }
}

void TestSymbol::everyKnownNameHasAPictureThatIsLegibleWhenSmall() {
    QFETCH(QString, name);
    const QImage picture = draw(name);
    QVERIFY2(ink(picture) > 0.12, qPrintable(QString::number(ink(picture))));
    QVERIFY2(ink(picture) < 0.90, qPrintable(QString::number(ink(picture))));
    int strong = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            strong += picture.pixelColor(x, y).alphaF() > 0.6 ? 1 : 0;
        }
    }
    QVERIFY2(strong >= 16, qPrintable(QString::number(strong)));
}

void TestSymbol::everyNameInTheSourcesHasAPicture() {
    for (const QString& name : namesInSources()) {
        QVERIFY2(ink(draw(name)) > 0, qPrintable(name));
        QVERIFY2(knownNames.contains(name), qPrintable(name));
    }
}

void TestSymbol::noTwoNamesShareAPicture() {
    for (qsizetype first = 0; first < knownNames.size(); ++first) {
        for (qsizetype second = first + 1; second < knownNames.size(); ++second) {
            QVERIFY2(draw(knownNames[first]) != draw(knownNames[second]), qPrintable(knownNames[first]));
        }
    }
}

void TestSymbol::tintIsExactlyTheAskedColour_data() {
    QTest::addColumn<QColor>("colour");
    QTest::newRow("black") << QColor{Qt::black};
    QTest::newRow("white") << QColor{Qt::white};
    QTest::newRow("mixed") << QColor{0x12, 0x9A, 0xF3};
}

void TestSymbol::tintIsExactlyTheAskedColour() {
    QFETCH(QColor, colour);
    const QImage picture = Symbol::pixmap(u"checkmark.circle.fill"_s, 24, colour, 1).toImage();
    QCOMPARE(picture.pixelColor(12, 4), colour);
    int opaque = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (const QColor pixel = picture.pixelColor(x, y); pixel.alpha() == 255) {
                QCOMPARE(pixel, colour);
                ++opaque;
            }
        }
    }
    QVERIFY(opaque > 100);
    QColor faint = colour;
    faint.setAlpha(128);
    QCOMPARE(Symbol::pixmap(u"checkmark.circle.fill"_s, 24, faint, 1).toImage().pixelColor(12, 4).alpha(), 128);
}

void TestSymbol::pictureHasTheAskedSizeOnEveryScale_data() {
    QTest::addColumn<qreal>("size");
    QTest::addColumn<qreal>("scale");
    QTest::addColumn<int>("pixels");
    QTest::newRow("1x") << 16.0 << 1.0 << 16;
    QTest::newRow("1.25x") << 12.0 << 1.25 << 15;
    QTest::newRow("1.5x") << 12.0 << 1.5 << 18;
    QTest::newRow("2x") << 16.0 << 2.0 << 32;
    QTest::newRow("not a whole number") << 13.0 << 1.25 << 16;
    QTest::newRow("nothing") << 0.0 << 1.0 << 1;
}

void TestSymbol::pictureHasTheAskedSizeOnEveryScale() {
    QFETCH(qreal, size);
    QFETCH(qreal, scale);
    for (const QString& name : {u"bell"_s, u"no.such.symbol"_s}) {
        const QPixmap picture = Symbol::pixmap(name, size, Qt::black, scale);
        QTEST(picture.width(), "pixels");
        QTEST(picture.height(), "pixels");
        QCOMPARE(picture.devicePixelRatio(), scale);
    }
}

void TestSymbol::unknownNameGivesATransparentPicture_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("unknown") << u"no.such.symbol"_s;
    QTest::newRow("empty") << QString{};
    QTest::newRow("path") << u"../symbols/bell"_s;
}

void TestSymbol::unknownNameGivesATransparentPicture() {
    QFETCH(QString, name);
    QCOMPARE(ink(draw(name)), 0.0);
}

void TestSymbol::semiboldHasMoreInkThanRegular() {
    for (const QString& name :
         {u"arrow.clockwise"_s, u"rectangle.connected.to.line.below"_s, u"bubble.left.and.bubble.right"_s, u"cpu"_s}) {
        QVERIFY2(ink(draw(name, 24, Symbol::Weight::semibold)) > ink(draw(name, 24)) * 1.05, qPrintable(name));
    }
}

void TestSymbol::marksOfFilledSymbolsAreCutOut() {
    QCOMPARE(draw(u"xmark.octagon.fill"_s, 48).pixelColor(24, 24).alpha(), 0);
    QCOMPARE(draw(u"exclamationmark.triangle.fill"_s, 48).pixelColor(24, 23).alpha(), 0);
    QCOMPARE(draw(u"checkmark.circle.fill"_s, 48).pixelColor(21, 31).alpha(), 0);
}

QTEST_MAIN(TestSymbol)
#include "TestSymbol.moc"
