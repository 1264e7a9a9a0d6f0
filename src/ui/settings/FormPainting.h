#pragma once

#include <QRectF>

class QAbstractButton;
class QPainter;
class QWidget;

/// What the buttons of a form have in common.
namespace FormPainting {

/// A rounded tint while the pointer is on the button or presses it.
void paintHighlight(QPainter& painter, const QAbstractButton& button, const QRectF& area);

/// A ring while the widget has the keyboard, once the keyboard is what the user moves about with.
void paintFocusRing(QPainter& painter, const QWidget& widget, const QRectF& area);

}
