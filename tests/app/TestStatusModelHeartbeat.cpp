#include "app/StatusModel.h"

#include "support/FakeNotificationCenter.h"
#include "support/FakeTool.h"
#include "support/ModelRecord.h"
#include "system/NotificationService.h"

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
        QTest::addColumn<QString>("output");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("line");
        const QString signedIn = u"Signed in · CTA hidden"_s;
        const QString installed = u"Installed · sign in to hide download CTA"_s;
        const QString neither = u"Not signed in"_s;
        const QString unchanged;
        QTest::newRow("remote signed in") << uR"({"remote":{"state":"signed_in"}})"_s << 0 << signedIn;
        QTest::newRow("remote installed") << uR"({"remote":{"state":"installed"}})"_s << 0 << installed;
        QTest::newRow("local installed alone") << uR"({"local":{"state":"installed"}})"_s << 0 << installed;
        QTest::newRow("remote state a number")
            << uR"({"remote":{"state":1},"local":{"state":"signed_in"}})"_s << 0 << signedIn;
        QTest::newRow("remote state null")
            << uR"({"remote":{"state":null},"local":{"state":"signed_in"}})"_s << 0 << signedIn;
        QTest::newRow("remote without state") << uR"({"remote":{},"local":{"state":"signed_in"}})"_s << 0 << signedIn;
        QTest::newRow("remote a list") << uR"({"remote":["state"],"local":{"state":"signed_in"}})"_s << 0 << signedIn;
        QTest::newRow("remote a text") << uR"({"remote":"signed_in","local":{"state":"installed"}})"_s << 0
                                       << installed;
        QTest::newRow("remote wins") << uR"({"remote":{"state":"installed"},"local":{"state":"signed_in"}})"_s << 0
                                     << installed;
        QTest::newRow("unknown remote wins")
            << uR"({"remote":{"state":"pending"},"local":{"state":"installed"}})"_s << 0 << neither;
        QTest::newRow("empty remote wins")
            << uR"({"remote":{"state":""},"local":{"state":"installed"}})"_s << 0 << neither;
        QTest::newRow("case matters") << uR"({"remote":{"state":"Signed_In"}})"_s << 0 << neither;
        QTest::newRow("blanks matter") << uR"({"remote":{"state":"signed_in "}})"_s << 0 << neither;
        QTest::newRow("both states no text") << uR"({"remote":{"state":true},"local":{"state":[]}})"_s << 0 << neither;
        QTest::newRow("nothing in it") << u"{}"_s << 0 << neither;
        QTest::newRow("a byte order mark matters")
            << uR"({"remote":{"state":"%1signed_in"}})"_s.arg(QChar{0xfeff}) << 0 << neither;
        QTest::newRow("a byte order mark in a key")
            << uR"({"%1remote":{"state":"installed"}})"_s.arg(QChar{0xfeff}) << 0 << neither;
        QTest::newRow("a null character matters") << uR"({"remote":{"state":"signed_in\u0000"}})"_s << 0 << neither;
        QTest::newRow("escapes") << uR"({"remote":{"state":"\u0073igned\u005fin"}})"_s << 0 << signedIn;
        QTest::newRow("last of two") << uR"({"remote":3,"remote":{"state":"x","state":"installed"}})"_s << 0
                                     << installed;
        QTest::newRow("more in it") << uR"( {"v":2,"remote":{"who":"a@b","state":"signed_in"},"x":[]} )"_s << 0
                                    << signedIn;
        QTest::newRow("not JSON") << u"signed_in"_s << 0 << unchanged;
        QTest::newRow("nothing") << QString() << 0 << unchanged;
        QTest::newRow("cut off") << uR"({"remote":{"state":"signed_in"})"_s << 0 << unchanged;
        QTest::newRow("something behind it") << uR"({"remote":{"state":"signed_in"}} done)"_s << 0 << unchanged;
        QTest::newRow("a list") << uR"([{"remote":{"state":"signed_in"}}])"_s << 0 << unchanged;
        QTest::newRow("an escape that there is not") << uR"({"remote":{"state":"\signed_in"}})"_s << 0 << unchanged;
        QTest::newRow("a line feed in a text")
            << u"{\"remote\":{\"state\":\"signed_in\"},\"x\":\"a\nb\"}"_s << 0 << unchanged;
        QTest::newRow("half a surrogate pair")
            << uR"({"remote":{"state":"signed_in"},"x":"\ud800"})"_s << 0 << unchanged;
        QTest::newRow("a number of no kind") << uR"({"remote":{"state":"signed_in"},"x":.5})"_s << 0 << unchanged;
        QTest::newRow("a text") << uR"("signed_in")"_s << 0 << unchanged;
        QTest::newRow("failed") << uR"({"remote":{"state":"signed_in"}})"_s << 1 << unchanged;
        QTest::newRow("missing tool") << QString() << 127 << unchanged;
        QTest::newRow("ended by a signal") << uR"({"remote":{"state":"signed_in"}})"_s << 15 << unchanged;
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
        QVERIFY(m_center.posted.isEmpty());
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

    FakeNotificationCenter m_center;
    NotificationService m_notifications{m_center};
    std::unique_ptr<FakeTool> m_tool;
    std::unique_ptr<StatusModel> m_model;
};

QTEST_GUILESS_MAIN(TestStatusModelHeartbeat)
#include "TestStatusModelHeartbeat.moc"
