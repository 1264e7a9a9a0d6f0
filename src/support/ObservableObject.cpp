#include "support/ObservableObject.h"

#include <utility>

void ObservableObject::announceChange() {
    emit objectWillChange();
    if (!std::exchange(m_isScheduled, true)) {
        QMetaObject::invokeMethod(
            this,
            [this] {
                m_isScheduled = false;
                emit changed();
            },
            Qt::QueuedConnection);
    }
}

#include "moc_ObservableObject.cpp"
