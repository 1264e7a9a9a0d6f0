#include "support/ObservableObject.h"

#include "moc_ObservableObject.cpp"
