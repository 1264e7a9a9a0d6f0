#pragma once

#include <QString>
#include <QUrl>

#include <functional>

/// Pages of the platform's web apps.
namespace WebPage {

using Opener = std::function<void(const QUrl&)>;

/// Hands the address to the opener; does nothing with a text that is not one.
void open(const QString& address, const Opener& opener);

}
