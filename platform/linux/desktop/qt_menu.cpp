#include "platform/linux/desktop/qt_menu.h"

#include "platform/event_loop.h"
#include "platform/forms/menu.h"

#include <QAction>
#include <QApplication>
#include <QIcon>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QPointer>
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

using Entries = std::map<QAction*, const MenuItem*>;

void AddEntries(QMenu& shown, const std::deque<MenuItem>& items, EventLoop* events, Entries& entries) {
    for (const MenuItem& item : items) {
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
            below->setLayoutDirection(shown.layoutDirection());
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
            QObject::connect(action, &QAction::triggered, [events, chosen = item] {
                events->Deliver([&chosen] { Menu::Choose(chosen); });
            });
        }
    }
}

Entries Fill(QMenu& shown, const ShownMenu& menu, EventLoop* events) {
    shown.clear();
    const Qt::LayoutDirection direction = menu.rightToLeft ? Qt::RightToLeft : Qt::LeftToRight;
    shown.setLayoutDirection(direction);
    // The style aligns the words of entries by the whole application's direction.
    if (QApplication::layoutDirection() != direction) QApplication::setLayoutDirection(direction);
    Entries entries;
    AddEntries(shown, menu.items, events, entries);
    if (menu.defaultItem >= 0 && menu.defaultItem < static_cast<int>(menu.items.size())) {
        const MenuItem* item = &menu.items[static_cast<std::size_t>(menu.defaultItem)];
        for (const auto& [action, entry] : entries) {
            if (entry == item) shown.setDefaultAction(action);
        }
    }
    return entries;
}

} // namespace

void FillMenu(QMenu& shown, const ShownMenu& menu, EventLoop& events) {
    Fill(shown, menu, &events);
}

// What hangs below a title that goes may be open at this moment.
void FillMenuBar(QMenuBar& bar, Menu& menu, EventLoop& events) {
    for (QAction* title : bar.actions()) {
        if (QMenu* below = title->menu()) below->deleteLater();
    }
    bar.clear();
    const ShownMenu titles = menu.Entries();
    for (std::size_t i = 0; i < titles.items.size(); ++i) {
        const MenuItem& title = titles.items[i];
        if (!title.visible) continue;
        QMenu* below = bar.addMenu(QString::fromStdString(title.caption.Text()));
        below->setEnabled(title.enabled);
        below->setLayoutDirection(bar.layoutDirection());
        QObject::connect(below, &QMenu::aboutToShow, below, [below, i, &menu, &events] {
            events.Deliver([below = QPointer(below), i, &menu, &events] {
                const ShownMenu opened = menu.Open();
                if (!below) return;
                below->clear();
                Entries entries;
                if (i < opened.items.size()) AddEntries(*below, opened.items[i].items, &events, entries);
            });
        });
    }
}

const MenuItem* AskMenu(const ShownMenu& menu, const QPoint& at) {
    QMenu shown;
    const Entries entries = Fill(shown, menu, nullptr);
    // Where no window can be placed (Wayland) it is one of its own: with one size alone it is not tiled.
    shown.setFixedSize(shown.sizeHint());
    const auto chosen = entries.find(shown.exec(at));
    return chosen == entries.end() ? nullptr : chosen->second;
}

} // namespace quorvane
