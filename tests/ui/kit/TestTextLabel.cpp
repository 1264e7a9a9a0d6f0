#include "support/FixedColours.h"
#include "support/Rows.h"
#include "ui/kit/TextLabel.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHelpEvent>
#include <QScreen>
#include <QTest>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

constexpr TextStyle oneLine{.size = 12};
constexpr TextStyle twoLines{.size = 12, .design = FontDesign::monospaced, .lines = 2};
constexpr TextStyle shrinking{.size = 12, .design = FontDesign::monospaced, .minimumScale = 0.7};
constexpr int width = 100;
constexpr qsizetype megabyte = 1 << 20;
const FixedColours colours;

/// A label of that width.
struct Label final : TextLabel {
    explicit Label(const TextStyle& style, const QString& text = {})
        : TextLabel{style, ::colours, nullptr, text} {
        setWidth(::width);
    }
    void setWidth(int itsWidth) { resize(itsWidth, lineHeight()); }

    /// The tool tip's text, and where it shows.
    std::pair<QString, QRect> askForToolTip() {
        show();
        QToolTip::hideText();
        QHelpEvent event{QEvent::ToolTip, {1, 1}, mapToGlobal(QPoint{1, 1})};
        QCoreApplication::sendEvent(this, &event);
        const QString text = QToolTip::isVisible() ? QToolTip::text() : QString{};
        QRect place;
        for (const auto* window : QApplication::topLevelWidgets()) {
            place |= window->windowType() == Qt::ToolTip && window->isVisible() ? window->geometry() : QRect{};
        }
        QToolTip::hideText();
        return {text, place};
    }
};

}

class TestTextLabel final : public QObject {
    Q_OBJECT

private slots:
    void nameIsTheWholeTextAndHeightTheStyles() {
        for (const auto& text :
             {u"<b>R&D</b> &amp;"_s, u"שלום עולם"_s, u"🚀 漢字"_s, QString{u'Z' + u"\u0335\u0321\u0340"_s.repeated(50)},
              u"one\ntwo\nthree"_s, u"long "_s.repeated(100), QString{}}) {
            Label label{oneLine};
            const QSize before = label.minimumSizeHint();
            label.display(text);
            QCOMPARE(label.accessibleName(), text);
            QCOMPARE(label.minimumSizeHint(), before);
            QCOMPARE(label.sizeHint().height(), before.height());
        }
    }

    void oneLineShowsWhatFits_data() {
        const Rows<QString, QString> row{"text", "shown"};
        row("whole", u"<b>&"_s, u"<b>&"_s);
        row("a second line", u"one\ntwo"_s, u"one…"_s);
        row("control characters", u"a\tb\x01z"_s, u"a b z"_s);
        row("line breaks at the end", u"one\r\n\n"_s, u"one"_s);
    }
    void oneLineShowsWhatFits() {
        QFETCH(QString, text);
        const Label label{oneLine, text};
        QTEST(label.shownText(), "shown");
        QCOMPARE(label.isCut(), label.shownText().endsWith(u'…'));
    }

    void noSeparatorIsLeftBeforeTheEllipsis() {
        Label label{oneLine, u"one · two · three"_s};
        for (int itsWidth = label.naturalWidth() - 1; itsWidth > 20; --itsWidth) {
            label.setWidth(itsWidth);
            const QString shown = label.shownText();
            QVERIFY2(shown.endsWith(u'…') && !shown.contains(u"·…"_s) && !shown.contains(u"· …"_s), qPrintable(shown));
        }
    }

    void textOfTheDesktopsSizeFollowsItAndAsksForItsLongestWord() {
        Label label{{.scale = 0.5, .lines = 6}, u"an Accessibility row"_s};
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

    void wrapsUpToItsLinesAndCutsTheLast_data() {
        const Rows<QString, int, bool> row{"text", "lines", "isCut"};
        row("short", u"short"_s, 1, false);
        row("words", u"some words that wrap"_s, 2, false);
        row("too many words", u"words "_s.repeated(30), 2, true);
        row("one word", u"w"_s.repeated(300), 2, true);
        row("two lines", u"one\ntwo"_s, 2, false);
        row("three lines", u"one\ntwo\nthree"_s, 2, true);
    }
    void wrapsUpToItsLinesAndCutsTheLast() {
        QFETCH(QString, text);
        QFETCH(int, lines);
        const Label label{twoLines, text};
        QCOMPARE(label.heightForWidth(width), lines * label.lineHeight());
        QTEST(label.isCut(), "isCut");
        QCOMPARE(label.shownText().endsWith(u'…'), label.isCut());
    }

    void shrinksBeforeItCutsAndNeverWraps() {
        Label label{shrinking};
        for (int length = 1; length <= 40; ++length) {
            label.display(QString{length, u'0'});
            const int natural = label.naturalWidth();
            for (int itsWidth = natural * 7 / 10 + 1; itsWidth <= natural; ++itsWidth) {
                label.setWidth(itsWidth);
                QVERIFY2(!label.isCut(), qPrintable(u"%1 in %2"_s.arg(natural).arg(itsWidth)));
                QCOMPARE(label.shownScale(), qreal(itsWidth) / natural);
            }
        }
        label.setWidth(label.naturalWidth() / 2);
        QCOMPARE(label.shownScale(), 0.7);
        QVERIFY(label.isCut());
        QCOMPARE(label.heightForWidth(label.width()), label.lineHeight());
    }

    void onlyACutTextHasAToolTipThatIsPlainWholeAndOnTheScreen_data() {
        const Rows<QString, QString> row{"text", "end"};
        row("not cut", u"short"_s, QString{});
        row("words", u"connection refused "_s.repeated(100), u"connection refused"_s);
        row("markup", u"<i>word</i> & "_s.repeated(20), u"&lt;i&gt;word&lt;/i&gt; &amp;"_s);
        row("one word", QString{2000, u'w'}, u"www"_s);
        row("addresses", u"https://a-very-long-host-name.vorna.localhost/"_s.repeated(40), u"host/"_s);
        row("combining marks", u"e\u0301"_s.repeated(1000), u"e\u0301"_s);
        row("too long, with pairs", u'x' + u"🚀"_s.repeated(2000), u"🚀…"_s);
    }
    void onlyACutTextHasAToolTipThatIsPlainWholeAndOnTheScreen() {
        QFETCH(QString, text);
        QFETCH(QString, end);
        Label label{oneLine, text};
        auto [tip, place] = label.askForToolTip();
        QCOMPARE(tip.isEmpty(), end.isEmpty());
        QVERIFY(tip.isValidUtf16());
        QVERIFY(tip.remove(u'\u200B').remove(u"</p>"_s).trimmed().endsWith(end));
        QVERIFY2(label.screen()->geometry().contains(place) || end.isEmpty(), qPrintable(tip));
        QVERIFY(label.toolTip().isEmpty());
    }

    void megabyteOfTextCostsNoMoreThanASmallOne_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("one word") << QString{megabyte, u'x'};
        QTest::newRow("words") << u"word "_s.repeated(megabyte / 5);
        QTest::newRow("line breaks") << QString{megabyte, u'\n'};
        QTest::newRow("combining marks") << QString{megabyte, QChar{0x0301}};
        QTest::newRow("surrogates") << u"🚀"_s.repeated(megabyte / 2);
    }
    void megabyteOfTextCostsNoMoreThanASmallOne() {
        QFETCH(QString, text);
        Label label{twoLines};
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
