#include "app/StatusModel.h"
#include "app/VornaApp.h"
#include "daypart/DaypartController.h"
#include "platform/Desktop.h"
#include "platform/NotificationService.h"
#include "ui/menubar/MenuBarView.h"
#include "ui/menubar/PanelFrame.h"
#include "ui/menubar/PanelWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr double nanosecondsPerMillisecond = 1e6;
constexpr auto untilGivenBack = 3s;
constexpr int turnsToAFrame = 5;
constexpr int warmUps = 3;

/// Sees the panel's frame painted: it lies on top of all else, so it is painted last.
class FrameWatch final : public QObject {
public:
    FrameWatch() { qApp->installEventFilter(this); }

    /// Milliseconds from the beginning of `open` until the whole panel has reached the display.
    double timeTo(const std::function<void()>& open) {
        m_time = 0;
        m_timer.start();
        open();
        while (m_time == 0) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return static_cast<double>(m_time) / nanosecondsPerMillisecond;
    }

private:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && qobject_cast<PanelFrame*>(watched) != nullptr) {
            QCoreApplication::postEvent(this, new QEvent{QEvent::User}, Qt::HighEventPriority);
        }
        return false;
    }
    bool event(QEvent* event) override {
        if (event->type() == QEvent::User && m_time == 0) {
            QGuiApplication::sync();
            m_time = m_timer.nsecsElapsed();
        }
        return QObject::event(event);
    }

    QElapsedTimer m_timer;
    qint64 m_time = 0;
};

void waitFor(std::chrono::milliseconds time) {
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

void closePanel() {
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (auto* panel = qobject_cast<PanelWindow*>(window)) {
            panel->dismiss();
        }
    }
}

/// The first opening of this process, one right after closing, and one when the panel's memory was given back.
int openings() {
    VornaApp vorna;
    FrameWatch watch;
    const auto open = [&vorna] { vorna.showPanel(); };
    waitFor(1s);
    const double first = watch.timeTo(open);
    waitFor(1s);
    closePanel();
    waitFor(500ms);
    const double again = watch.timeTo(open);
    closePanel();
    waitFor(untilGivenBack);
    const double later = watch.timeTo(open);
    std::printf(R"({"first": %.3f, "again": %.3f, "later": %.3f})"
                "\n",
                first, again, later);
    return EXIT_SUCCESS;
}

double processorMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1000.0 + static_cast<double>(time.tv_nsec) / nanosecondsPerMillisecond;
}

void pollOnce(StatusModel& status, bool isShown) {
    QEventLoop loop;
    const auto quitWhenDone = [&status, &loop] {
        if (!status.polling) {
            loop.quit();
        }
    };
    QObject::connect(&status, &StatusModel::changed, &loop, quitWhenDone);
    status.poll();
    loop.exec();
    for (int turn = 0; turn < turnsToAFrame && isShown; ++turn) {
        QCoreApplication::processEvents();
    }
    if (isShown) {
        QGuiApplication::sync();
    }
}

/// The main thread's processor time of one poll, from the request to the painted frame; a hidden panel has none.
int polls(const QUrl& bridge, int count, bool isShown) {
    StatusModel status{NotificationService::shared(), VornaCLIRunner::run, bridge};
    auto& daypart = DaypartController::shared();
    PanelWindow panel{std::make_unique<MenuBarView>(status, daypart, NotificationService::shared(), PanelActions{}),
                      daypart, Qt::Popup, PanelWindow::PlacedBy::us, Desktop::blendsWindows};
    panel.showAt({0, 0, 1, 1});
    waitFor(1s);
    status.findChild<QTimer*>()->stop();
    if (!isShown) {
        panel.dismiss();
    }
    for (int i = 0; i < warmUps; ++i) {
        pollOnce(status, isShown);
    }
    const double before = processorMilliseconds();
    for (int i = 0; i < count; ++i) {
        pollOnce(status, isShown);
    }
    const double each = (processorMilliseconds() - before) / count;
    std::printf(R"({"milliseconds": %.4f, "online": %s})"
                "\n",
                each, status.bridgeOnline ? "true" : "false");
    return EXIT_SUCCESS;
}

}

/// panel-timings openings
/// panel-timings polls BRIDGE COUNT shown|hidden
int main(int argc, char** argv) {
    const QApplication application{argc, argv};
    QApplication::setQuitOnLastWindowClosed(false);
    const auto words = QApplication::arguments();
    if (words.value(1) == u"openings"_s) {
        return openings();
    }
    return polls(QUrl{words.value(2)}, words.value(3).toInt(), words.value(4) == u"shown"_s);
}
