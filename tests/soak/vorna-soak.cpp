// The companion with a poll interval of its own, given in milliseconds, and told what to do by lines on its standard
// input: "press LABEL" presses a button that is on the screen, "heap" gives unused memory back and prints the bytes in
// use. It answers each line with one that begins with "done".

#include "app/VornaApp.h"

#include <QAbstractButton>
#include <QApplication>
#include <QSocketNotifier>

#include <chrono>
#include <functional>
#include <iostream>
#include <string>

#include <malloc.h>

using namespace Qt::StringLiterals;

namespace {

void say(const QString& line) {
    std::cout << line.toStdString() << std::endl;
}

/// Presses a button that is on the screen; whether there was one.
bool press(const QString& label) {
    for (QWidget* const widget : QApplication::allWidgets()) {
        auto* const button = qobject_cast<QAbstractButton*>(widget);
        if (button && button->isVisible() && button->isEnabled() && button->accessibleName() == label) {
            button->click();
            return true;
        }
    }
    return false;
}

void obey(const QString& line) {
    if (line.startsWith(u"press "_s) && !press(line.sliced(6))) {
        say(u"no button "_s + line.sliced(6));
    } else if (line == u"heap"_s) {
        malloc_trim(0);
        const auto heap = mallinfo2();
        say(u"heap %1"_s.arg(heap.uordblks + heap.hblkhd));
    }
    say(u"done "_s + line);
}

}

int main(int argc, char** argv) {
    QApplication application{argc, argv};
    QApplication::setApplicationName(u"vorna"_s);
    QApplication::setDesktopFileName(u"vorna-companion"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    const std::chrono::milliseconds pollInterval{QApplication::arguments().value(1).toInt()};
    VornaParts parts;
    parts.ticker = [pollInterval](QObject& owner, std::chrono::milliseconds, const std::function<void()>& tick) {
        timerTicker(owner, pollInterval, tick);
    };
    VornaApp vorna{parts};

    QSocketNotifier commands{0, QSocketNotifier::Read};
    QObject::connect(&commands, &QSocketNotifier::activated, &application, [&] {
        if (std::string line; std::getline(std::cin, line)) {
            obey(QString::fromStdString(line));
        } else {
            commands.setEnabled(false);
        }
    });
    say(u"ready"_s);
    return QApplication::exec();
}
