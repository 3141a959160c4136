#pragma once

#include <QString>
#include <QtGlobal>

#include <cstdio>

namespace quorvane {

// While one lives, Qt keeps its complaints to itself: why a picture
// cannot be drawn is told once, by whoever wanted it drawn. What ends the process is still said.
class QuietQt {
  public:
    QuietQt()
        : before_(
              qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& message) {
                  if (type == QtFatalMsg) std::fprintf(stderr, "%s\n", qUtf8Printable(message));
              })) {}
    ~QuietQt() { qInstallMessageHandler(before_); }
    QuietQt(const QuietQt&) = delete;
    QuietQt& operator=(const QuietQt&) = delete;

  private:
    QtMessageHandler before_;
};

} // namespace quorvane
