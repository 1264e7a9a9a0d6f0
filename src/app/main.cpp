#include "app/CommandLine.h"
#include "app/VornaApp.h"
#include "platform/Desktop.h"
#include "platform/SingleInstance.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>

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

bool answerInTerminal(const QStringList& words) {
    switch (CommandLine::parse(words).request) {
    case Request::help:
        print(stdout, CommandLine::helpText());
        return true;
    case Request::version:
        print(stdout, CommandLine::versionText());
        return true;
    default:
        return false;
    }
}

QStringList wordsOf(int argc, char** argv) {
    QStringList words;
    for (int i = 1; i < argc; ++i) {
        words.append(QString::fromLocal8Bit(argv[i]));
    }
    return words;
}

int run(QApplication& application, const CommandLine& line) {
    const bool wantsSettings = line.request == Request::showSettings;
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
    if (answerInTerminal(wordsOf(argc, argv))) {
        return EXIT_SUCCESS;
    }
    Desktop::prepareLaunch();
    const auto usualHandler = qInstallMessageHandler(endWithoutDump);
    QApplication application{argc, argv};
    qInstallMessageHandler(usualHandler);
    QApplication::setApplicationName(u"vorna"_s);
    QApplication::setDesktopFileName(u"vorna-companion"_s);
    QApplication::setQuitOnLastWindowClosed(false);

    const auto line = CommandLine::parse(QApplication::arguments().mid(1));
    if (line.request == Request::refused) {
        print(stderr, u"vorna-companion: “%1” is not an option. Try --help.\n"_s.arg(line.refusedWord));
        return usageError;
    }
    return run(application, line);
}
