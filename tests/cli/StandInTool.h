#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

/// A place for stand-ins of the command-line tool: while it lives, the search path is its `bin` and the system's own
/// programs, and the home directory is its `home`. Both are empty at first.
class StandInTool final {
public:
    StandInTool() {
        QDir root{m_root.path()};
        root.mkdir(QStringLiteral("bin"));
        root.mkdir(QStringLiteral("home"));
        qputenv("PATH", QFile::encodeName(onSearchPath().chopped(toolFile.size()) + QStringLiteral(":/usr/bin:/bin")));
        qputenv("HOME", QFile::encodeName(home()));
    }
    StandInTool(const StandInTool&) = delete;
    StandInTool& operator=(const StandInTool&) = delete;
    ~StandInTool() {
        qputenv("PATH", m_path);
        qputenv("HOME", m_home);
    }

    [[nodiscard]] QString file(const QString& name) const { return m_root.filePath(name); }
    [[nodiscard]] QString home() const { return file(QStringLiteral("home")); }
    [[nodiscard]] QString onSearchPath() const { return file(QStringLiteral("bin")) + toolFile; }
    [[nodiscard]] QString inCheckout() const { return home() + QStringLiteral("/dev/vorna/.venv/bin/vorna"); }
    [[nodiscard]] QString inUserInstall() const { return home() + QStringLiteral("/.local/bin/vorna"); }

    enum class Mode { executable, notExecutable };

    /// Writes a shell script, by default onto the search path.
    void write(const QByteArray& script, const QString& path = {}, Mode mode = Mode::executable) const {
        writeFile("#!/bin/sh\n" + script + '\n', path.isEmpty() ? onSearchPath() : path, mode);
    }

    static void writeFile(const QByteArray& content, const QString& path, Mode mode = Mode::notExecutable) {
        QDir{}.mkpath(path.section(u'/', 0, -2));
        QFile::remove(path);
        QFile file{path};
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            qFatal("cannot write a stand-in");
        }
        const auto readWrite = QFile::ReadOwner | QFile::WriteOwner;
        file.setPermissions(mode == Mode::executable ? readWrite | QFile::ExeOwner : readWrite);
    }

private:
    inline static const QString toolFile = QStringLiteral("/vorna");

    QTemporaryDir m_root;
    QByteArray m_path = qgetenv("PATH");
    QByteArray m_home = qgetenv("HOME");
};
