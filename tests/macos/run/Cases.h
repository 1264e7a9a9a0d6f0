#pragma once

#include "Doubles.h"

#include <QHash>
#include <QList>

/// What happens, step by step, and what the system must have been told by then and the steps have seen, in order.
struct Case {
    const char* behaviour = "";
    const char* happens = "";
    const char* seen = "";
};

/// The cases of one part of the platform, and what can happen there: the first word of a step names it, the rest is
/// what it is given. TestMac.cpp has the steps that are the same everywhere.
struct Area {
    const char* name = "";
    QHash<QString, std::function<void(const QString&)>> steps;
    QList<Case> cases;
    std::function<void()> begin = [] {};
    std::function<void()> end = [] {};
};

const Area& desktopArea();
const Area& menuBarArea();
const Area& notificationArea();
const Area& statusItemArea();
const Area& symbolArea();
const Area& systemArea();

/// The numbers of a step.
inline QList<double> numbers(const QString& words) {
    QList<double> all;
    for (const QString& word : words.split(QChar{u' '})) {
        all.append(word.toDouble());
    }
    return all;
}
