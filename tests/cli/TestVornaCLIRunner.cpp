#include "cli/VornaCLIRunner.h"

#include "cli/StandInTool.h"
#include "support/OwnProcess.h"
#include "support/Rows.h"

#include <QTest>

#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using VornaCLIRunner::Result;

namespace {

Result runTool(const QStringList& arguments = {}) {
    return QCoro::waitFor(VornaCLIRunner::run(arguments, 120));
}

QString resolved(const QString& which = u"/usr/bin/which"_s) {
    return QString::fromStdString(
        QCoro::waitFor(VornaCLIRunner::resolveVornaExecutable({.which = which.toStdString()})));
}

}

class TestVornaCLIRunner final : public QObject {
    Q_OBJECT

private slots:
    void init() { m_tool.emplace(); }
    void cleanup() {
        QVERIFY(!OwnProcess::hasChild());
        m_tool.reset();
    }

    void summaryIsTheOneLineForAPerson() {
        const auto summary = [](int exitCode, const QString& output, const QString& errors) {
            return Result{.exitCode = exitCode, .stdOut = output, .stdErr = errors}.summary();
        };
        QCOMPARE(summary(0, u"  done\n"_s, {}), u"done"_s);
        QCOMPARE(summary(1, {}, u" boom "_s), u"boom"_s);
        QCOMPARE(summary(2, {}, {}), u"exit 2"_s);
        QCOMPARE(summary(-3, {}, {}), u"exit -3"_s);
        QCOMPARE(summary(0, {}, {}), u"ok"_s);
        QCOMPARE(summary(1, u"partial"_s, u"text"_s), u"partial"_s);
        QCOMPARE(summary(1, u" \n\t "_s, u"text"_s), u"text"_s);
        QCOMPARE(summary(7, u"\r\n"_s, u" \u00a0"_s), u"exit 7"_s);
        QCOMPARE(summary(0, u"\n one\n\n two \n"_s, {}), u"one\n\n two"_s);
        QCOMPARE(summary(0, u"\u3000\u2028\u0085\u2003done\u2029\u202f\v"_s, {}), u"done"_s);
    }

    void triesThePlacesInOrder() {
        QCOMPARE(resolved(), u"vorna"_s);
        for (const QString& place : {m_tool->inUserInstall(), m_tool->inCheckout(), m_tool->onSearchPath()}) {
            m_tool->write("echo \"$0\"", place);
            QCOMPARE(resolved(), place);
            QCOMPARE(runTool().stdOut, place + u'\n');
        }
        for (const QString& place : {m_tool->onSearchPath(), m_tool->inCheckout()}) {
            QVERIFY(QFile::setPermissions(place, QFile::ReadOwner));
        }
        QCOMPARE(resolved(), m_tool->inUserInstall());
        QVERIFY(QFile::remove(m_tool->inCheckout()) && QDir{}.mkpath(m_tool->inCheckout()));
        QCOMPARE(resolved(), m_tool->inUserInstall());
    }

    void believesWhatTheSearchPrints_data() {
        const Rows<QByteArray, QString> row{"which", "path"};
        const QString found = u"/found/vorna"_s;
        row("a line", "echo /found/$*", found);
        row("blanks before", "printf ' \\t\\n/found/vorna'", found);
        row("blanks behind", "printf '/found/vorna \\r\\n\\n'", found);
        row("after a while", "sleep 0.2; echo /found/vorna", found);
        row("a complaint as well", "echo /wrong >&2; echo /found/vorna", found);
        row("a complaint alone", "echo /wrong >&2", {});
        row("a blank line", "echo ' '", {});
        row("nothing", "exit 0", {});
        row("not UTF-8", "printf '/wrong/\\377'", {});
        row("half of a character", "printf '/wrong/\\342\\202'", {});
        row("a path, status 1", "echo /wrong; exit 1", {});
        row("a path, status 2", "echo /wrong; exit 2", {});
        row("a path, killed", "echo /wrong; kill -KILL $$", {});
    }
    void believesWhatTheSearchPrints() {
        QFETCH(QByteArray, which);
        QFETCH(QString, path);
        m_tool->write("echo checkout", m_tool->inCheckout());
        m_tool->write(which, m_tool->file(u"which"_s));
        QCOMPARE(resolved(m_tool->file(u"which"_s)), path.isEmpty() ? m_tool->inCheckout() : path);
        QCOMPARE(resolved(m_tool->file(u"no such which"_s)), m_tool->inCheckout());
    }

    void homeIsAnAbsolutePath() {
        QCOMPARE(VornaCLIRunner::homeDirectory(), m_tool->home().toStdString());
        const std::string account = getpwuid(getuid())->pw_dir;
        for (const char* home : {"", "relative", "./home"}) {
            qputenv("HOME", home);
            QCOMPARE(VornaCLIRunner::homeDirectory(), account);
        }
        qunsetenv("HOME");
        QCOMPARE(VornaCLIRunner::homeDirectory(), account);
    }

    void toolThatCannotBeStartedIsReported_data() {
        const Rows<QByteArray, QString> row{"file", "reason"}; // none for a tool that is nowhere
        row("nowhere", QByteArray{}, u"No such file or directory"_s);
        row("interpreter missing", QByteArray{"#!/nonexistent/interpreter\n"},
            u"No such file or directory (the program that it needs is missing)"_s);
        row("interpreter not executable", QByteArray{"#!/etc/passwd\n"}, u"Permission denied"_s);
        row("no program", QByteArray{"neither script nor binary\n"}, u"Exec format error"_s);
    }
    void toolThatCannotBeStartedIsReported() {
        QFETCH(QByteArray, file);
        QFETCH(QString, reason);
        const QString before = QDir::currentPath();
        m_tool->write("echo not this one", m_tool->file(u"elsewhere/vorna"_s));
        QVERIFY(QDir::setCurrent(m_tool->file(u"elsewhere"_s)));
        if (!file.isEmpty()) {
            StandInTool::writeFile(file, m_tool->onSearchPath(), StandInTool::Mode::executable);
        }
        const Result result = runTool({u"desk"_s, u"backup"_s});
        QVERIFY(QDir::setCurrent(before));
        const QString text = u"The command “vorna” could not be started: "_s + reason + u'.';
        QCOMPARE(result, (Result{.exitCode = 127, .stdOut = {}, .stdErr = text}));
        QCOMPARE(result.summary(), text);
    }

    void textArrivesUnchangedOrNotAtAll_data() {
        const Rows<QByteArray, QString> row{"escapes", "text"}; // empty where the bytes are not UTF-8
        row("many scripts", QByteArray{"Grüße · 日本語 · 🙂"}, u"Grüße · 日本語 · 🙂"_s);
        row("a null character", QByteArray{R"(a\000b)"}, u"a\0b"_s);
        row("a byte order mark", QByteArray{R"(\357\273\277a)"}, u"\ufeff"_s + u'a');
        row("a non-character", QByteArray{R"(\357\277\277)"}, QString{QChar{0xffff}});
        row("line ends of all kinds", QByteArray{R"(a\r\nb\rc\n)"}, u"a\r\nb\rc\n"_s);
        row("a stray byte", QByteArray{R"(fine \377 fine)"}, QString());
        row("cut off at the end", QByteArray{R"(fine \342\202)"}, QString());
        row("overlong", QByteArray{R"(\300\257)"}, QString());
        row("a surrogate", QByteArray{R"(\355\240\200)"}, QString());
        row("beyond Unicode", QByteArray{R"(\364\220\200\200)"}, QString());
    }
    void textArrivesUnchangedOrNotAtAll() {
        QFETCH(QByteArray, escapes);
        QFETCH(QString, text);
        m_tool->write("printf '" + escapes + "'; printf fine >&2; exit 255");
        QCOMPARE(runTool(), (Result{.exitCode = 255, .stdOut = text, .stdErr = u"fine"_s}));
        m_tool->write("printf '" + escapes + "' >&2; printf fine");
        QCOMPARE(runTool(), (Result{.exitCode = 0, .stdOut = u"fine"_s, .stdErr = text}));
    }

private:
    std::optional<StandInTool> m_tool;
};

QTEST_GUILESS_MAIN(TestVornaCLIRunner)
#include "TestVornaCLIRunner.moc"
