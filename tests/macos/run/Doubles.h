#pragma once

#include <QHash>
#include <QList>
#include <QRectF>
#include <QString>

#include <functional>
#include <optional>

/// What stands in for the Mac's frameworks when the real files of src/platform/macos run elsewhere: what they were
/// told, and what they answer. Main thread only, unless said otherwise.
namespace Doubles {

struct PostedRequest {
    QString identifier;
    QString title;
    QString subtitle;
    QString body;
    bool hasDefaultSound = false;
    bool hasTrigger = true;
    bool hasBadge = true;
};

struct Button {
    QString title;
    QString toolTip;
    QString accessibilityLabel;
    QString accessibilityValue;
    QString imageName; ///< empty for none
    QString imageDescription;
    bool imageIsTemplate = false;
    bool showsImage = false;
    bool showsTitle = false;
    bool hasTarget = false;
    bool isHighlighted = false;
    quint64 actionMask = 0;
    QStringList menus;    ///< the entries of each menu that a click by the program has opened
    QStringList poppedUp; ///< the same of what was opened without a click
};

enum class Program { none, own, other };

struct State {
    // The bundle
    std::optional<QString> bundleIdentifier = QStringLiteral("test.bundle");
    bool bundleIsUnknown = false; ///< to the system
    QHash<QString, QString> information;
    QString keyWithNumber; ///< this key of the information holds a number

    // Notifications
    quint64 authorizationOptions = 0;
    bool grants = true;
    bool fails = false;
    bool holdsAnswers = false; ///< until answerAll()
    long authorizationStatus = 0;
    QList<PostedRequest> requests;
    int centersAskedFor = 0;

    // The application and its workspace
    QString platform = QStringLiteral("offscreen"); ///< what Qt draws by
    long activationPolicy = -1;
    bool hasFinishedLaunching = false;
    int activations = 0;
    bool grantsActivation = true;
    int requestsToActivate = 0;
    int ordersToTheFront = 0;
    bool isActive = false;
    bool isHidden = false;
    Program inFront = Program::other;
    Program yieldedTo = Program::none;
    QList<quint64> otherActivations; ///< with these options
    bool otherAccepts = true;
    bool otherInstanceRuns = false;
    bool otherHasFinishedLaunching = true;
    QStringList openedApplications;
    quint64 windowBehavior = 0;
    bool nativeWindowWasVisible = false; ///< when it was last asked for
    QStringList openedUrls;
    bool isTrusted = false;

    // Processes
    QList<int> inheritedDescriptors;

    // Memory
    std::optional<quint64> reliefGoal; ///< what was asked of all zones at once

    // The item in the menu bar
    Button button;
    double itemLength = 0;
    int items = 0;
    int imagesMade = 0;
    std::optional<long> currentEvent; ///< its type
    quint64 currentModifiers = 0;
    bool clickOpensMenu = true;
    QString chosen; ///< this entry is chosen as soon as the menu opens
    bool hasWindow = true;
    QRectF buttonInWindow{3, 0, 30, 24};
    QPointF windowOnScreen{500, 776};

    // Symbols
    double symbolPointSize = 0;
    double symbolWeight = 0;
    QSizeF symbolSize{16, 16};
    int openGraphicsStates = 0;
    int flushes = 0;

    // Fonts
    QStringList fontDesigns; ///< that were asked for
    QString fontFile;        ///< where the system keeps each of them; empty where it has none
};

State& state();

/// Forgets everything, as before the first test.
void reset();

/// Lets the notification center answer what it was asked, on a thread of its own, and waits for that thread.
void answerAll();

/// What the center's delegate wants to be presented while the application is in front; nothing when it has none.
std::optional<quint64> presentation();

/// The user presses the item's button, or chooses an entry of its menu.
void pressButton();
void choose(const QString& entry);

/// An event of this mask happens in another program; what is watched there.
void happensElsewhere(quint64 event);
QList<quint64> monitoredEvents();

/// The application starts up; the user opens it again.
void finishLaunching();
void reopen();
[[nodiscard]] bool handlesReopening();

/// What the user's defaults hold under a key; nothing where there is no such key.
std::optional<QString> storedText(const QString& key);
std::optional<bool> storedTruth(const QString& key);
void storeNumber(const QString& key, int number);
void clearStored(const QStringList& keys);

}
