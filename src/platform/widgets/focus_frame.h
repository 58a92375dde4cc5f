#pragma once

/// A frame around the control that takes the keys, for those that do not show it by themselves: grids,
/// texts that can only be read, and the button that Enter presses, which looks the same at all times.
/// It lies over the edge of the control and lets the mouse through.

class QWidget;

/// Frames what takes the keys within `window` - a window or a part of one - as long as that lives.
void FrameFocusIn(QWidget &window);
