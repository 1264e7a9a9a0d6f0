#include "app/CommandLine.h"

#include <QTest>

using namespace Qt::StringLiterals;
using Request = CommandLine::Request;

class TestCommandLine final : public QObject {
    Q_OBJECT

private slots:
    void wordsBecomeOneRequest_data();
    void wordsBecomeOneRequest();
    void helpNamesEveryOption();
    void versionIsOneLine();
};

void TestCommandLine::wordsBecomeOneRequest_data() {
    QTest::addColumn<QString>("words");
    QTest::addColumn<Request>("request");
    QTest::addColumn<QString>("refusedWord");
    QTest::newRow("none") << u""_s << Request::showPanel << u""_s;
    QTest::newRow("settings") << u"--settings"_s << Request::showSettings << u""_s;
    QTest::newRow("help") << u"--help"_s << Request::help << u""_s;
    QTest::newRow("short help") << u"-h"_s << Request::help << u""_s;
    QTest::newRow("version") << u"--version"_s << Request::version << u""_s;
    QTest::newRow("short version") << u"-v"_s << Request::version << u""_s;
    QTest::newRow("help wins over settings") << u"--help --settings"_s << Request::help << u""_s;
    QTest::newRow("unknown") << u"--settings --setings"_s << Request::refused << u"--setings"_s;
    QTest::newRow("case counts") << u"--Help"_s << Request::refused << u"--Help"_s;
    QTest::newRow("a word") << u"panel"_s << Request::refused << u"panel"_s;
}

void TestCommandLine::wordsBecomeOneRequest() {
    QFETCH(const QString, words);
    QFETCH(const Request, request);
    QFETCH(const QString, refusedWord);
    const auto line = CommandLine::parse(words.split(u' ', Qt::SkipEmptyParts));
    QCOMPARE(line.request, request);
    QCOMPARE(line.refusedWord, refusedWord);
}

void TestCommandLine::helpNamesEveryOption() {
    const auto help = CommandLine::helpText();
    for (const auto& option : {u"--settings"_s, u"-h, --help"_s, u"-v, --version"_s}) {
        QVERIFY2(help.contains(option), qPrintable(option));
    }
}

void TestCommandLine::versionIsOneLine() {
    QVERIFY(CommandLine::versionText().startsWith(u"vorna-companion v"));
    QCOMPARE(CommandLine::versionText().count(u'\n'), 1);
}

QTEST_GUILESS_MAIN(TestCommandLine)
#include "TestCommandLine.moc"
