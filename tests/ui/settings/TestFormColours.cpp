#include "ui/settings/FormColours.h"
#include "ui/settings/SettingsFixture.h"

#include <QtTest>

class TestFormColours final : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { QApplication::setPalette(m_palette); }

    void contrastOfKnownPairs();
    void coloursOfDesktops_data();
    void coloursOfDesktops();
    void dotsAreOfTheDaypart();

private:
    const QPalette m_palette = QApplication::palette();
    SettingsFixture m_settings;
    const FormColours m_colours{m_settings.daypart};
};

void TestFormColours::contrastOfKnownPairs() {
    QCOMPARE(qRound(FormColours::contrast(Qt::white, Qt::black)), 21);
    QCOMPARE(FormColours::contrast(Qt::red, Qt::red), 1.0);
    QVERIFY(std::abs(FormColours::contrast(QColor{0x76, 0x76, 0x76}, Qt::white) - 4.54) < 0.01);
}

void TestFormColours::coloursOfDesktops_data() {
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

void TestFormColours::coloursOfDesktops() {
    QFETCH(QColor, window);
    QFETCH(QColor, text);
    QFETCH(QColor, highlight);
    QPalette palette{window};
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Highlight, highlight);
    QApplication::setPalette(palette);
    const auto card = m_colours.of(ColourRole::surface);
    QCOMPARE(m_colours.of(ColourRole::background), window);
    QCOMPARE(m_colours.of(ColourRole::text), text);
    QVERIFY(card != window);
    QVERIFY(m_colours.of(ColourRole::border) != card);
    QVERIFY(FormColours::contrast(m_colours.of(ColourRole::border), card) < 1.5);
    QVERIFY(m_colours.of(ColourRole::textMuted) != text);
    for (const auto role : {ColourRole::text, ColourRole::textMuted, ColourRole::accent}) {
        constexpr qreal readable = 4.5;
        QVERIFY(FormColours::contrast(m_colours.of(role), card) >= readable);
        QVERIFY(FormColours::contrast(m_colours.of(role), window) >= readable);
    }
}

void TestFormColours::dotsAreOfTheDaypart() {
    for (const auto daypart : DaypartInfo::allCases) {
        m_settings.daypart.set(daypart);
        QCOMPARE(m_colours.of(ColourRole::success), QColor{DaypartPalette::of(daypart).success});
        QCOMPARE(m_colours.of(ColourRole::danger), QColor{DaypartPalette::of(daypart).danger});
    }
}

QTEST_MAIN(TestFormColours)

#include "TestFormColours.moc"
