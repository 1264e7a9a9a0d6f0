#pragma once

#include <QFont>
#include <QString>

/// Cutting texts so that they fit into a number of lines.
namespace TextFitting {

/// The text's first `maxLength` code units, fewer by one where a surrogate pair would be split.
[[nodiscard]] QString truncated(const QString& text, qsizetype maxLength);

/// As much of a text as a panel can show, with its line breaks as U+2028. A text of any length costs no more than a
/// short one.
struct Prepared final {
    QString text;
    bool hasMore = false;
};
[[nodiscard]] Prepared prepared(const QString& text);

/// The text up to its first line break, with an ellipsis where it goes on.
[[nodiscard]] QString firstLine(const Prepared& prepared);

/// A text with a U+2028 wherever a line ends, cut with an ellipsis when it takes more lines. No " ·" is left before
/// the ellipsis.
struct Fitted final {
    QString text;
    bool isCut = false;
};
[[nodiscard]] Fitted fit(const Prepared& prepared, const QFont& font, qreal width, int lines);

/// The place in `whole` of a place in what `fit` made of it.
[[nodiscard]] qsizetype placeInWhole(const QString& whole, const QString& fitted, qsizetype place);

}
