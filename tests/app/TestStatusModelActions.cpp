#include "app/StatusModel.h"

#include "support/FakeNotificationService.h"
#include "support/FakeTool.h"
#include "support/ModelRecord.h"
#include "support/Rows.h"

#include <QRegularExpression>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using Result = VornaCLIRunner::Result;
using Action = QCoro::Task<> (StatusModel::*)();

Q_DECLARE_METATYPE(Action)

namespace {

/// One character each as a person counts, of several code points.
const QString accented = u"e\u0301"_s;
const QString family = u"👩‍👩‍👧"_s;

}

class TestStatusModelActions final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_model.reset();
        m_tool = std::make_unique<FakeTool>();
        m_notifications = std::make_unique<FakeNotificationService>();
        m_model = std::make_unique<StatusModel>(*m_notifications, m_tool->runner());
    }

    void actionRunsTheToolAndSaysSo_data() {
        const Rows<Action, QStringList, QString, QString> row{"action", "arguments", "progress", "title"};
        row("backup", &StatusModel::runDeskBackup, QStringList{u"desk"_s, u"backup"_s}, u"vorna desk backup…"_s,
            u"Desk backup"_s);
        row("sync", &StatusModel::runMacSyncICloud,
            QStringList{u"desk"_s, u"sync"_s, u"push"_s, u"--via"_s, u"icloud"_s},
            u"vorna desk sync push --via icloud…"_s, u"Mac\u2192Mac iCloud sync"_s);
        row("sign in", &StatusModel::signInFromDesktop,
            QStringList{u"auth"_s, u"login"_s, u"--surface"_s, u"macos"_s, u"--yes"_s},
            u"vorna auth login --surface macos --yes…"_s, u"vorna sign in"_s);
    }
    void actionRunsTheToolAndSaysSo() {
        QFETCH(Action, action);
        (m_model.get()->*action)();
        QCOMPARE(m_tool->calls.size(), 1);
        QTEST(call(0).arguments, "arguments");
        QCOMPARE(call(0).timeout, 120.0);
        QVERIFY(m_model->cliBusy);
        QTEST(*m_model->cliMessage.value(), "progress");
        QVERIFY(m_notifications->posted.isEmpty());

        answer(0, u" all good \n"_s);
        QVERIFY(!m_model->cliBusy);
        QCOMPARE(m_model->cliMessage.value(), u"all good"_s);
        QCOMPARE(m_notifications->posted.size(), 1);
        QTEST(m_notifications->posted.first().title, "title");
        QCOMPARE(m_notifications->posted.first().body, u"all good"_s);
        static const QRegularExpression uuid{u"^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$"_s};
        QVERIFY(uuid.match(m_notifications->posted.first().identifier).hasMatch());
    }

    void secondActionIsDropped() {
        m_model->runDeskBackup();
        ModelRecord record{*m_model};
        m_model->runMacSyncICloud();
        m_model->runDeskBackup();
        QCOMPARE(record.take(), QStringList{});
        QCOMPARE(m_tool->calls.size(), 1);
        QCOMPARE(m_model->cliMessage.value(), u"vorna desk backup…"_s);

        answer(0, u"done"_s);
        QCOMPARE(m_tool->calls.size(), 1);
        QCOMPARE(m_model->cliMessage.value(), u"done"_s);
        QCOMPARE(m_notifications->posted.size(), 1);
    }

    void busyLastsUntilTheNotificationIsPosted() {
        m_notifications->answersAtOnce = false;
        m_model->runDeskBackup();
        answer(0, u"done"_s);
        QCOMPARE(m_model->cliMessage.value(), u"done"_s);
        QVERIFY(m_model->cliBusy);
        m_model->runMacSyncICloud();
        QCOMPARE(m_tool->calls.size(), 1);
        m_notifications->answerAll();
        QVERIFY(!m_model->cliBusy);
    }

    void nextActionRunsWhenTheFirstHasEnded() {
        m_model->runDeskBackup();
        answer(0, u"done"_s);
        m_model->reportAccountHeartbeat();
        answer(1, u"{}"_s);
        QCOMPARE(m_model->cliMessage.value(), u"done"_s);
        m_model->runDeskBackup();
        QCOMPARE(m_model->cliMessage.value(), u"vorna desk backup…"_s);
        QVERIFY(m_model->cliBusy);
        answer(2, u"done"_s);
        QCOMPARE(m_notifications->posted.at(0).body, m_notifications->posted.at(1).body);
        QVERIFY(m_notifications->posted.at(0).identifier != m_notifications->posted.at(1).identifier);
    }

    void refusedNotificationHasNoVisibleEffect() {
        m_notifications->state = NotificationService::Authorization::denied;
        ModelRecord record{*m_model};
        m_model->runDeskBackup();
        answer(0, QString(), u"no disk"_s, 2);
        QCOMPARE(record.take().join(u", "), u"cliBusy = true, cliMessage = vorna desk backup…, cliMessage = no disk, "
                                            "cliBusy = false"_s);
        QCOMPARE(m_notifications->posted.size(), 1);
        QCOMPARE(m_notifications->posted.first().body, u"Failed: no disk"_s);
        QCOMPARE(m_notifications->authorizationRequests, 0);
    }

    void messageIsTheFirstThreeLines_data() {
        const Rows<QString, QString, int, QString, QString> row{"output", "errors", "exitCode", "message", "body"};
        row("five, with blank ones between", u"a\n\nb\n\n\nc\nd\n\ne\n"_s, QString(), 0, u"a · b · c"_s,
            u"a · b · c"_s);
        row("two", u"a\nb"_s, QString(), 0, u"a · b"_s, u"a · b"_s);
        row("a line of blanks is a line", u"a\n \nb\nc"_s, QString(), 0, u"a ·   · b"_s, u"a ·   · b"_s);
        row("complaint", QString(), u"boom\nbang"_s, 1, u"boom · bang"_s, u"Failed: boom · bang"_s);
        row("output wins over complaint", u"partial"_s, u"boom"_s, 1, u"partial"_s, u"Failed: partial"_s);
        row("status alone", QString(), QString(), 2, u"exit 2"_s, u"Failed: exit 2"_s);
        row("nothing", QString(), QString(), 0, u"ok"_s, u"ok"_s);
        row("missing tool", QString(), u"The command “vorna” could not be started: No such file or directory."_s, 127,
            u"The command “vorna” could not be started: No such file or directory."_s,
            u"Failed: The command “vorna” could not be started: No such file or directory."_s);
    }
    void messageIsTheFirstThreeLines() {
        QFETCH(QString, output);
        QFETCH(QString, errors);
        QFETCH(int, exitCode);
        m_model->runDeskBackup();
        answer(0, output, errors, exitCode);
        QTEST(*m_model->cliMessage.value(), "message");
        QTEST(m_notifications->posted.first().body, "body");
    }

    void notificationIsCutInCharacters_data() {
        Rows<QString, int, int, int>{"character", "count", "exitCode", "kept"};
        const QList<std::pair<const char*, QString>> characters{
            {"plain", u"x"_s},
            {"accented", accented},
            {"family", family},
            {"beyond the first plane", u"🙂"_s},
            {"with forty accents", u'e' + QString{40, QChar{0x301}}}};
        for (const auto& [name, character] : characters) {
            QTest::addRow("%s, failing, 300", name) << character << 300 << 1 << 160;
            QTest::addRow("%s, failing, 161", name) << character << 161 << 1 << 160;
            QTest::addRow("%s, failing, 160", name) << character << 160 << 1 << 160;
            QTest::addRow("%s, fine, 300", name) << character << 300 << 0 << 180;
            QTest::addRow("%s, fine, 181", name) << character << 181 << 0 << 180;
            QTest::addRow("%s, fine, 180", name) << character << 180 << 0 << 180;
            QTest::addRow("%s, fine, 1", name) << character << 1 << 0 << 1;
        }
    }
    void notificationIsCutInCharacters() {
        QFETCH(QString, character);
        QFETCH(int, count);
        QFETCH(int, exitCode);
        QFETCH(int, kept);
        m_model->runDeskBackup();
        answer(0, character.repeated(count), {}, exitCode);
        QCOMPARE(m_model->cliMessage.value(), character.repeated(count));
        QCOMPARE(m_notifications->posted.first().body,
                 (exitCode == 0 ? QString() : u"Failed: "_s) + character.repeated(kept));
    }

    void modelMayGoInMidAction() {
        for (const bool toolHasAnswered : {false, true}) {
            init();
            m_notifications->answersAtOnce = false;
            m_model->runDeskBackup();
            m_model->reportAccountHeartbeat();
            if (toolHasAnswered) {
                answer(0, u"done"_s);
            }
            m_model.reset();
            answer(0, u"done"_s);
            answer(1, uR"({"remote":{"state":"signed_in"}})"_s);
            m_notifications->answerAll();
            QCOMPARE(m_notifications->posted.size(), toolHasAnswered ? 1 : 0);
        }
    }

private:
    [[nodiscard]] const FakeTool::Call& call(qsizetype index) const { return m_tool->calls.at(index); }
    void answer(qsizetype index, const QString& output, const QString& errors = {}, qint32 exitCode = 0) {
        call(index).answer.deliver({.exitCode = exitCode, .stdOut = output, .stdErr = errors});
    }

    std::unique_ptr<FakeNotificationService> m_notifications;
    std::unique_ptr<FakeTool> m_tool;
    std::unique_ptr<StatusModel> m_model;
};

QTEST_GUILESS_MAIN(TestStatusModelActions)
#include "TestStatusModelActions.moc"
