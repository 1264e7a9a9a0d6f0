#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

/// How a symbol looks in a tray, whose bar may be light or dark.
namespace TrayIcon {

/// A flat mid-tone that stands out from white as well as from black.
[[nodiscard]] QColor colour(const QString& symbolName);

/// The symbol in its colour, with a picture of its own at every size that trays ask for.
[[nodiscard]] QIcon icon(const QString& symbolName);

}
