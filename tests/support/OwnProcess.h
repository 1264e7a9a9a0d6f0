#pragma once

#include <QDir>
#include <QFile>

#include <csignal>
#include <filesystem>
#include <system_error>

#include <sys/wait.h>

/// What the test's own process holds, for finding out what a test has left behind.
namespace OwnProcess {

[[nodiscard]] inline qsizetype entries(const QString& directory) {
    return QDir{directory}.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
}

/// Files, sockets and pipes. Not Linux's own kind: Qt's drawing threads come and go, each with one of these.
[[nodiscard]] inline qsizetype openDescriptors() {
    qsizetype count = 0;
    for (const auto& entry : std::filesystem::directory_iterator{"/dev/fd"}) {
        std::error_code noLink;
        const auto target = std::filesystem::read_symlink(entry.path(), noLink).string();
        const bool isGone = noLink == std::errc::no_such_file_or_directory;
        count += isGone || target.starts_with("anon_inode:") ? 0 : 1;
    }
    return count;
}

/// 0 where the system does not list them, as on macOS: there nobody sees one that was left behind.
[[nodiscard]] inline qsizetype threads() {
    return entries(QStringLiteral("/proc/self/task"));
}

/// Whether there is a child, be it alive or not waited for.
[[nodiscard]] inline bool hasChild() {
    siginfo_t change{};
    return waitid(P_ALL, 0, &change, WEXITED | WNOHANG | WNOWAIT) == 0;
}

/// Whether there is a child that ended (`WEXITED`) or was stopped (`WSTOPPED`) and was not waited for.
[[nodiscard]] inline bool hasChildThat(int change) {
    siginfo_t found{};
    return waitid(P_ALL, 0, &found, change | WNOHANG | WNOWAIT) == 0 && found.si_pid != 0;
}

/// Whether this process runs; only Linux shows one that is dead and not waited for.
[[nodiscard]] inline bool isAlive(pid_t process) {
    QFile status{QStringLiteral("/proc/%1/stat").arg(process)};
    const bool isZombie = status.open(QIODevice::ReadOnly) && status.readAll().contains(") Z ");
    return !isZombie && kill(process, 0) == 0;
}

}
