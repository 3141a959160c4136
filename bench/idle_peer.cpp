// What bench/idle.sh measures the program beside: a tray icon and one timer a second.

#include <QApplication>
#include <QPixmap>
#include <QSystemTrayIcon>
#include <QTimer>

int main(int argumentCount, char** arguments) {
    QApplication application(argumentCount, arguments);
    QPixmap picture(32, 32);
    picture.fill(Qt::red);
    QSystemTrayIcon icon{QIcon(picture)};
    icon.show();
    QTimer timer;
    int seconds = 0;
    QObject::connect(&timer, &QTimer::timeout, [&seconds] { ++seconds; });
    timer.start(1000);
    return QApplication::exec();
}
