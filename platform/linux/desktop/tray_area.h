#pragma once

#include <QAbstractNativeEventFilter>
#include <QDBusConnection>
#include <QObject>
#include <functional>
#include <memory>

class QDBusServiceWatcher;

namespace quorvane {

// The notification area over D-Bus. What is known of it follows the bus; nothing is asked again and again.
class BusTrayArea : public QObject {
    Q_OBJECT

  public:
    // `changed` is called whenever one of the answers below may be another one.
    explicit BusTrayArea(std::function<void()> changed);
    ~BusTrayArea() override;

    // Whether the bus has said yes or no for the first time.
    bool HasAnswered() const { return pending_ == 0; }
    // A watcher without a host shows nothing.
    bool HasHost() const { return hasHost_; }
    // GNOME's area sends one activation for a double click and none for a single one; all others send one
    // for each click.
    bool ActivatesByDoubleClick() const { return isShells_; }

  private slots:
    void Ask();

  private:
    void AskForHost();
    void AskForOwner();
    void Answered();

    std::function<void()> changed_;
    QDBusConnection bus_;
    std::unique_ptr<QDBusServiceWatcher> watcher_;
    int pending_ = 0; // questions that have not been answered
    bool hasHost_ = false;
    bool isShells_ = false;
};

// The notification area of an X screen, in which windows are embedded.
class WindowTrayArea : public QAbstractNativeEventFilter {
  public:
    // `appeared` is called when an area announces itself.
    explicit WindowTrayArea(std::function<void()> appeared);
    ~WindowTrayArea() override;

    bool IsThere() const;

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr*) override;

  private:
    std::function<void()> appeared_;
    std::uint32_t manager_ = 0;   // atoms: the announcement,
    std::uint32_t selection_ = 0; // and what an area owns
};

} // namespace quorvane
