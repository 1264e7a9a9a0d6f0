#include "app/CommandLine.h"

#include <QTest>

using namespace Qt::StringLiterals;
using Request = CommandLine::Request;

class TestCommandLine final : public QObject {
    Q_OBJECT

private slots:
    void wordsBecomeOneRequest_data() {
        QTest::addColumn<QString>("words");
        QTest::addColumn<Request>("request");
        QTest::addColumn<QString>("refused");
        QTest::newRow("none") << u""_s << Request::showPanel << u""_s;
        QTest::newRow("settings") << u"--settings"_s << Request::showSettings << u""_s;
        QTest::newRow("help") << u"--help"_s << Request::help << u""_s;
        QTest::newRow("short help") << u"-h"_s << Request::help << u""_s;
        QTest::newRow("version") << u"--version"_s << Request::version << u""_s;
        QTest::newRow("short version") << u"-v"_s << Request::version << u""_s;
        QTest::newRow("help wins") << u"--version --help --settings"_s << Request::help << u""_s;
        QTest::newRow("version wins") << u"--version --settings"_s << Request::version << u""_s;
        QTest::newRow("an option of Qt") << u"-style fusion"_s << Request::showPanel << u""_s;
        QTest::newRow("Qt's before ours") << u"-style fusion --version"_s << Request::version << u""_s;
        QTest::newRow("a style sheet") << u"-stylesheet a.qss --version"_s << Request::version << u""_s;
        QTest::newRow("Qt's with two dashes")
            << u"--platform=xcb -reverse --settings"_s << Request::showSettings << u""_s;
        QTest::newRow("unknown") << u"--settings --setings"_s << Request::refused << u"setings"_s;
        QTest::newRow("unknown before a known one") << u"--bogus --version"_s << Request::refused << u"bogus"_s;
        QTest::newRow("case counts") << u"--Help"_s << Request::refused << u"Help"_s;
        QTest::newRow("a word") << u"panel"_s << Request::refused << u"panel"_s;
    }
    void wordsBecomeOneRequest() {
        QFETCH(const QString, words);
        QFETCH(const Request, request);
        QFETCH(const QString, refused);
        const auto line = CommandLine::parse(QStringList{u"vorna-companion"_s} + words.split(u' ', Qt::SkipEmptyParts));
        QCOMPARE(line.request, request);
        QCOMPARE(line.error.isEmpty(), refused.isEmpty());
        QVERIFY2(line.error.contains(refused), qPrintable(line.error));
    }
};

QTEST_APPLESS_MAIN(TestCommandLine)
#include "TestCommandLine.moc"
