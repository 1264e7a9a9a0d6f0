#pragma once

#include <QString>
#include <QStringList>

/// What the words of a command line ask for. Only the help's text needs an application object.
struct CommandLine final {
    enum class Request { showPanel, showSettings, help, version, refused };

    Request request = Request::showPanel;
    QString error; ///< why it was refused, as a sentence

    /// `words` begins with the program's name. Qt's own options are allowed.
    [[nodiscard]] static CommandLine parse(const QStringList& words);

    [[nodiscard]] static QString helpText();
    [[nodiscard]] static QString versionText();
};
