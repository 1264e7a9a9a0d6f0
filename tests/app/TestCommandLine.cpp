#include "app/CommandLine.h"

#include "support/Rows.h"

#include <QTest>

using namespace Qt::StringLiterals;
using Request = CommandLine::Request;

class TestCommandLine final : public QObject {
    Q_OBJECT

private slots:
    void wordsBecomeOneRequest_data() {
        const Rows<QString, Request, QString> row{"words", "request", "refused"};
        row("none", u""_s, Request::showPanel, u""_s);
        row("settings", u"--settings"_s, Request::showSettings, u""_s);
        row("help", u"--help"_s, Request::help, u""_s);
        row("short help", u"-h"_s, Request::help, u""_s);
        row("version", u"--version"_s, Request::version, u""_s);
        row("short version", u"-v"_s, Request::version, u""_s);
        row("help wins", u"--version --help --settings"_s, Request::help, u""_s);
        row("version wins", u"--version --settings"_s, Request::version, u""_s);
        row("an option of Qt", u"-style fusion"_s, Request::showPanel, u""_s);
        row("Qt's before ours", u"-style fusion --version"_s, Request::version, u""_s);
        row("a style sheet", u"-stylesheet a.qss --version"_s, Request::version, u""_s);
        row("Qt's with two dashes", u"--platform=xcb -reverse --settings"_s, Request::showSettings, u""_s);
        row("unknown", u"--settings --setings"_s, Request::refused, u"setings"_s);
        row("unknown before a known one", u"--bogus --version"_s, Request::refused, u"bogus"_s);
        row("case counts", u"--Help"_s, Request::refused, u"Help"_s);
        row("a word", u"panel"_s, Request::refused, u"panel"_s);
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
