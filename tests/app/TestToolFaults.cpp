#include "app/StatusModel.h"

#include "cli/StandInTool.h"
#include "support/OwnProcess.h"
#include "ui/menubar/PanelFixture.h"
#include "ui/menubar/PanelReading.h"

#include <QPushButton>

#include <csignal>
#include <optional>

#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int patienceMs = 60'000;
constexpr qsizetype longestLine = 2000; // beyond that, how much a flooder printed is up to chance
constexpr double shortLimit = 1;        // seconds
constexpr double longLimit = 120;       // seconds

const QString backup = u"Desk backup now"_s;
const QString cloudSync = u"Sync via iCloud"_s;
const QString running = u"Running vorna…"_s;

/// Keeps its grip on the account state whatever the rest of the script does.
const QByteArray heartbeat = R"(case $1 in desktop) echo '{"remote":{"state":"signed_in"}}'; exit;; esac)"
                             "\n";

/// A panel that is shown, over the real runner and a tool that does what it is told to.
class Desk final {
public:
    Desk() {
        tool.write(heartbeat + "echo fine");
        view->show();
    }

    void press(const QString& title) { QTest::mouseClick(button(title), Qt::LeftButton); }
    [[nodiscard]] QPushButton* button(const QString& title) { return PanelReading::named<QPushButton>(*view, title); }

    /// The beginning of what stands below the buttons of the tool; nothing when there is no such line.
    [[nodiscard]] QString line() {
        const QStringList names = shown();
        const QString& next = names.at(names.indexOf(cloudSync) + 1);
        return next == u"DAYPART"_s ? QString{} : next.left(longestLine);
    }
    /// Everything else that the panel says.
    [[nodiscard]] QStringList others() {
        QStringList names = shown();
        const auto from = names.indexOf(cloudSync) + 1;
        const auto to = names.indexOf(u"DAYPART"_s);
        names.remove(from, to - from);
        return names;
    }
    [[nodiscard]] bool ends() {
        return QTest::qWaitFor([this] { return !panel.status.cliBusy; }, patienceMs);
    }

    StandInTool tool;
    double limit = longLimit;
    PanelFixture panel{
        .runTool = [this](const QStringList& arguments, double) { return VornaCLIRunner::run(arguments, limit); },
        .clock = [] { return QDateTime{QDate{2026, 1, 15}, QTime{12, 0}}; }};
    std::unique_ptr<MenuBarView> view = panel.makeView();

private:
    [[nodiscard]] QStringList shown() {
        (void)drawn(*view);
        return PanelReading::names(*view);
    }
};

/// The most memory that this process has had, in bytes.
qint64 mostMemory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const qint64 unit = QSysInfo::kernelType() == u"darwin" ? 1 : 1024;
    return usage.ru_maxrss * unit;
}

}

class TestToolFaults final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_desk.emplace();
        QVERIFY(m_desk->panel.settle());
        QTRY_COMPARE_WITH_TIMEOUT(m_desk->panel.status.accountLine.value(), u"Signed in · CTA hidden"_s, patienceMs);
        QTRY_VERIFY(!OwnProcess::hasChild());
        m_others = m_desk->others();
        m_descriptors = OwnProcess::openDescriptors();
    }
    void cleanup() {
        m_desk->limit = longLimit;
        QDir{m_desk->tool.onSearchPath()}.removeRecursively();
        m_desk->tool.write(heartbeat + "echo fine");
        m_desk->panel.center.posted.clear();
        m_desk->press(backup);
        QVERIFY(m_desk->ends());
        QCOMPARE(m_desk->line(), u"fine"_s);
        QCOMPARE(m_desk->others(), m_others);
        QCOMPARE(m_desk->panel.center.posted.size(), 1);
        QCOMPARE(m_desk->panel.center.posted.first().body, u"fine"_s);
        QCOMPARE(m_desk->panel.status.accountLine.value(), u"Signed in · CTA hidden"_s);
        QTRY_COMPARE(OwnProcess::openDescriptors(), m_descriptors);
        QVERIFY(!OwnProcess::hasChild());
        m_desk.reset();
    }

    void faultIsShownAndGotOver_data();
    void faultIsShownAndGotOver();
    void toolThatCannotBeStartedIsSaidInASentence_data();
    void toolThatCannotBeStartedIsSaidInASentence();
    void panelWorksWhileTheToolHangs();
    void secondClickRunsNothing();
    void heartbeatThatFailsShowsNothing_data();
    void heartbeatThatFailsShowsNothing();
    void floodFromAToolThatWillNotEndFitsIntoMemory_data();
    void floodFromAToolThatWillNotEndFitsIntoMemory();

private:
    void runBackup(const QString& line, const QString& body) {
        m_desk->panel.center.posted.clear();
        m_desk->press(backup);
        QCOMPARE(m_desk->line(), running);
        QVERIFY(!m_desk->button(backup)->isEnabled() && !m_desk->button(cloudSync)->isEnabled());
        QVERIFY(m_desk->ends());
        QCOMPARE(m_desk->line(), line);
        QVERIFY(m_desk->button(backup)->isEnabled() && m_desk->button(cloudSync)->isEnabled());
        QCOMPARE(m_desk->others(), m_others);
        QCOMPARE(m_desk->panel.center.posted.size(), 1);
        QCOMPARE(m_desk->panel.center.posted.first().title, u"Desk backup"_s);
        QCOMPARE(m_desk->panel.center.posted.first().body, body);
    }

    std::optional<Desk> m_desk;
    QStringList m_others;
    qsizetype m_descriptors = 0;
};

void TestToolFaults::faultIsShownAndGotOver_data() {
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<double>("limit");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("body");
    const auto row = [](const char* name, const QByteArray& script, double limit, const QString& line,
                        bool fails = true) {
        QTest::newRow(name) << script << limit << line << (fails ? u"Failed: "_s + line : line);
    };
    row("hanging", "exec sleep 100", shortLimit, u"exit 15"_s);
    row("hanging after a word", "echo started; exec sleep 100", shortLimit, u"started"_s);
    row("hanging with its streams closed", "exec sleep 100 >&- 2>&-", shortLimit, u"exit 15"_s);
    row("hanging, then obeying in its own time",
        "trap 'sleep 1; echo stopped; exit 4' TERM; while :; do sleep 0.1; done", shortLimit, u"stopped"_s);
    row("hanging, deaf to the request", "trap '' TERM; sleep 2; echo at last; exit 5", shortLimit, u"at last"_s);
    row("hanging, deaf and with its streams closed", "trap '' TERM; exec >&- 2>&-; sleep 2; exit 5", shortLimit,
        u"exit 5"_s);
    row("flooding its output", "exec yes", shortLimit, u"y · y · y"_s);
    row("flooding its output without a line break", "exec tr '\\0' x < /dev/zero", shortLimit,
        QString{longestLine, u'x'});
    row("flooding its complaints", "exec yes error >&2", shortLimit, u"error · error · error"_s);
    row("flooding its complaints through a child of its own", "yes error >&2; echo never", shortLimit,
        u"error · error · error"_s);
    row("flooding both", "yes error >&2 & yes", shortLimit, u"y · y · y"_s);
    row("crashing at a bad address", "ulimit -c 0; kill -SEGV $$", longLimit, u"exit 11"_s);
    row("crashing at a failed check", "ulimit -c 0; echo 'check failed' >&2; kill -ABRT $$", longLimit,
        u"check failed"_s);
    row("killed", "kill -KILL $$", longLimit, u"exit 9"_s);
    row("printing bytes that are no text", R"(printf 'a\377\376b'; exit 1)", longLimit, u"exit 1"_s);
    row("printing bytes that are no text, and a complaint", R"(printf '\377'; echo broken >&2; exit 1)", longLimit,
        u"broken"_s);
    row("printing a program", "exec cat /bin/sh", shortLimit, u"exit 15"_s);
    row("printing null characters", R"(printf 'a\000b')", longLimit, u"a\0b"_s, false);
    row("leaving a child that holds its streams", "(sleep 2; echo late) & echo early; exit 6", longLimit,
        u"early · late"_s);
    row("leaving a child with streams of its own", "sleep 1 >/dev/null 2>&1 & echo early", longLimit, u"early"_s,
        false);
}

void TestToolFaults::faultIsShownAndGotOver() {
    QFETCH(const QByteArray, script);
    QFETCH(const double, limit);
    QFETCH(const QString, line);
    QFETCH(const QString, body);
    m_desk->tool.write(heartbeat + script);
    m_desk->limit = limit;
    constexpr qsizetype longestBody = 168;
    runBackup(line, body.left(longestBody));
}

void TestToolFaults::toolThatCannotBeStartedIsSaidInASentence_data() {
    QTest::addColumn<std::function<void(StandInTool&)>>("spoil");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* name, const std::function<void(StandInTool&)>& spoil, const QString& reason) {
        QTest::newRow(name) << spoil << reason;
    };
    const QString notFound = u"could not be found."_s;
    row("missing", [](StandInTool&) {}, notFound);
    row(
        "not executable", [](StandInTool& tool) { tool.write("echo no", {}, StandInTool::Mode::notExecutable); },
        notFound);
    row("a directory", [](StandInTool& tool) { QDir{}.mkpath(tool.onSearchPath()); }, notFound);
    row(
        "its interpreter not executable",
        [](StandInTool& tool) {
            tool.write("echo no", tool.file(u"interpreter"_s), StandInTool::Mode::notExecutable);
            StandInTool::writeFile("#!" + QFile::encodeName(tool.file(u"interpreter"_s)) + '\n', tool.onSearchPath(),
                                   StandInTool::Mode::executable);
        },
        u"is not executable."_s);
    row(
        "its interpreter missing",
        [](StandInTool& tool) {
            StandInTool::writeFile("#!/nonexistent\n", tool.onSearchPath(), StandInTool::Mode::executable);
        },
        u"could not be started: the program that it needs is missing."_s);
    row(
        "no program",
        [](StandInTool& tool) {
            StandInTool::writeFile("neither\n", tool.onSearchPath(), StandInTool::Mode::executable);
        },
        u"could not be started: Exec format error."_s);
}

void TestToolFaults::toolThatCannotBeStartedIsSaidInASentence() {
    QFETCH(const std::function<void(StandInTool&)>, spoil);
    QFETCH(const QString, reason);
    QVERIFY(QFile::remove(m_desk->tool.onSearchPath()));
    spoil(m_desk->tool);
    const QString sentence = u"The command “vorna” "_s + reason;
    runBackup(sentence, u"Failed: "_s + sentence);
}

void TestToolFaults::panelWorksWhileTheToolHangs() {
    m_desk->tool.write(heartbeat + "cd \"${0%/*}/..\"; until [ -e gate ]; do sleep 0.1; done; echo done");
    m_desk->press(backup);

    m_desk->press(u"Console"_s);
    QTRY_COMPARE(m_desk->panel.pagesOpened.size(), 1);
    m_desk->press(u"Refresh"_s);
    QVERIFY(m_desk->panel.status.polling);
    QVERIFY(m_desk->panel.settle());
    m_desk->view->hide();
    m_desk->view->show();
    QVERIFY(m_desk->panel.settle());
    QCOMPARE(m_desk->line(), running);
    QVERIFY(m_desk->panel.status.cliBusy);

    StandInTool::writeFile({}, m_desk->tool.file(u"gate"_s));
    QVERIFY(m_desk->ends());
    QCOMPARE(m_desk->line(), u"done"_s);
}

void TestToolFaults::secondClickRunsNothing() {
    m_desk->tool.write(heartbeat +
                       R"(cd "${0%/*}/.."; echo "$*" >> runs; until [ -e gate ]; do sleep 0.1; done; cat runs)");
    for (int click = 0; click < 3; ++click) {
        m_desk->press(backup);
        m_desk->press(cloudSync);
    }
    QTest::mouseDClick(m_desk->button(backup), Qt::LeftButton);
    QCOMPARE(m_desk->line(), running);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_desk->tool.file(u"runs"_s)), patienceMs);
    StandInTool::writeFile({}, m_desk->tool.file(u"gate"_s));
    QVERIFY(m_desk->ends());
    QCOMPARE(m_desk->line(), u"desk backup"_s);
    QCOMPARE(m_desk->panel.center.posted.size(), 1);
}

void TestToolFaults::heartbeatThatFailsShowsNothing_data() {
    QTest::addColumn<QByteArray>("script");
    QTest::newRow("hanging") << QByteArray{"exec sleep 100"};
    QTest::newRow("flooding") << QByteArray{"exec yes"};
    QTest::newRow("crashing") << QByteArray{"ulimit -c 0; echo '{}'; kill -SEGV $$"};
    QTest::newRow("printing what is not JSON") << QByteArray{"echo signed in"};
    QTest::newRow("printing bytes that are no text") << QByteArray{R"(printf '{"x":"\377"}')"};
}

void TestToolFaults::heartbeatThatFailsShowsNothing() {
    QFETCH(const QByteArray, script);
    m_desk->tool.write("echo >> \"${0%/*}/../runs\"; " + script);
    m_desk->limit = shortLimit;
    m_desk->panel.status.reportAccountHeartbeat();
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_desk->tool.file(u"runs"_s)), patienceMs);
    QTRY_VERIFY_WITH_TIMEOUT(!OwnProcess::hasChild(), patienceMs);
    QTRY_COMPARE(OwnProcess::openDescriptors(), m_descriptors);
    QCOMPARE(m_desk->others(), m_others);
    QCOMPARE(m_desk->line(), QString{});
    QVERIFY(m_desk->panel.center.posted.isEmpty());
}

void TestToolFaults::floodFromAToolThatWillNotEndFitsIntoMemory_data() {
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("beginning");
    QTest::newRow("lines") << QByteArray{"yes | head -c 300000000"} << u"y · y · y"_s;
    QTest::newRow("one line") << QByteArray{"tr '\\0' x < /dev/zero | head -c 300000000"} << QString{longestLine, u'x'};
    QTest::newRow("complaints") << QByteArray{"yes error | head -c 300000000 >&2"} << u"error · error · error"_s;
}

void TestToolFaults::floodFromAToolThatWillNotEndFitsIntoMemory() {
    QFETCH(const QByteArray, script);
    QFETCH(const QString, beginning);
    constexpr qint64 mostMore = 400'000'000; // bytes
    m_desk->tool.write(heartbeat + "trap '' TERM; " + script + "; exit 1");
    m_desk->limit = shortLimit;
    const qint64 before = mostMemory();
    m_desk->press(backup);
    QVERIFY(m_desk->ends());
    QVERIFY(m_desk->line().startsWith(beginning));
    QVERIFY(m_desk->panel.center.posted.value(0).body.startsWith(u"Failed: " + beginning.left(160)));
    const qint64 more = mostMemory() - before;
    QVERIFY2(more < mostMore, qPrintable(QString::number(more)));
}

QTEST_MAIN(TestToolFaults)
#include "TestToolFaults.moc"
