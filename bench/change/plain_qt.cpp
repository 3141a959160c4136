// plain_qt IN OUT.bmp WIDTH HEIGHT: the change as a plain Qt program makes it, a reader with a scaled size
// and a painter.
#include <QImageReader>
#include <QLinearGradient>
#include <QPainter>

int main(int argc, char** argv) {
    if (argc != 5) return 2;
    const QSize screen(QString(argv[3]).toInt() + 4, QString(argv[4]).toInt() + 4);
    QImage canvas(screen, QImage::Format_RGB32);
    QLinearGradient gradient(0, 0, 0, screen.height());
    gradient.setColorAt(0, Qt::blue);
    gradient.setColorAt(1, Qt::red);
    QImageReader reader(argv[1]);
    const QSize size = reader.size().scaled(screen, Qt::KeepAspectRatio);
    reader.setScaledSize(size);
    QPainter painter(&canvas);
    painter.fillRect(canvas.rect(), gradient);
    painter.drawImage((screen.width() - size.width()) / 2, (screen.height() - size.height()) / 2,
                      reader.read());
    painter.end();
    return canvas.save(argv[2], "bmp") ? 0 : 1;
}
