#include "platform/linux/desktop/outputs.h"

#include <QDeadlineTimer>
#include <cerrno>
#include <cstring>
#include <deque>
#include <memory>
#include <poll.h>
#include <wayland-client.h>

namespace quorvane {

namespace {

constexpr int PatienceMilliseconds = 2000; // with a compositor that has stopped answering
constexpr std::uint32_t VersionWithName = 4;

bool IsTurned(std::int32_t transform) {
    return transform == WL_OUTPUT_TRANSFORM_90 || transform == WL_OUTPUT_TRANSFORM_270 ||
           transform == WL_OUTPUT_TRANSFORM_FLIPPED_90 || transform == WL_OUTPUT_TRANSFORM_FLIPPED_270;
}

struct Announced {
    wl_output* proxy = nullptr;
    Output output;
    bool turned = false;
};

const wl_output_listener OutputListener{
    [](void* data, wl_output*, std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
       const char*, const char*,
       std::int32_t transform) { static_cast<Announced*>(data)->turned = IsTurned(transform); },
    [](void* data, wl_output*, std::uint32_t flags, std::int32_t width, std::int32_t height, std::int32_t) {
        if (flags & WL_OUTPUT_MODE_CURRENT) static_cast<Announced*>(data)->output.size = {width, height};
    },
    [](void*, wl_output*) {},
    [](void*, wl_output*, std::int32_t) {},
    [](void* data, wl_output*, const char* name) { static_cast<Announced*>(data)->output.name = name; },
    [](void*, wl_output*, const char*) {},
};

// A connection for one question.
class Compositor {
  public:
    Compositor()
        : display_(wl_display_connect(nullptr)) {}
    ~Compositor() {
        if (display_) wl_display_disconnect(display_); // and with it whatever was made of it
    }
    Compositor(const Compositor&) = delete;
    Compositor& operator=(const Compositor&) = delete;

    std::vector<Output> Outputs();

  private:
    bool RoundTrip();
    bool ReadEvents();

    wl_display* display_;
    QDeadlineTimer deadline_{PatienceMilliseconds};
    std::deque<Announced> announced_; // stay where they are, since their listeners point at them
};

std::vector<Output> Compositor::Outputs() {
    if (!display_) return {};
    static const wl_registry_listener registryListener{
        [](void* data, wl_registry* registry, std::uint32_t name, const char* interface,
           std::uint32_t version) {
            if (std::strcmp(interface, wl_output_interface.name) != 0) return;
            Announced& output = static_cast<Compositor*>(data)->announced_.emplace_back();
            output.proxy = static_cast<wl_output*>(
                wl_registry_bind(registry, name, &wl_output_interface, std::min(version, VersionWithName)));
            wl_output_add_listener(output.proxy, &OutputListener, &output);
        },
        [](void*, wl_registry*, std::uint32_t) {},
    };
    wl_registry* registry = wl_display_get_registry(display_);
    wl_registry_add_listener(registry, &registryListener, this);
    const bool told = RoundTrip() && RoundTrip(); // the globals, then what each tells of itself
    std::vector<Output> outputs;
    for (Announced& each : announced_) {
        if (each.turned) std::swap(each.output.size.width, each.output.size.height);
        if (told && each.output.size.width > 0) outputs.push_back(each.output);
        wl_output_destroy(each.proxy);
    }
    wl_registry_destroy(registry);
    return outputs;
}

// The library's own would wait for ever.
bool Compositor::RoundTrip() {
    bool answered = false;
    static const wl_callback_listener listener{
        [](void* data, wl_callback*, std::uint32_t) { *static_cast<bool*>(data) = true; }};
    wl_callback* callback = wl_display_sync(display_);
    wl_callback_add_listener(callback, &listener, &answered);
    while (!answered && !deadline_.hasExpired() && ReadEvents()) {
    }
    wl_callback_destroy(callback);
    return answered;
}

bool Compositor::ReadEvents() {
    while (wl_display_prepare_read(display_) != 0) {
        if (wl_display_dispatch_pending(display_) < 0) return false;
    }
    if (wl_display_flush(display_) < 0 && errno != EAGAIN) {
        wl_display_cancel_read(display_);
        return false;
    }
    pollfd ready{wl_display_get_fd(display_), POLLIN, 0};
    if (poll(&ready, 1, static_cast<int>(deadline_.remainingTime())) <= 0) {
        wl_display_cancel_read(display_);
        return false;
    }
    return wl_display_read_events(display_) == 0 && wl_display_dispatch_pending(display_) >= 0;
}

} // namespace

std::vector<Output> FindWaylandOutputs() {
    return Compositor().Outputs();
}

} // namespace quorvane
