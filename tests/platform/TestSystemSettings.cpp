#include "platform/SystemSettings.h"

#include "platform/linux/Session.h"

#include <QtTest>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using SystemSettings::Pane;

namespace {

constexpr Pane allPanes[]{Pane::notifications, Pane::accessibility, Pane::automation, Pane::fullDiskAccess,
                          Pane::developerTools};

/// Stands in for a settings program: writes its arguments beside itself, one a line.
void installProgram(const QString& folder, const QString& name) {
    QFile file{folder + u'/' + name};
    QVERIFY(file.open(QFile::WriteOnly));
    file.write("#!/bin/sh\nfor argument; do echo \"$argument\"; done > \"$0.part\"\n"
               "while read -r a; do echo \"$a\"; done < \"$0.part\" > \"$0.arguments\"\n");
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QByteArray argumentsOf(const QString& program) {
    QFile file{program + u".arguments"_s};
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray{};
}

}

class TestSystemSettings final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_path = qgetenv("PATH");
        m_workingFolder = QDir::currentPath();
        m_programs = std::make_unique<QTemporaryDir>();
        QVERIFY(m_programs->isValid());
        qputenv("PATH", m_programs->path().toLocal8Bit());
        installProgram(m_programs->path(), u"gnome-control-center"_s);
        installProgram(m_programs->path(), u"systemsettings"_s);
    }

    void cleanup() {
        QDir::setCurrent(m_workingFolder);
        qputenv("PATH", m_path);
        qunsetenv("XDG_CURRENT_DESKTOP");
    }

    void linksPanesOfTheRunningDesktop() {
        for (const char* desktop : {"GNOME", "ubuntu:GNOME", "GNOME-Classic:GNOME", "KDE", "XFCE", "GNOMEX:KDEX", ""}) {
            const QByteArray name{desktop};
            qputenv("XDG_CURRENT_DESKTOP", name);
            for (const auto pane : allPanes) {
                const bool wanted = pane == Pane::notifications || pane == Pane::accessibility;
                QCOMPARE(SystemSettings::link(pane).has_value(),
                         wanted && (name.endsWith("GNOME") || name.endsWith("KDE")));
            }
        }
    }

    void framesAreTheCompositorsButOnGnomeAndWhatIsMadeOfIt() {
        for (const char* desktop : {"GNOME", "ubuntu:GNOME", "Pantheon", "X-Cinnamon", "KDE", "sway:wlroots", ""}) {
            const QByteArray name{desktop};
            qputenv("XDG_CURRENT_DESKTOP", name);
            QCOMPARE(Session::drawsFrames(), name.isEmpty() || name == "KDE" || name.startsWith("sway"));
        }
    }

    void linksNothingWhereTheProgramIsMissing() {
        for (const auto& [desktop, missing] :
             {std::pair{"GNOME", u"gnome-control-center"_s}, {"KDE", u"systemsettings"_s}}) {
            qputenv("XDG_CURRENT_DESKTOP", desktop);
            const auto program = m_programs->filePath(missing);
            QVERIFY(SystemSettings::link(Pane::notifications));
            QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner));
            QVERIFY(!SystemSettings::link(Pane::notifications));
            QVERIFY(QFile::remove(program));
            QVERIFY(!SystemSettings::link(Pane::notifications) && !SystemSettings::link(Pane::accessibility));
        }
    }

    void linksNothingForADesktopOrSearchPathThatIsNotSane_data() {
        QTest::addColumn<QByteArray>("desktop");
        QTest::addColumn<QByteArray>("path");
        const auto good = "%1"_ba;
        QTest::newRow("only colons") << ":::"_ba << good;
        QTest::newRow("a path") << "../GNOME:/KDE"_ba << good;
        QTest::newRow("spaces and commands") << " GNOME ;KDE;$(KDE)"_ba << good;
        QTest::newRow("not UTF-8") << "\xff\xfe:GN\xffOME"_ba << good;
        QTest::newRow("very long") << QByteArray(1'000'000, 'G') << good;
        QTest::newRow("empty search path") << "GNOME"_ba << ""_ba;
        QTest::newRow("search path of colons") << "GNOME"_ba << ":::"_ba;
        QTest::newRow("working directory in the search path") << "GNOME"_ba << ".:./:"_ba;
    }
    void linksNothingForADesktopOrSearchPathThatIsNotSane() {
        QFETCH(QByteArray, desktop);
        QFETCH(QByteArray, path);
        QVERIFY(QDir::setCurrent(m_programs->path()));
        qputenv("XDG_CURRENT_DESKTOP", desktop);
        qputenv("PATH", path.replace("%1", m_programs->path().toLocal8Bit()));
        for (const auto pane : allPanes) {
            QVERIFY(!SystemSettings::link(pane));
        }
    }

    void opensThePaneInItsProgram() {
        const struct {
            const char* desktop;
            Pane pane;
            QString program;
            QByteArray arguments;
        } rows[]{
            {"GNOME", Pane::notifications, u"gnome-control-center"_s, "notifications\n"},
            {"GNOME", Pane::accessibility, u"gnome-control-center"_s, "universal-access\n"},
            {"KDE", Pane::notifications, u"systemsettings"_s, "kcm_notifications\n"},
            {"KDE", Pane::accessibility, u"systemsettings"_s, "kcm_access\n"},
        };
        for (const auto& [desktop, pane, program, arguments] : rows) {
            qputenv("XDG_CURRENT_DESKTOP", desktop);
            const QUrl link = SystemSettings::link(pane).value();
            QVERIFY(link.isValid() && link.scheme() == u"x-desktop-settings"_s);
            SystemSettings::open(link);
            QTRY_COMPARE(argumentsOf(m_programs->filePath(program)), arguments);
        }
    }

    void opensNothingButItsOwnLinks() {
        qputenv("XDG_CURRENT_DESKTOP", "GNOME");
        for (const QUrl& link :
             {QUrl{}, QUrl{u"https://example.org/"_s}, QUrl{u"x-desktop-settings:sh/notifications"_s},
              QUrl{u"x-desktop-settings:gnome-control-center/--help"_s}, QUrl::fromLocalFile(u"/bin/sh"_s)}) {
            SystemSettings::open(link);
        }
        SystemSettings::open(SystemSettings::link(Pane::notifications).value());
        QTRY_COMPARE(argumentsOf(m_programs->filePath(u"gnome-control-center"_s)), "notifications\n"_ba);
        QVERIFY(argumentsOf(m_programs->filePath(u"systemsettings"_s)).isEmpty());
    }

    void openSurvivesAProgramThatIsGone() {
        qputenv("XDG_CURRENT_DESKTOP", "KDE");
        const auto link = SystemSettings::link(Pane::notifications).value();
        QVERIFY(QFile::remove(m_programs->filePath(u"systemsettings"_s)));
        SystemSettings::open(link);
        QVERIFY(!QFile::exists(m_programs->filePath(u"systemsettings.arguments"_s)));
    }

private:
    std::unique_ptr<QTemporaryDir> m_programs;
    QByteArray m_path;
    QString m_workingFolder;
};

QTEST_GUILESS_MAIN(TestSystemSettings)

#include "TestSystemSettings.moc"
