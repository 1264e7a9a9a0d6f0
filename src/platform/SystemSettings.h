#pragma once

#include <QUrl>

#include <optional>

/// The panes of the desktop's own settings program.
namespace SystemSettings {

enum class Pane { notifications, accessibility, automation, fullDiskAccess, developerTools };

/// The link to a pane; nothing where the running desktop has none.
[[nodiscard]] std::optional<QUrl> link(Pane pane);

/// Opens a link made by `link()`. Returns at once; a settings program that does not start is not reported.
void open(const QUrl& link);

}
