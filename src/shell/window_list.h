#pragma once

class QMdiArea;
class QMenu;

/// Lists the open screens at the end of `menu` whenever it is shown, the one in front checked; choosing
/// one brings it to the front.
void ListWindowsIn(QMenu &menu, QMdiArea &area);
