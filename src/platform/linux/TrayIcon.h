#pragma once

#include <QIcon>
#include <QString>

/// How a symbol looks in a tray, whose bar may be light or dark.
namespace TrayIcon {

/// The symbol in the dark tone of its state with a rim in the light one, so that one of the two stands out from any
/// bar; with a picture of its own at every size that trays ask for.
[[nodiscard]] QIcon icon(const QString& symbolName);

}
