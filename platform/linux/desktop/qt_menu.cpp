#include "platform/linux/desktop/qt_menu.h"

#include "platform/event_loop.h"
#include "platform/forms/menu.h"

#include <QAction>
#include <QCursor>
#include <QIcon>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <map>

namespace quorvane {

namespace {

// The colour of the upper left pixel is transparent.
QIcon ToIcon(Surface& bitmap) {
    const PixelView view = bitmap.Pixels();
    QImage image(view.size.width, view.size.height, QImage::Format_ARGB32);
    const std::uint8_t* first = view.Row(0);
    const QRgb behind = qRgb(first[2], first[1], first[0]);
    for (int y = 0; y < view.size.height; ++y) {
        const std::uint8_t* from = view.Row(y);
        for (int x = 0; x < view.size.width; ++x, from += 3) {
            const QRgb pixel = qRgb(from[2], from[1], from[0]);
            image.setPixel(x, y, pixel == behind ? 0 : pixel);
        }
    }
    return QIcon(QPixmap::fromImage(image));
}

using Entries = std::map<QAction*, MenuItem*>;

void AddEntries(QMenu& shown, std::deque<MenuItem>& items, EventLoop* events, Entries& entries) {
    for (MenuItem& item : items) {
        if (!item.visible) continue;
        if (item.IsSeparator()) {
            shown.addSeparator();
            continue;
        }
        const QString caption = QString::fromStdString(item.caption.Text());
        QAction* action = nullptr;
        if (item.items.empty()) {
            action = shown.addAction(caption);
        } else {
            QMenu* below = shown.addMenu(caption);
            AddEntries(*below, item.items, events, entries);
            action = below->menuAction();
        }
        action->setEnabled(item.enabled);
        action->setCheckable(item.checked);
        action->setChecked(item.checked);
        if (item.bitmap) action->setIcon(ToIcon(*item.bitmap));
        entries[action] = &item;
        if (events && item.items.empty()) {
            // The menu may be filled anew while this one is open: the entry is kept as it was shown.
            QObject::connect(action, &QAction::triggered, [events, chosen = item]() mutable {
                events->Deliver([&chosen] { Menu::Choose(chosen); });
            });
        }
    }
}

Entries Fill(QMenu& shown, Menu& menu, EventLoop* events) {
    menu.Open();
    shown.clear();
    Entries entries;
    AddEntries(shown, menu.Items(), events, entries);
    const int byDefault = menu.DefaultItem();
    if (byDefault >= 0 && byDefault < static_cast<int>(menu.Items().size())) {
        const MenuItem* item = &menu.Items()[static_cast<std::size_t>(byDefault)];
        for (const auto& [action, entry] : entries) {
            if (entry == item) shown.setDefaultAction(action);
        }
    }
    return entries;
}

} // namespace

void FillMenu(QMenu& shown, Menu& menu, EventLoop* events) {
    Fill(shown, menu, events);
}

void FillMenuBar(QMenuBar& bar, Menu& menu, EventLoop& events) {
    bar.clear();
    for (std::size_t i = 0; i < menu.Items().size(); ++i) {
        const MenuItem& title = menu.Items()[i];
        if (!title.visible) continue;
        QMenu* below = bar.addMenu(QString::fromStdString(title.caption.Text()));
        below->setEnabled(title.enabled);
        const auto fill = [below, i, &menu, &events] {
            events.Deliver([&menu] { menu.Open(); });
            below->clear();
            Entries entries;
            if (i < menu.Items().size()) AddEntries(*below, menu.Items()[i].items, &events, entries);
        };
        QObject::connect(below, &QMenu::aboutToShow, below, fill);
    }
}

void ShowMenuAtPointer(Menu& menu) {
    QMenu shown;
    const Entries entries = Fill(shown, menu, nullptr);
    // Where no window can be placed (Wayland) it is one of its own: with one size alone it is not tiled.
    shown.setFixedSize(shown.sizeHint());
    const auto chosen = entries.find(shown.exec(QCursor::pos()));
    if (chosen != entries.end()) Menu::Choose(*chosen->second);
}

} // namespace quorvane
