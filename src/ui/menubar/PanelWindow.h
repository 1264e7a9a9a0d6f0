#pragma once

#include "support/Ticker.h"
#include "ui/DaypartColours.h"
#include "ui/kit/View.h"

#include <QRect>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class DaypartController;
class MenuBarView;
class PanelFrame;
class QScreen;
class QScrollArea;

/// The panel as a window: opens at its icon, inside the work area of the icon's screen, and goes away on Escape, on a
/// click elsewhere and on a second click on the icon. It grows and shrinks with its content and scrolls where the work
/// area is too low for it. A work area that changes meanwhile is followed. Main thread only.
///
/// A desktop that puts it elsewhere gets a column as high as the lowest screen, with the panel at its top and nothing
/// below, so that a panel that grows stays on the screen.
class PanelWindow final : public View {
    Q_OBJECT

public:
    using MonotonicClock = std::function<std::chrono::steady_clock::time_point()>;

    /// Whether the desktop blends windows now, so that corners can be round.
    using Composition = std::function<bool()>;

    enum class PlacedBy { us, desktop };

    PanelWindow(std::unique_ptr<MenuBarView> content, DaypartController& daypart, Qt::WindowFlags flags,
                PlacedBy placedBy, Composition isComposited, MonotonicClock clock = std::chrono::steady_clock::now,
                Delay delay = timerDelay);

    /// A click on the icon at `anchor`: opens the panel, or closes it. The click that has closed the panel by taking
    /// its focus away does not open it again.
    void toggle(const QRect& anchor);

    void showAt(const QRect& anchor);

    /// Lays out and draws what nobody sees, so that the first opening of a process finds its fonts and glyphs at hand.
    void drawUnseen();

    void dismiss();

signals:
    /// It is hidden now, whatever the reason.
    void closed();

    /// It was closed on the user's word, by Escape or a second click on the icon, and not by a turn to something else.
    void dismissedByUser();

protected:
    void render() override;
    bool event(QEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void followScreens();
    void fit();
    void fitColumn();
    void layOut();
    void dismissForUser();
    void focusLost();
    void fitAgain();
    void showScrollPosition();

    const DaypartColours m_colours;
    const PlacedBy m_placedBy;
    const Composition m_isComposited;
    const MonotonicClock m_clock;
    const Delay m_delay;
    MenuBarView* m_content;
    QScrollArea* m_scroller;
    PanelFrame* m_frame;
    QRect m_anchor;
    int m_panelHeight = 0;
    int m_focusChanges = 0; ///< and closings: what waits for none of them to come counts them
    bool m_pointerHasCome = false;
    bool m_isDismissing = false;
    std::optional<std::chrono::steady_clock::time_point> m_closedByOthersAt;
};
