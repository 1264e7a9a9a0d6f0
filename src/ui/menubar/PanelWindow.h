#pragma once

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
/// area is too low for it. Main thread only.
class PanelWindow final : public View {
    Q_OBJECT

public:
    using MonotonicClock = std::function<std::chrono::steady_clock::time_point()>;

    /// Whether the desktop blends windows now, so that corners can be round.
    using Composition = std::function<bool()>;

    PanelWindow(std::unique_ptr<MenuBarView> content, DaypartController& daypart, Qt::WindowFlags flags,
                Composition isComposited, MonotonicClock clock = std::chrono::steady_clock::now);

    /// A click on the icon at `anchor`: opens the panel, or closes it. The click that has closed the panel by taking
    /// its focus away does not open it again.
    void toggle(const QRect& anchor);

    void showAt(const QRect& anchor);
    void dismiss();

signals:
    /// It is hidden now, whatever the reason.
    void closed();

protected:
    void render() override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();
    void showScrollPosition();

    DaypartController& m_daypart;
    const Composition m_isComposited;
    const MonotonicClock m_clock;
    MenuBarView* m_content;
    QScrollArea* m_scroller;
    PanelFrame* m_frame;
    QRect m_anchor;
    bool m_isDismissing = false;
    std::optional<std::chrono::steady_clock::time_point> m_taken;
};
