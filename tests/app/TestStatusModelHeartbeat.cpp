#include "app/StatusModel.h"

#include "support/FakeNotificationService.h"
#include "support/FakeTool.h"
#include "support/ModelRecord.h"
#include "support/Rows.h"

#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

class TestStatusModelHeartbeat final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_tool = std::make_unique<FakeTool>();
        m_model = std::make_unique<StatusModel>(m_notifications, m_tool->runner());
    }

    void asksTheToolInTheBackground() {
        m_model->reportAccountHeartbeat();
        QCOMPARE(m_tool->calls.size(), 1);
        QCOMPARE(call(0).arguments, (QStringList{u"desktop"_s, u"heartbeat"_s, u"--json"_s}));
        QCOMPARE(call(0).timeout, 20.0);
        QVERIFY(!m_model->cliBusy);
        QVERIFY(!m_model->cliMessage.value());
    }

    void setsTheAccountLineOrNothing_data() {
        const Rows<QString, int, QString> row{"output", "exitCode", "line"};
        const QString signedIn = u"Signed in · CTA hidden"_s;
        const QString installed = u"Installed · sign in to hide download CTA"_s;
        const QString neither = u"Not signed in"_s;
        const QString unchanged;
        row("remote signed in", uR"({"remote":{"state":"signed_in"}})"_s, 0, signedIn);
        row("remote installed", uR"({"remote":{"state":"installed"}})"_s, 0, installed);
        row("local installed alone", uR"({"local":{"state":"installed"}})"_s, 0, installed);
        row("remote state a number", uR"({"remote":{"state":1},"local":{"state":"signed_in"}})"_s, 0, signedIn);
        row("remote state null", uR"({"remote":{"state":null},"local":{"state":"signed_in"}})"_s, 0, signedIn);
        row("remote without state", uR"({"remote":{},"local":{"state":"signed_in"}})"_s, 0, signedIn);
        row("remote a list", uR"({"remote":["state"],"local":{"state":"signed_in"}})"_s, 0, signedIn);
        row("remote a text", uR"({"remote":"signed_in","local":{"state":"installed"}})"_s, 0, installed);
        row("remote wins", uR"({"remote":{"state":"installed"},"local":{"state":"signed_in"}})"_s, 0, installed);
        row("unknown remote wins", uR"({"remote":{"state":"pending"},"local":{"state":"installed"}})"_s, 0, neither);
        row("empty remote wins", uR"({"remote":{"state":""},"local":{"state":"installed"}})"_s, 0, neither);
        row("case matters", uR"({"remote":{"state":"Signed_In"}})"_s, 0, neither);
        row("blanks matter", uR"({"remote":{"state":"signed_in "}})"_s, 0, neither);
        row("both states no text", uR"({"remote":{"state":true},"local":{"state":[]}})"_s, 0, neither);
        row("nothing in it", u"{}"_s, 0, neither);
        row("a byte order mark matters", uR"({"remote":{"state":"%1signed_in"}})"_s.arg(QChar{0xfeff}), 0, neither);
        row("a byte order mark in a key", uR"({"%1remote":{"state":"installed"}})"_s.arg(QChar{0xfeff}), 0, neither);
        row("a null character matters", uR"({"remote":{"state":"signed_in\u0000"}})"_s, 0, neither);
        row("escapes", uR"({"remote":{"state":"\u0073igned\u005fin"}})"_s, 0, signedIn);
        row("last of two", uR"({"remote":3,"remote":{"state":"x","state":"installed"}})"_s, 0, installed);
        row("more in it", uR"( {"v":2,"remote":{"who":"a@b","state":"signed_in"},"x":[]} )"_s, 0, signedIn);
        row("not JSON", u"signed_in"_s, 0, unchanged);
        row("nothing", QString(), 0, unchanged);
        row("cut off", uR"({"remote":{"state":"signed_in"})"_s, 0, unchanged);
        row("something behind it", uR"({"remote":{"state":"signed_in"}} done)"_s, 0, unchanged);
        row("a list", uR"([{"remote":{"state":"signed_in"}}])"_s, 0, unchanged);
        row("an escape that there is not", uR"({"remote":{"state":"\signed_in"}})"_s, 0, unchanged);
        row("a line feed in a text", u"{\"remote\":{\"state\":\"signed_in\"},\"x\":\"a\nb\"}"_s, 0, unchanged);
        row("half a surrogate pair", uR"({"remote":{"state":"signed_in"},"x":"\ud800"})"_s, 0, unchanged);
        row("a number of no kind", uR"({"remote":{"state":"signed_in"},"x":.5})"_s, 0, unchanged);
        row("a text", uR"("signed_in")"_s, 0, unchanged);
        row("failed", uR"({"remote":{"state":"signed_in"}})"_s, 1, unchanged);
        row("missing tool", QString(), 127, unchanged);
        row("ended by a signal", uR"({"remote":{"state":"signed_in"}})"_s, 15, unchanged);
    }
    void setsTheAccountLineOrNothing() {
        QFETCH(QString, output);
        QFETCH(int, exitCode);
        QFETCH(QString, line);
        m_model->accountLine = u"before"_s;
        m_model->reportAccountHeartbeat();
        ModelRecord record{*m_model};
        answer(0, output, u"complaint"_s, exitCode);
        QCOMPARE(record.take(), line.isEmpty() ? QStringList{} : QStringList{u"accountLine = " + line});
        QVERIFY(m_notifications.posted.isEmpty());
    }

    void runsWhileAnActionRuns() {
        m_model->runDeskBackup();
        m_model->reportAccountHeartbeat();
        m_model->reportAccountHeartbeat();
        QCOMPARE(m_tool->calls.size(), 3);
        answer(2, uR"({"local":{"state":"installed"}})"_s);
        QCOMPARE(m_model->accountLine.value(), u"Installed · sign in to hide download CTA"_s);
        QVERIFY(m_model->cliBusy);
        QCOMPARE(m_model->cliMessage.value(), u"vorna desk backup…"_s);
        answer(0, u"done"_s);
        QVERIFY(!m_model->cliBusy);
        answer(1, uR"({"local":{"state":"signed_in"}})"_s);
        QCOMPARE(m_model->accountLine.value(), u"Signed in · CTA hidden"_s);
    }

private:
    [[nodiscard]] const FakeTool::Call& call(qsizetype index) const { return m_tool->calls.at(index); }
    void answer(qsizetype index, const QString& output, const QString& errors = {}, qint32 exitCode = 0) {
        call(index).answer.deliver({.exitCode = exitCode, .stdOut = output, .stdErr = errors});
    }

    FakeNotificationService m_notifications;
    std::unique_ptr<FakeTool> m_tool;
    std::unique_ptr<StatusModel> m_model;
};

QTEST_GUILESS_MAIN(TestStatusModelHeartbeat)
#include "TestStatusModelHeartbeat.moc"
