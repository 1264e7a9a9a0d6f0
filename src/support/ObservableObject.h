#pragma once

#include <QObject>

/// An object whose published state others watch, through its `Published` members. Main thread only.
class ObservableObject : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Announces a write that comes next.
    void announceChange();

signals:
    /// Emitted before each write to a published member, also when the new value equals the old.
    void objectWillChange();

    /// Emitted once after all writes of one turn of the event loop, in the next turn.
    void changed();

private:
    bool m_isScheduled = false;
};
