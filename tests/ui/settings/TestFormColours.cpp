#include "ui/settings/FormColours.h"

#include <QtTest>

class TestFormColours final : public QObject {
    Q_OBJECT

private slots:
    void contrastOfKnownPairs();
    void textsAreReadableOnGroupAndWindow_data();
    void textsAreReadableOnGroupAndWindow();
    void groupStandsOutFromTheWindow_data() { textsAreReadableOnGroupAndWindow_data(); }
    void groupStandsOutFromTheWindow();
};

void TestFormColours::contrastOfKnownPairs() {
    QCOMPARE(qRound(FormColours::contrast(Qt::white, Qt::black)), 21);
    QCOMPARE(FormColours::contrast(Qt::red, Qt::red), 1.0);
    QVERIFY(std::abs(FormColours::contrast(QColor{0x76, 0x76, 0x76}, Qt::white) - 4.54) < 0.01);
}

void TestFormColours::textsAreReadableOnGroupAndWindow_data() {
    QTest::addColumn<QColor>("window");
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("highlight");
    QTest::newRow("light") << QColor{0xf1, 0xf1, 0xf2} << QColor{0x1d, 0x1d, 0x1f} << QColor{53, 132, 228};
    QTest::newRow("white") << QColor{Qt::white} << QColor{Qt::black} << QColor{Qt::yellow};
    QTest::newRow("grey") << QColor{0xc0, 0xc0, 0xc0} << QColor{Qt::black} << QColor{Qt::blue};
    QTest::newRow("dark") << QColor{0x24, 0x24, 0x28} << QColor{0xf2, 0xf2, 0xf3} << QColor{0, 0, 255};
    QTest::newRow("black") << QColor{Qt::black} << QColor{Qt::white} << QColor{0x30, 0x30, 0x30};
    QTest::newRow("solarized") << QColor{0xfd, 0xf6, 0xe3} << QColor{0x07, 0x36, 0x42} << QColor{0x26, 0x8b, 0xd2};
}

void TestFormColours::textsAreReadableOnGroupAndWindow() {
    QFETCH(QColor, window);
    QFETCH(QColor, text);
    QFETCH(QColor, highlight);
    QPalette palette{window};
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Highlight, highlight);
    constexpr qreal readable = 4.5;
    for (const auto& ink :
         {FormColours::text(palette), FormColours::secondaryText(palette), FormColours::accent(palette)}) {
        QVERIFY(FormColours::contrast(ink, FormColours::group(palette)) >= readable);
        QVERIFY(FormColours::contrast(ink, window) >= readable);
    }
}

void TestFormColours::groupStandsOutFromTheWindow() {
    QFETCH(QColor, window);
    QFETCH(QColor, text);
    QPalette palette{window};
    palette.setColor(QPalette::WindowText, text);
    QVERIFY(FormColours::group(palette) != window);
    QVERIFY(FormColours::outline(palette) != FormColours::group(palette));
    QVERIFY(FormColours::secondaryText(palette) != FormColours::text(palette));
}

QTEST_MAIN(TestFormColours)

#include "TestFormColours.moc"
