#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// What the words behind the program's name ask for.
struct CommandLine final {
    enum class Request { showPanel, showSettings, help, version, refused };

    Request request = Request::showPanel;
    QString refusedWord; ///< the first word that nobody understands

    [[nodiscard]] static CommandLine parse(const QStringList& words);

    [[nodiscard]] static QString helpText();
    [[nodiscard]] static QString versionText();
};
