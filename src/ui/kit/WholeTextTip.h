#pragma once

#include <QString>

class QHelpEvent;
class QWidget;

/// The tool tip of a text that had to be cut.
namespace WholeTextTip {

/// Shows the text where the event asks for it, as plain text in lines that fit on a screen; of a very long text only
/// its start, with an ellipsis. It is not the widget's tool tip property: that would be read out beside the text
/// itself.
void show(const QHelpEvent& event, const QString& text, QWidget& widget);

}
