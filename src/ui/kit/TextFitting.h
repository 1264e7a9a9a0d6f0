#pragma once

#include <QFont>
#include <QString>

/// Cutting texts so that they fit into a number of lines.
namespace TextFitting {

/// At most so many code units of the text, from its first on, without half a surrogate pair at their end.
[[nodiscard]] QString start(const QString& text, qsizetype most);

/// The beginning of a text, at least as much of it as a panel can show, with its line breaks as U+2028. A text of any
/// length costs no more than a short one.
struct Beginning final {
    QString text;
    bool hasMore = false;
};
[[nodiscard]] Beginning beginning(const QString& text);

/// The text up to its first line break, with an ellipsis where it goes on.
[[nodiscard]] QString firstLine(const Beginning& beginning);

/// A text with a U+2028 wherever a line ends, cut with an ellipsis when it takes more lines.
struct Fitted final {
    QString text;
    bool isCut = false;
};
[[nodiscard]] Fitted fit(const Beginning& beginning, const QFont& font, qreal width, int lines);

}
