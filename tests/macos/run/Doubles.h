#pragma once

#include <QDebug>
#include <QRectF>
#include <QString>
#include <QVariant>

#include <functional>
#include <optional>

/// Stand-ins for the Mac's frameworks when the real files of src/platform/macos run elsewhere: what they answer, and a
/// record of what they are told. Main thread only, unless said otherwise.
namespace Doubles {

enum class Program { none, own, other };

/// What the system answers.
struct World {
    std::optional<QString> bundle = QStringLiteral("test.bundle");
    bool bundleIsKnown = true; ///< to the system
    QVariantMap information;   ///< of the bundle: texts and numbers
    bool isTrusted = false;

    bool grantsNotifications = true;
    long authorizationStatus = 0;
    bool answersLater = false; ///< in answerAll()

    QString platform = QStringLiteral("offscreen"); ///< what Qt draws by
    bool hasLaunched = false;
    bool isActive = false;
    bool grantsActivation = true;
    Program inFront = Program::other;
    bool otherAccepts = true; ///< the keyboard, when it is given to it
    bool otherRuns = false;   ///< which is another of this bundle
    bool otherHasLaunched = true;

    std::optional<long> event; ///< its type
    quint64 modifiers = 0;
    bool clickOpensMenu = true;
    QString chosen; ///< this entry is chosen as soon as the menu opens
    bool itemHasWindow = true;
    QPointF itemWindow{500, 776};

    QSizeF symbolSize{16, 16};
    QString fontFile; ///< where the system keeps the font of each design; empty where it has none
};

World& world();

/// Adds to the record, and marks what happens on another thread than the main one.
void tell(const QString& what);

template <typename Value>
void tell(const Value& value) {
    QString text;
    QDebug{&text}.nospace().noquote() << value;
    tell(text);
}

/// The record since the last call, in order.
QString told();

/// Forgets everything, as before the first test.
void reset();

/// Lets the system answer what it was asked, on a thread of its own, and waits for that thread.
void answerAll();

/// Asks the notification center's delegate what is presented while the application is in front.
void presentNotification();

/// The user presses the item's button; an event of this mask happens in another program.
void pressButton();
void happensElsewhere(quint64 event);

/// The application starts up; the user opens it again.
void finishLaunching();
void reopen();

/// What the user's defaults hold under a key, of which kind.
QString stored(const QString& key);
void clearStored(const QStringList& keys);

}
