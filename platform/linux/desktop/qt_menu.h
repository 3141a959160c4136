#pragma once

class QMenu;
class QMenuBar;
class QPoint;

namespace quorvane {

class EventLoop;
class Menu;
struct MenuItem;
struct ShownMenu;

// Fills `shown` with the entries of `menu`, in place of what it held; the default entry is bold. What a
// person picks is done under `events`.
void FillMenu(QMenu& shown, const ShownMenu& menu, EventLoop& events);

// Fills a menu bar with the titles of `menu`, which is opened each time one of them is. It must stay as long
// as the bar.
void FillMenuBar(QMenuBar& bar, Menu& menu, EventLoop& events);

// Shows a menu at a place of the screen, waits until it is closed, and answers the entry of `menu` that was
// picked; null for none.
const MenuItem* AskMenu(const ShownMenu& menu, const QPoint& at);

} // namespace quorvane
