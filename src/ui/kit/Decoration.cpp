#include "ui/kit/Decoration.h"

Decoration::Decoration(QWidget* parent)
    : QWidget{parent} {}

#include "moc_Decoration.cpp"
