#pragma once

/// Tab bars as assistive programs see them: a list of tabs with one of them selected, each of which can be pressed.
/// What the toolkit itself tells lacks the selection.
namespace TabListAccessible {

/// Answers for every tab bar from now on.
void install();

}
