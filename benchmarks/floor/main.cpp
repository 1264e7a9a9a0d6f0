#include "floor/FloorWindow.h"

#include <QApplication>

using namespace Qt::StringLiterals;

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const FloorWindow window{QUrl(u"http://127.0.0.1:43105"_s)};
    return QApplication::exec();
}
