#pragma once

/// Whether windows are blended with what is behind them, so that a rounded corner can be transparent.
namespace Compositing {

/// Asks the desktop each time; it can change while the program runs. Main thread only.
[[nodiscard]] bool isActive();

}
