// An item in the tray and nothing else, told what to show by lines on its standard input:
// "symbol NAME MEANING…", "anchor", "compositing", "front", "settle", "quit". It prints a line for each thing that
// happens.

#include "platform/Desktop.h"
#include "platform/StatusItem.h"

#include <QApplication>
#include <QKeyEvent>
#include <QSocketNotifier>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <chrono>
#include <iostream>
#include <string>

using namespace Qt::StringLiterals;

namespace {

/// Qt closes whatever popup is open 100 ms after it has heard that one lost the keyboard.
constexpr auto settling = std::chrono::milliseconds{150};

void say(const QString& line) {
    std::cout << line.toStdString() << std::endl;
}

/// A window such as the settings have, in front and with the keyboard.
void showWindow() {
    static QWidget window;
    window.resize(200, 120);
    window.show();
    Desktop::bringToFront(*window.windowHandle());
}

/// A window with the flags of the panel, closed by Escape and by whatever those flags bring.
class Popup final : public QWidget {
public:
    Popup()
        : QWidget{nullptr, Desktop::panelFlags()} {
        setGeometry(400, 300, 200, 120);
    }

protected:
    void showEvent(QShowEvent*) override { say(u"popup shown"_s); }
    void hideEvent(QHideEvent*) override { say(u"popup hidden"_s); }
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Escape) {
            hide();
        } else {
            say(u"popup key "_s + event->text());
        }
    }
};

void obey(StatusItem& item, const QString& line) {
    if (line.startsWith(u"symbol "_s)) {
        item.setSymbol(line.section(u' ', 1, 1), line.section(u' ', 2));
    } else if (line == u"anchor"_s) {
        const QRect place = item.anchor();
        say(u"anchor %1 %2 %3 %4"_s.arg(place.x()).arg(place.y()).arg(place.width()).arg(place.height()));
    } else if (line == u"compositing"_s) {
        say(u"compositing "_s + (Desktop::blendsWindows() ? u"on"_s : u"off"_s));
    } else if (line == u"front"_s) {
        showWindow();
    } else if (line == u"quit"_s) {
        QCoreApplication::quit();
        return;
    }
    if (line == u"settle"_s) {
        QTimer::singleShot(settling, [line] { say(u"done "_s + line); });
        return;
    }
    say(u"done "_s + line);
}

}

int main(int argc, char** argv) {
    QApplication application{argc, argv};
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationName(u"vorna"_s);
    const auto item = StatusItem::create(u"vorna"_s);
    item->setSymbol(u"antenna.radiowaves.left.and.right.slash"_s, u"bridge offline"_s);
    QObject::connect(item.get(), &StatusItem::clicked, &application, [] { say(u"clicked"_s); });
    QObject::connect(item.get(), &StatusItem::showPanelChosen, &application, [] { say(u"show panel"_s); });
    QObject::connect(item.get(), &StatusItem::settingsChosen, &application, [] { say(u"settings"_s); });
    QObject::connect(item.get(), &StatusItem::quitChosen, &application, &QCoreApplication::quit);

    Popup popup;
    QObject::connect(item.get(), &StatusItem::clicked, &popup, &QWidget::show);
    QObject::connect(item.get(), &StatusItem::showPanelChosen, &popup, &QWidget::show);

    QSocketNotifier commands{0, QSocketNotifier::Read};
    QObject::connect(&commands, &QSocketNotifier::activated, &application, [&] {
        if (std::string line; std::getline(std::cin, line)) {
            obey(*item, QString::fromStdString(line));
        } else {
            commands.setEnabled(false);
        }
    });
    say(u"ready"_s);
    return QApplication::exec();
}
