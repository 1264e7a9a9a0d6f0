#pragma once

#include <QObject>

/// An object whose published state others watch. Every write to one of its `Published` members announces itself here
/// first; who listens reads the state in a later turn of the event loop. Main thread only.
class ObservableObject : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

signals:
    /// Emitted before each write to a published member, also when the new value equals the old.
    void objectWillChange();
};
