#include "app/StatusModel.h"

#include "cli/StandInTool.h"
#include "support/OwnProcess.h"
#include "support/Rows.h"
#include "ui/menubar/PanelFixture.h"
#include "ui/menubar/PanelReading.h"

#include <QPushButton>

#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int waitMs = 60'000;
constexpr qsizetype lineLength = 2000; // beyond that, how much a flooder printed is up to chance
constexpr double shortLimit = 1;       // seconds
constexpr double longLimit = 120;      // seconds

const QString backup = u"Desk backup now"_s;
const QString cloudSync = u"Sync via iCloud"_s;
const QString running = u"Running vorna…"_s;

/// Keeps its grip on the account state whatever the rest of the script does.
const QByteArray heartbeat = "case $1 in desktop) echo '{\"remote\":{\"state\":\"signed_in\"}}'; exit;; esac\n";
const QByteArray untilGate = "cd \"${0%/*}/..\"; echo \"$*\" >> runs; until [ -e gate ]; do sleep 0.1; done; cat runs";

/// The most memory that this process has had, in bytes.
qint64 peakMemory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss * (QSysInfo::kernelType() == u"darwin" ? 1 : 1024);
}

}

/// A panel that is shown, over the real runner and a tool that does what it is told to.
class TestToolFaults final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_tool.emplace();
        m_tool->write(heartbeat + "echo fine");
        m_panel.reset(new PanelFixture{
            .runTool = [this](const QStringList& arguments, double) { return VornaCLIRunner::run(arguments, m_limit); },
            .clock = [] { return QDateTime{QDate{2026, 1, 15}, QTime{12, 0}}; }});
        m_view = m_panel->makeView();
        m_view->show();
        QVERIFY(m_panel->settle());
        QTRY_COMPARE_WITH_TIMEOUT(m_panel->status.accountLine.value(), u"Signed in · CTA hidden"_s, waitMs);
        QTRY_VERIFY(!OwnProcess::hasChild());
        m_others = shown().second;
        m_descriptors = OwnProcess::openDescriptors();
    }
    void cleanup() {
        run("echo fine", longLimit, u"fine"_s, u"fine"_s);
        QCOMPARE(m_panel->status.accountLine.value(), u"Signed in · CTA hidden"_s);
        QTRY_COMPARE(OwnProcess::openDescriptors(), m_descriptors);
        QVERIFY(!OwnProcess::hasChild());
        m_view.reset();
        m_panel.reset();
        m_tool.reset();
    }

    void faultIsShownAndGotOver_data() {
        const Rows<QByteArray, double, QString> row{"script", "limit", "line"};
        row("gone", {}, longLimit, u"The command “vorna” could not be started: No such file or directory."_s);
        row("flooding with 300 MB, deaf", "trap '' TERM; tr '\\0' x < /dev/zero | head -c 300000000; exit 1",
            shortLimit, QString{lineLength, u'x'});
        row("hanging after a word", "echo started; exec sleep 100", shortLimit, u"started"_s);
        row("stopped", "kill -STOP $$", shortLimit, u"exit 15"_s);
        row("deaf to the request", "trap '' TERM; exec >&- 2>&-; sleep 2; exit 5", shortLimit, u"exit 5"_s);
        row("flooding without a line break", "exec tr '\\0' x < /dev/zero", shortLimit, QString{lineLength, u'x'});
        row("crashing", "ulimit -c 0; echo 'check failed' >&2; kill -ABRT $$", longLimit, u"check failed"_s);
        row("printing what is no text", "printf '\\377'; echo broken >&2; exit 1", longLimit, u"broken"_s);
        row("printing null characters", "printf 'a\\000b'; exit 1", longLimit, u"a\0b"_s);
        row("leaving a child that holds its streams", "(sleep 1; echo late) & echo early; exit 6", longLimit,
            u"early · late"_s);
    }
    void faultIsShownAndGotOver() {
        QFETCH(const QByteArray, script);
        QFETCH(const double, limit);
        QFETCH(const QString, line);
        const qint64 before = peakMemory();
        run(script, limit, line, QString{u"Failed: " + line.left(160)});
        const qint64 more = peakMemory() - before;
        QVERIFY2(more < 400'000'000, qPrintable(QString::number(more)));
    }

    void panelWorksWhileTheToolHangs() {
        m_tool->write(heartbeat + untilGate);
        m_panel->notifications.posted.clear();
        for (int click = 0; click < 3; ++click) {
            press(backup);
            press(cloudSync);
        }
        QTest::mouseDClick(button(backup), Qt::LeftButton);
        press(u"Console"_s);
        QTRY_COMPARE(m_panel->pagesOpened.size(), 1);
        press(u"Refresh"_s);
        QVERIFY(m_panel->status.polling);
        m_view->hide();
        m_view->show();
        QVERIFY(m_panel->settle());
        QCOMPARE(shown().first, running);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_tool->file(u"runs"_s)), waitMs);
        StandInTool::writeFile({}, m_tool->file(u"gate"_s));
        QTRY_VERIFY_WITH_TIMEOUT(!m_panel->status.cliBusy, waitMs);
        QCOMPARE(shown().first, u"desk backup"_s);
        QCOMPARE(m_panel->notifications.posted.size(), 1);
    }

    void heartbeatThatFailsShowsNothing() {
        for (const QByteArray script : {"exec yes", "echo '{}'; kill -KILL $$", "printf '{\"x\":\"\\377\"}'"}) {
            QFile::remove(m_tool->file(u"runs"_s));
            m_tool->write("echo >> \"${0%/*}/../runs\"; " + script);
            m_limit = shortLimit;
            m_panel->notifications.posted.clear();
            m_panel->status.reportAccountHeartbeat();
            QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_tool->file(u"runs"_s)), waitMs);
            QTRY_VERIFY_WITH_TIMEOUT(!OwnProcess::hasChild(), waitMs);
            QTRY_COMPARE(OwnProcess::openDescriptors(), m_descriptors);
            QCOMPARE(shown(), std::pair(QString{}, m_others));
            QVERIFY(m_panel->notifications.posted.isEmpty());
        }
    }

private:
    void press(const QString& title) { QTest::mouseClick(button(title), Qt::LeftButton); }
    [[nodiscard]] QPushButton* button(const QString& title) { return PanelReading::named<QPushButton>(*m_view, title); }

    /// The beginning of what stands below the buttons of the tool, if anything does; and all else that the panel says.
    [[nodiscard]] std::pair<QString, QStringList> shown() {
        (void)drawn(*m_view);
        QStringList names = PanelReading::names(*m_view);
        const auto next = names.indexOf(cloudSync) + 1;
        QString line = names.at(next) == u"DAYPART"_s ? QString{} : names.takeAt(next).left(lineLength);
        return {line, names};
    }

    void run(const QByteArray& script, double limit, const QString& line, const QString& body) {
        QFile::remove(m_tool->onSearchPath());
        if (!script.isEmpty()) {
            m_tool->write(heartbeat + script);
        }
        m_limit = limit;
        m_panel->notifications.posted.clear();
        press(backup);
        if (!script.isEmpty()) { // else there may be nothing to wait for
            QCOMPARE(shown().first, running);
            QVERIFY(!button(backup)->isEnabled() && !button(cloudSync)->isEnabled());
        }
        QTRY_VERIFY_WITH_TIMEOUT(!m_panel->status.cliBusy, waitMs);
        QCOMPARE(shown(), std::pair(line, m_others));
        QVERIFY(button(backup)->isEnabled() && button(cloudSync)->isEnabled());
        QCOMPARE(m_panel->notifications.posted.size(), 1);
        QCOMPARE(m_panel->notifications.posted.first().title, u"Desk backup"_s);
        QCOMPARE(m_panel->notifications.posted.first().body, body);
    }

    double m_limit = longLimit;
    std::optional<StandInTool> m_tool;
    std::unique_ptr<PanelFixture> m_panel;
    std::unique_ptr<MenuBarView> m_view;
    QStringList m_others;
    qsizetype m_descriptors = 0;
};

QTEST_MAIN(TestToolFaults)
#include "TestToolFaults.moc"
