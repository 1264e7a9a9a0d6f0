#include "platform/Symbol.h"

#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QMap>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

QStringList knownNames() {
    QStringList names;
    for (QDirIterator files{QStringLiteral(VORNA_ROOT "/resources/symbols"), {u"*.svg"_s}}; files.hasNext();) {
        names.append(files.nextFileInfo().completeBaseName());
    }
    return names;
}

QImage draw(const QString& name, qreal size = 16) {
    return Symbol::pixmap(name, size, Qt::black, 1).toImage();
}

/// The share of pixels whose cover, 0…1, fulfils the condition.
template <typename Condition>
qreal share(const QImage& picture, Condition condition) {
    int found = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            found += condition(picture.pixelColor(x, y).alphaF(), x, y) ? 1 : 0;
        }
    }
    return qreal(found) / (picture.width() * picture.height());
}

qreal ink(const QImage& picture) {
    return share(picture, [](qreal alpha, int, int) { return alpha > 0.5; });
}

void addNames() {
    QTest::addColumn<QString>("name");
    for (const QString& name : knownNames()) {
        QTest::newRow(qPrintable(name)) << name;
    }
}

}

class TestSymbol final : public QObject {
    Q_OBJECT

private slots:
    void edgesAreSmooth() {
        const auto isPartly = [](qreal alpha, int, int) { return alpha > 0.2 && alpha < 0.8; };
        QVERIFY(share(draw(u"circle.dashed"_s, 32), isPartly) > 0.02);
    }

    void initTestCase() {
        QVERIFY(ink(draw(u"bell"_s)) > 0);
        QCOMPARE(knownNames().size(), 22);
    }

    void everyNameInTheSourcesHasAPicture() {
        static const QRegularExpression symbolic{
            u"\"([a-z]+|[a-z.]+\\.(fill|slash|dashed|clockwise|below|right|up|timemachine|shield|horizon|circle))\""_s};
        const QStringList known = knownNames();
        QStringList used;
        QDirIterator files{QStringLiteral(VORNA_ROOT "/src"), {u"*.cpp"_s}, QDir::Files, QDirIterator::Subdirectories};
        while (files.hasNext()) {
            QFile file{files.next()};
            QVERIFY(file.open(QFile::ReadOnly));
            for (const auto& match : symbolic.globalMatch(QString::fromUtf8(file.readAll()))) {
                const QString name = match.captured(1);
                QVERIFY2(!name.contains(u'.') || known.contains(name), qPrintable(name));
                used.append(name);
            }
        }
        QVERIFY(std::ranges::all_of(known, [&used](const QString& name) { return used.contains(name); }));
    }

    void weightIsEven_data() { addNames(); }

    void weightIsEven() {
        QFETCH(QString, name);
        static const QMap<QString, std::pair<qreal, qreal>> others{
            {u"checkmark.circle.fill"_s, {0.4, 0.55}},
            {u"exclamationmark.triangle.fill"_s, {0.4, 0.55}},
            {u"xmark.octagon.fill"_s, {0.4, 0.55}},
            {u"circle.dashed"_s, {0.15, 0.25}},
        };
        const qreal covered = ink(draw(name));
        const auto [least, most] = others.value(name, {0.25, 0.43});
        QVERIFY2(covered > least && covered < most, qPrintable(QString::number(covered)));
    }

    void edgesAreWholePixels_data() { addNames(); }

    void edgesAreWholePixels() {
        QFETCH(QString, name);
        const QImage picture = draw(name);
        const qreal whole = share(picture, [](qreal alpha, int, int) { return alpha > 0.9; });
        QVERIFY2(whole > 0.45 * ink(picture), qPrintable(QString::number(whole / ink(picture))));
    }

    void everyPictureIsToldFromTheOthers() {
        const QStringList names = knownNames();
        for (const QString& one : names) {
            for (const QString& other : names) {
                const QImage against = draw(other);
                const qreal different = share(draw(one), [&against](qreal alpha, int x, int y) {
                    return std::abs(alpha - against.pixelColor(x, y).alphaF()) > 0.6;
                });
                QVERIFY2(one == other || different > 0.06, qPrintable(one + u' ' + other + QString::number(different)));
            }
        }
    }

    void tintIsExactlyTheAskedColour() {
        for (const QColor& colour : {QColor{Qt::black}, QColor{0x12, 0x9A, 0xF3}, QColor{0xFF, 0xFF, 0xFF, 128}}) {
            QCOMPARE(Symbol::pixmap(u"checkmark.circle.fill"_s, 24, colour, 1).toImage().pixelColor(12, 4), colour);
        }
    }

    void pictureHasTheAskedSizeOnEveryScale_data() {
        QTest::addColumn<qreal>("size");
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<int>("pixels");
        QTest::newRow("1x") << 16.0 << 1.0 << 16;
        QTest::newRow("1.5x") << 12.0 << 1.5 << 18;
        QTest::newRow("not a whole number") << 13.0 << 1.25 << 16;
        QTest::newRow("nothing") << 0.0 << 1.0 << 1;
    }
    void pictureHasTheAskedSizeOnEveryScale() {
        QFETCH(qreal, size);
        QFETCH(qreal, scale);
        for (const QString& name : {u"bell"_s, u"no.such.symbol"_s}) {
            const QPixmap picture = Symbol::pixmap(name, size, Qt::black, scale);
            QTEST(picture.width(), "pixels");
            QTEST(picture.height(), "pixels");
            QCOMPARE(picture.devicePixelRatio(), scale);
        }
    }

    void unknownNameGivesATransparentPicture() {
        for (const QString& name : {u"no.such.symbol"_s, QString{}, u"Bell"_s}) {
            QCOMPARE(ink(draw(name)), 0.0);
        }
    }
};

QTEST_MAIN(TestSymbol)
#include "TestSymbol.moc"
