#include "app/CommandLine.h"
#include "app/VornaApp.h"
#include "platform/Desktop.h"
#include "platform/SingleInstance.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

using Request = CommandLine::Request;

constexpr auto settingsMessage = "settings"_L1;
constexpr auto panelMessage = "panel"_L1;
constexpr int usageError = 2;

void print(FILE* stream, const QString& text) {
    std::fputs(text.toLocal8Bit().constData(), stream);
}

/// Where Qt finds no display it ends the process with a core dump; a sentence and a status are enough.
void endWithoutDump(QtMsgType type, const QMessageLogContext&, const QString& message) {
    print(stderr, message + u'\n');
    if (type == QtFatalMsg) {
        std::_Exit(EXIT_FAILURE);
    }
}

QStringList wordsOf(int argc, char** argv) {
    QStringList words;
    for (int i = 0; i < argc; ++i) {
        words.append(QString::fromLocal8Bit(argv[i]));
    }
    return words;
}

/// Answers what needs no display; nothing when the companion is to be started.
std::optional<int> answerInTerminal(int argc, char** argv, const CommandLine& line) {
    switch (line.request) {
    case Request::help: {
        const QCoreApplication application{argc, argv}; // the text begins with the program's name
        print(stdout, CommandLine::helpText());
        return EXIT_SUCCESS;
    }
    case Request::version:
        print(stdout, CommandLine::versionText());
        return EXIT_SUCCESS;
    case Request::refused:
        print(stderr, u"vorna-companion: %1 Try --help.\n"_s.arg(line.error));
        return usageError;
    default:
        return std::nullopt;
    }
}

int run(QApplication& application, bool wantsSettings) {
    const auto instance = SingleInstance::claim(wantsSettings ? settingsMessage : panelMessage);
    if (!instance) {
        return EXIT_SUCCESS;
    }
    VornaApp vorna;
    QObject::connect(instance.get(), &SingleInstance::messageReceived, &vorna, [&vorna](const QString& message) {
        message == settingsMessage ? vorna.showSettings() : vorna.showPanel();
    });
    if (wantsSettings) {
        vorna.showSettings();
    }
    return application.exec();
}

}

int main(int argc, char** argv) {
    const auto line = CommandLine::parse(wordsOf(argc, argv));
    if (const auto status = answerInTerminal(argc, argv, line)) {
        return *status;
    }
    Desktop::prepareLaunch();
    const auto usualHandler = qInstallMessageHandler(endWithoutDump);
    QApplication application{argc, argv};
    qInstallMessageHandler(usualHandler);
    QApplication::setApplicationName(u"vorna"_s);
    QApplication::setDesktopFileName(u"vorna-companion"_s);
    return run(application, line.request == Request::showSettings);
}
