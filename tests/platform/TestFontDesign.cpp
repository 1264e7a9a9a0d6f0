#include "platform/FontDesign.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QTest>

using namespace Qt::StringLiterals;

class TestFontDesign final : public QObject {
    Q_OBJECT

private slots:
    void aDesignKeepsTheSize() {
        QFont inPixels = QGuiApplication::font();
        inPixels.setPixelSize(17);
        QFont inPoints = QGuiApplication::font();
        inPoints.setPointSizeF(13);
        for (const auto design : {FontDesign::system, FontDesign::rounded, FontDesign::monospaced}) {
            QCOMPARE(inDesign(inPixels, design).pixelSize(), 17);
            QCOMPARE(inDesign(inPoints, design).pointSizeF(), 13);
        }
        QCOMPARE(QFontInfo{inDesign(inPixels, FontDesign::monospaced)}.family(), u"Test Mono"_s);
    }

    void theTitleIsRoundedWhereARoundedFamilyIsInstalled() {
        const QFont font = QGuiApplication::font();
        QCOMPARE(inDesign(font, FontDesign::rounded), font);
        QVERIFY(QFontDatabase::addApplicationFont(QStringLiteral(VORNA_FONTS "/rounded/rounded.ttf")) >= 0);
        QCOMPARE(QFontInfo{inDesign(font, FontDesign::rounded)}.family(), u"Nunito"_s);
        QCOMPARE(inDesign(font, FontDesign::system), font);
    }
};

QTEST_MAIN(TestFontDesign)
#include "TestFontDesign.moc"
