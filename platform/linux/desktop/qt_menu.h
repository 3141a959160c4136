#pragma once

class QMenu;
class QMenuBar;

namespace quorvane {

class EventLoop;
class Menu;

// Fills `shown` with what `menu` holds now, in place of what it held; the default entry is bold. Where
// `events` is given, an entry that a person picks is told to the menu by it; otherwise the caller does that.
void FillMenu(QMenu& shown, Menu& menu, EventLoop* events);

// Fills a menu bar with the titles of `menu`; what hangs below a title is filled each time it is opened.
// `menu` must stay as long as the bar.
void FillMenuBar(QMenuBar& bar, Menu& menu, EventLoop& events);

// Shows the menu at the pointer, waits until it is closed, and tells it what was picked.
void ShowMenuAtPointer(Menu& menu);

} // namespace quorvane
