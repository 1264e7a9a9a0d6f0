#include "ui/settings/FormColours.h"
#include "ui/settings/FormText.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QHelpEvent>
#include <QToolTip>
#include <QtTest>

using namespace Qt::StringLiterals;
using Style = FormText::Style;

namespace {

void askForToolTip(FormText& text) {
    QHelpEvent event{QEvent::ToolTip, QPoint{1, 1}, text.mapToGlobal(QPoint{1, 1})};
    QCoreApplication::sendEvent(&text, &event);
}

}

class TestFormText final : public QObject {
    Q_OBJECT

private slots:
    void fontsOfStyles_data();
    void fontsOfStyles();
    void fontsScaleInPixelsToo();
    void secondaryStylesAreMuted();
    void staysOneLineWhereThereIsRoom();
    void wrapsAtWordsAndInsideLongOnes();
    void lineBreaksStartNewLines();
    void endsAfterTheMostLines();
    void cutTextIsWholeInTheToolTip();
    void veryLongToolTipEndsWithAWholeCharacter();
    void veryLongTextIsMeasuredQuickly();
    void staysWrappingAfterItsTextChanged();
    void paintsInItsColour();
};

void TestFormText::fontsOfStyles_data() {
    QTest::addColumn<Style>("style");
    QTest::addColumn<qreal>("scale");
    QTest::addColumn<int>("weight");
    QTest::addColumn<bool>("isMonospaced");
    QTest::newRow("body") << Style::body << 1.0 << int(QFont::Normal) << false;
    QTest::newRow("headline") << Style::headline << 1.0 << int(QFont::DemiBold) << false;
    QTest::newRow("monospaced") << Style::monospaced << 1.0 << int(QFont::Normal) << true;
    QTest::newRow("caption") << Style::caption << 0.85 << int(QFont::Normal) << false;
    QTest::newRow("monospaced caption") << Style::captionMonospaced << 0.85 << int(QFont::Normal) << true;
}

void TestFormText::fontsOfStyles() {
    QFETCH(Style, style);
    QFETCH(qreal, scale);
    QFETCH(int, weight);
    QFETCH(bool, isMonospaced);
    const FormText text{u"text"_s, style};
    const auto shown = text.shownFont();
    QCOMPARE(shown.pointSizeF(), text.font().pointSizeF() * scale);
    QCOMPARE(int(shown.weight()), weight);
    const auto fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
    QCOMPARE(shown.family() == fixed, isMonospaced);
    if (isMonospaced) {
        const QFontMetricsF metrics{shown};
        QCOMPARE(metrics.horizontalAdvance(u"iiii"_s), metrics.horizontalAdvance(u"MMMM"_s));
    }
}

void TestFormText::fontsScaleInPixelsToo() {
    QFont body;
    body.setPixelSize(20);
    QCOMPARE(FormText::fontOf(Style::caption, body).pixelSize(), 17);
    QCOMPARE(FormText::fontOf(Style::headline, body).pixelSize(), 20);
}

void TestFormText::secondaryStylesAreMuted() {
    const FormText body{u"text"_s, Style::body};
    const FormText caption{u"text"_s, Style::caption};
    QCOMPARE(body.shownColour(), FormColours::text(body.palette()));
    QCOMPARE(caption.shownColour(), FormColours::secondaryText(caption.palette()));
    QVERIFY(body.shownColour() != caption.shownColour());
}

void TestFormText::staysOneLineWhereThereIsRoom() {
    const FormText text{u"a few words"_s};
    QCOMPARE(text.heightForWidth(text.sizeHint().width()), text.sizeHint().height());
}

void TestFormText::wrapsAtWordsAndInsideLongOnes() {
    const FormText words{u"several words that do not fit"_s};
    const FormText word{QString{100, u'x'}};
    for (const auto* const text : {&words, &word}) {
        const auto line = QFontMetrics{text->shownFont()}.height();
        QVERIFY(text->heightForWidth(text->sizeHint().width() / 2) >= 2 * line);
        QVERIFY(text->minimumSizeHint().width() < text->sizeHint().width());
    }
}

void TestFormText::lineBreaksStartNewLines() {
    const FormText text{u"one\ntwo\nthree"_s};
    QCOMPARE(text.heightForWidth(500), 3 * FormText{u"one"_s}.heightForWidth(500));
}

void TestFormText::endsAfterTheMostLines() {
    const FormText text{u"word "_s.repeated(200)};
    QCOMPARE(text.heightForWidth(100), FormText::maximumLines * FormText{u"word"_s}.heightForWidth(100));
}

void TestFormText::cutTextIsWholeInTheToolTip() {
    FormText whole{u"short"_s};
    whole.resize(200, 20);
    whole.show();
    askForToolTip(whole);
    QVERIFY(!QToolTip::isVisible());

    FormText cut{u"word <b>& "_s.repeated(150) + u"end"_s};
    cut.resize(100, 200);
    cut.show();
    askForToolTip(cut);
    QVERIFY(QToolTip::text().contains(u"&lt;b&gt;&amp; word"_s));
    QVERIFY(QToolTip::text().contains(u"end"_s));
    QToolTip::hideText();
}

void TestFormText::veryLongToolTipEndsWithAWholeCharacter() {
    FormText text{u'x' + u"🚀"_s.repeated(2000)};
    text.resize(100, 200);
    text.show();
    askForToolTip(text);
    QVERIFY(QToolTip::text().contains(u"🚀…"_s));
    QVERIFY(QToolTip::text().isValidUtf16());
    QToolTip::hideText();
}

void TestFormText::veryLongTextIsMeasuredQuickly() {
    const FormText text{QString{5'000'000, u'x'}};
    QElapsedTimer timer;
    timer.start();
    QVERIFY(text.heightForWidth(300) > 0);
    QVERIFY(text.sizeHint().isValid());
    QVERIFY(timer.elapsed() < 2000);
}

void TestFormText::staysWrappingAfterItsTextChanged() {
    FormText text{{}};
    text.setText(u"several words that do not fit"_s);
    text.setAlignment(Qt::AlignTrailing);
    QVERIFY(text.hasHeightForWidth());
}

void TestFormText::paintsInItsColour() {
    FormText text{u"MMMM"_s};
    QPalette palette;
    palette.setColor(QPalette::WindowText, QColor{200, 10, 10});
    text.setPalette(palette);
    text.resize(text.sizeHint());
    const auto picture = text.grab().toImage();
    int reddish = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            reddish += picture.pixelColor(x, y).red() > 2 * picture.pixelColor(x, y).green() ? 1 : 0;
        }
    }
    QVERIFY(reddish > 20);
}

QTEST_MAIN(TestFormText)

#include "TestFormText.moc"
