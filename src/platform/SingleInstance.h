#pragma once

#include <QObject>
#include <QString>

#include <memory>

/// Keeps the companion to one process per user and desktop session. Main thread only.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    /// Becomes the one instance, or hands `message` to the one that runs already and returns nothing. Waits for that
    /// one at most a second; where the platform offers no way to find it, this process is the one.
    [[nodiscard]] static std::unique_ptr<SingleInstance> claim(const QString& message);

signals:
    /// A later start of the program said this, at most 64 characters.
    void messageReceived(const QString& message);
};
