#include "platform/linux/desktop/icon.h"

#include <QFile>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

// A resource of a static library is linked only where it is named, which must be outside of any namespace.
static void UseResource() {
    Q_INIT_RESOURCE(quorvane);
}

namespace quorvane {

QIcon ProgramIcon() {
    UseResource();
    QSvgRenderer artwork(QStringLiteral(":/quorvane/quorvane.svg"));
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        artwork.render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace quorvane
