#include "support/FixedColours.h"
#include "ui/kit/TextLabel.h"

#include <QElapsedTimer>
#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

constexpr TextStyle oneLine{.size = 12};
constexpr TextStyle twoLines{.size = 12, .design = FontDesign::monospaced, .lines = 2};
constexpr TextStyle shrinking{.size = 12, .design = FontDesign::monospaced, .minimumScale = 0.7};
constexpr int width = 100;
const FixedColours colours;
constexpr qsizetype megabyte = 1 << 20;

QString repeated(const QString& text, int times) {
    return text.repeated(times);
}

void askForToolTip(TextLabel& label) {
    QToolTip::hideText();
    QHelpEvent event{QEvent::ToolTip, {1, 1}, label.mapToGlobal(QPoint{1, 1})};
    QCoreApplication::sendEvent(&label, &event);
}

}

class TestTextLabel final : public QObject {
    Q_OBJECT

private slots:
    void sizesAreDeviceIndependentPixels() {
        const TextLabel label{TextStyle{.size = 17, .weight = QFont::Bold, .tracking = 0.8}, colours};
        QCOMPARE(label.shownFont().pixelSize(), 17);
        QCOMPARE(label.shownFont().weight(), QFont::Bold);
        QVERIFY(qAbs(label.shownFont().letterSpacing() - 0.8) < 0.01);
    }

    void theAccessibleNameIsTheWholeTextWhateverItHolds_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("plain") << u"vorna"_s;
        QTest::newRow("ampersand") << u"Settings & permissions"_s;
        QTest::newRow("markup") << u"<b>bold</b> &amp;"_s;
        QTest::newRow("right to left") << u"שלום עולם"_s;
        QTest::newRow("emoji") << u"🚀 up"_s;
        QTest::newRow("lines") << u"one\ntwo\nthree"_s;
        QTest::newRow("too long") << repeated(u"long "_s, 100);
        QTest::newRow("empty") << QString{};
    }
    void theAccessibleNameIsTheWholeTextWhateverItHolds() {
        QFETCH(QString, text);
        TextLabel label{oneLine, colours};
        label.resize(width, label.lineHeight());
        label.display(text);
        QCOMPARE(label.accessibleName(), text);
        QVERIFY(label.shownText().size() <= text.size() + 1);
    }

    void aTextThatFitsIsShownWhole() {
        TextLabel label{oneLine, colours};
        label.resize(width, label.lineHeight());
        label.display(u"<b>&"_s);
        QCOMPARE(label.shownText(), u"<b>&"_s);
        QVERIFY(!label.isCut());
    }

    void aLongLineIsCutAtItsEnd() {
        TextLabel label{oneLine, colours};
        label.resize(width, label.lineHeight());
        label.display(repeated(u"word "_s, 30));
        QVERIFY(label.isCut());
        QVERIFY(label.shownText().startsWith(u"word word"_s));
        QVERIFY(label.shownText().endsWith(u'…'));
        QVERIFY(!label.shownText().contains(QChar::LineSeparator));
    }

    void noSeparatorIsLeftBeforeTheEllipsis() {
        TextLabel label{oneLine, colours};
        label.display(u"one · two · three"_s);
        for (int itsWidth = label.naturalWidth() - 1; itsWidth > 20; --itsWidth) {
            label.resize(itsWidth, label.lineHeight());
            const QString shown = label.shownText();
            QVERIFY2(shown.endsWith(u'…') && !shown.contains(u"·…"_s) && !shown.contains(u"· …"_s), qPrintable(shown));
        }
    }

    void aTextOfTheDesktopsSizeFollowsItAndAsksForItsLongestWord() {
        TextLabel label{{.scale = 0.5, .lines = 6}, colours, nullptr, u"an Accessibility row"_s};
        QFont font = label.font();
        font.setPixelSize(40);
        label.setFont(font);
        QCOMPARE(label.shownFont().pixelSize(), 20);
        const QFontMetricsF metrics{label.shownFont()};
        // And a point more, without which the last letter would be broken off at some sizes.
        QCOMPARE(label.minimumSizeHint().width(), qCeil(metrics.horizontalAdvance(u"Accessibility"_s)) + 1);
        QCOMPARE(label.sizeHint().width(), qCeil(metrics.horizontalAdvance(label.wholeText())) + 1);
        label.display(QString{500, u'w'});
        QVERIFY(label.minimumSizeHint().width() <= qCeil(20 * metrics.averageCharWidth()) + 1);
    }

    void aSecondLineOfTextIsNotShownInOneLine() {
        TextLabel label{oneLine, colours};
        label.resize(width, label.lineHeight());
        label.display(u"one\ntwo"_s);
        QCOMPARE(label.shownText(), u"one…"_s);
        QVERIFY(label.isCut());
    }

    void controlCharactersAreBlanks() {
        TextLabel label{oneLine, colours};
        label.resize(width, label.lineHeight());
        label.display(u"a\tb\x01z"_s);
        QCOMPARE(label.shownText(), u"a b z"_s);
    }

    void lineBreaksAtTheEndAreNotMissed() {
        TextLabel label{oneLine, colours};
        label.resize(width, label.lineHeight());
        label.display(u"one\r\n\n"_s);
        QCOMPARE(label.shownText(), u"one"_s);
        QVERIFY(!label.isCut());
    }

    void wrapsUpToItsLinesAndCutsTheLast_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("lines");
        QTest::addColumn<bool>("isCut");
        QTest::newRow("short") << u"short"_s << 1 << false;
        QTest::newRow("words") << u"some words that wrap"_s << 2 << false;
        QTest::newRow("too many words") << repeated(u"words "_s, 30) << 2 << true;
        QTest::newRow("one word") << repeated(u"w"_s, 300) << 2 << true;
        QTest::newRow("two lines") << u"one\ntwo"_s << 2 << false;
        QTest::newRow("three lines") << u"one\ntwo\nthree"_s << 2 << true;
    }
    void wrapsUpToItsLinesAndCutsTheLast() {
        QFETCH(QString, text);
        QFETCH(int, lines);
        TextLabel label{twoLines, colours};
        label.resize(width, label.lineHeight());
        label.display(text);
        QCOMPARE(label.heightForWidth(width), lines * label.lineHeight());
        QTEST(label.isCut(), "isCut");
        QCOMPARE(label.shownText().endsWith(u'…'), label.isCut());
    }

    void shrinksBeforeItCutsAndNeverWraps() {
        TextLabel label{shrinking, colours};
        label.display(u"0123456789"_s);
        const int natural = label.naturalWidth();
        label.resize(natural, label.lineHeight());
        QCOMPARE(label.shownScale(), 1.0);
        label.resize(natural * 8 / 10, label.lineHeight());
        QVERIFY(label.shownScale() < 1.0 && label.shownScale() >= 0.7);
        QVERIFY(!label.isCut());
        label.resize(natural / 2, label.lineHeight());
        QCOMPARE(label.shownScale(), 0.7);
        QVERIFY(label.isCut());
        QCOMPARE(label.heightForWidth(natural / 2), label.lineHeight());
    }

    void isNotCutWhileShrinkingIsEnough() {
        TextLabel label{shrinking, colours};
        for (int length = 1; length <= 40; ++length) {
            label.display(QString{length, u'0'});
            const int natural = label.naturalWidth();
            for (int itsWidth = natural * 7 / 10 + 1; itsWidth <= natural; ++itsWidth) {
                label.resize(itsWidth, label.lineHeight());
                QVERIFY2(!label.isCut(), qPrintable(u"%1 in %2"_s.arg(natural).arg(itsWidth)));
            }
        }
    }

    void onlyACutTextHasAToolTipAndItIsWholeAndPlain() {
        TextLabel label{oneLine, colours};
        label.resize(width, label.lineHeight());
        label.show();
        label.display(u"short"_s);
        askForToolTip(label);
        QVERIFY(!QToolTip::isVisible());
        const QString text = repeated(u"<i>word</i> & "_s, 20).trimmed();
        label.display(text);
        askForToolTip(label);
        QVERIFY(QToolTip::isVisible());
        QVERIFY(QToolTip::text().contains(u"&lt;i&gt;word&lt;/i&gt; &amp; &lt;i&gt;"_s));
        QVERIFY(!QToolTip::text().contains(u"<i>"_s));
        QVERIFY(label.toolTip().isEmpty());
        QToolTip::hideText();
    }

    void aToolTipThatIsTooLongEndsWithAWholeCharacter() {
        TextLabel label{oneLine, colours};
        label.resize(width, label.lineHeight());
        label.show();
        label.display(u'x' + repeated(u"🚀"_s, 2000));
        askForToolTip(label);
        QVERIFY(QToolTip::text().contains(u"🚀…"_s));
        QVERIFY(QToolTip::text().isValidUtf16());
        QToolTip::hideText();
    }

    void heightDoesNotDependOnWhatTheTextHolds_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString{};
        QTest::newRow("emoji") << u"🚀🔥"_s;
        QTest::newRow("right to left") << u"مرحبا بالعالم"_s;
        QTest::newRow("ideographs") << u"漢字"_s;
        QTest::newRow("stacked marks") << u'Z' + repeated(u"\u0335\u0321\u0340"_s, 50);
    }
    void heightDoesNotDependOnWhatTheTextHolds() {
        QFETCH(QString, text);
        TextLabel label{oneLine, colours};
        const QSize before = label.minimumSizeHint();
        label.display(text);
        QCOMPARE(label.minimumSizeHint(), before);
        QCOMPARE(label.sizeHint().height(), before.height());
    }

    void aMegabyteOfTextCostsNoMoreThanASmallOne_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("one word") << QString{megabyte, u'x'};
        QTest::newRow("words") << repeated(u"word "_s, megabyte / 5);
        QTest::newRow("line breaks") << QString{megabyte, u'\n'};
        QTest::newRow("combining marks") << QString{megabyte, QChar{0x0301}};
        QTest::newRow("surrogates") << repeated(u"🚀"_s, megabyte / 2);
    }
    void aMegabyteOfTextCostsNoMoreThanASmallOne() {
        QFETCH(QString, text);
        TextLabel label{twoLines, colours};
        label.resize(width, 2 * label.lineHeight());
        label.show();
        QElapsedTimer timer;
        timer.start();
        constexpr int times = 20;
        for (int i = 0; i < times; ++i) {
            label.display(i % 2 == 0 ? text : u"short"_s);
            label.grab();
        }
        label.display(text);
        QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(label.accessibleName(), text);
        QVERIFY(label.isCut());
    }
};

QTEST_MAIN(TestTextLabel)
#include "TestTextLabel.moc"
