// Claims to be the only instance and says on its standard output whether it is, and what later starts tell it.

#include "platform/SingleInstance.h"

#include <QCoreApplication>

#include <iostream>

int main(int argc, char** argv) {
    QCoreApplication application{argc, argv};
    const auto instance = SingleInstance::claim(QString::fromUtf8(argc > 1 ? argv[1] : "show"));
    if (!instance) {
        std::cout << "second" << std::endl;
        return 0;
    }
    QObject::connect(instance.get(), &SingleInstance::messageReceived, &application,
                     [](const QString& message) { std::cout << "heard " << message.toStdString() << std::endl; });
    std::cout << "first" << std::endl;
    return QCoreApplication::exec();
}
