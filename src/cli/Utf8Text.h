#pragma once

#include <QString>

#include <optional>
#include <string_view>

/// The text that these bytes are, whole and unchanged; nothing when they are not UTF-8 throughout. For any thread.
[[nodiscard]] std::optional<QString> utf8Text(std::string_view bytes);
