#include "platform/SystemSettings.h"

#include "platform/linux/Session.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

struct PaneProgram final {
    QLatin1StringView desktop;
    SystemSettings::Pane pane;
    QLatin1StringView program;
    QLatin1StringView argument;

    [[nodiscard]] QUrl link() const { return QUrl{u"x-desktop-settings:"_s + program + u'/' + argument}; }
};

using enum SystemSettings::Pane;
constexpr PaneProgram panePrograms[]{
    {"GNOME"_L1, notifications, "gnome-control-center"_L1, "notifications"_L1},
    {"GNOME"_L1, accessibility, "gnome-control-center"_L1, "universal-access"_L1},
    {"KDE"_L1, notifications, "systemsettings"_L1, "kcm_notifications"_L1},
    {"KDE"_L1, accessibility, "systemsettings"_L1, "kcm_access"_L1},
};

/// A relative entry of the search path would let any working directory pass for the desktop's settings.
QString installed(QLatin1StringView program) {
    auto folders = qEnvironmentVariable("PATH").split(QDir::listSeparator(), Qt::SkipEmptyParts);
    folders.removeIf([](const QString& folder) { return !QDir::isAbsolutePath(folder); });
    return folders.isEmpty() ? QString{} : QStandardPaths::findExecutable(program, folders);
}

}

namespace SystemSettings {

std::optional<QUrl> link(Pane pane) {
    const auto names = Session::desktops();
    for (const auto& name : names) {
        const auto* const found = std::ranges::find_if(
            panePrograms, [&](const PaneProgram& entry) { return entry.desktop == name && entry.pane == pane; });
        if (found != std::end(panePrograms) && !installed(found->program).isEmpty()) {
            return found->link();
        }
    }
    return std::nullopt;
}

void open(const QUrl& link) {
    const auto* const found = std::ranges::find(panePrograms, link, &PaneProgram::link);
    if (found == std::end(panePrograms)) {
        return;
    }
    if (const auto program = installed(found->program); !program.isEmpty()) {
        QProcess process;
        process.setProgram(program);
        process.setArguments({found->argument});
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        process.startDetached();
    }
}

}
