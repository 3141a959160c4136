#pragma once

#include <memory>

class QGuiApplication;

namespace quorvane {

// Fonts need a QGuiApplication. The resident program has one; a command-line program gets one without a
// screen, made when the first text is drawn, so that a command without text starts without that cost.
class GuiSession {
  public:
    GuiSession();
    ~GuiSession();
    GuiSession(const GuiSession&) = delete;
    GuiSession& operator=(const GuiSession&) = delete;

    // False where the process has a QCoreApplication of another kind, beside which no fonts can be had.
    bool Ready();

  private:
    struct Headless;
    std::unique_ptr<Headless> headless_;
};

} // namespace quorvane
