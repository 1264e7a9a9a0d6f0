#pragma once

#include "Doubles.h"

#include <QCoreApplication>
#include <QList>

/// What happens, and what the system must have been told by then and the case itself has seen, in order.
struct Case {
    const char* behaviour = "";
    std::function<void()> happens;
    const char* seen = "";
};

extern const QList<Case> desktopCases;
extern const QList<Case> menuBarCases;
extern const QList<Case> notificationCases;
extern const QList<Case> statusItemCases;
extern const QList<Case> symbolCases;
extern const QList<Case> systemCases;

/// The event loop goes on.
inline void turn() {
    QCoreApplication::processEvents();
}
