#pragma once

#include <QIcon>

/// A symbol as an icon of a control that the style draws: in the colour of the desktop's text, whatever that becomes.
[[nodiscard]] QIcon symbolIcon(const QString& name);
