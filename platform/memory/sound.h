#pragma once

#include "platform/memory/call_log.h"
#include "platform/memory/clock.h"
#include "platform/sound.h"

#include <algorithm>
#include <map>

namespace quorvane {

// Sounds that nobody hears, played by the tick clock. What can be played a test lays down by path.
class MemorySound final : public Sound {
  public:
    MemorySound(MemoryClock& clock, CallLog& calls)
        : clock_(clock)
        , calls_(calls) {}

    std::unique_ptr<SoundGraph> CreateGraph() override { return std::make_unique<Graph>(*this); }
    std::string Means() override { return "memory"; }

    std::map<std::string, double> files; // seconds of each file that can be rendered
    int volume = 100;                    // as set last

  private:
    class Graph final : public SoundGraph {
      public:
        explicit Graph(MemorySound& sound)
            : sound_(sound) {}
        bool RenderFile(const std::string& path) override {
            sound_.calls_.Add("sound.RenderFile " + path);
            const auto found = sound_.files.find(path);
            if (found == sound_.files.end()) return false;
            duration_ = found->second;
            return true;
        }
        bool Run() override {
            sound_.calls_.Add("sound.Run");
            if (!running_) startedAt_ = sound_.clock_.Ticks();
            running_ = duration_.has_value();
            return running_;
        }
        bool Stop() override {
            sound_.calls_.Add("sound.Stop");
            if (duration_) standsAt_ = *Position();
            running_ = false;
            return duration_.has_value();
        }
        std::optional<double> Duration() override { return duration_; }
        std::optional<double> Position() override {
            if (!duration_) return std::nullopt;
            const auto played = static_cast<double>(running_ ? sound_.clock_.Ticks() - startedAt_ : 0);
            return std::min(standsAt_ + played / 1000, *duration_);
        }
        bool PutPosition(double seconds) override {
            standsAt_ = seconds;
            startedAt_ = sound_.clock_.Ticks();
            return duration_.has_value();
        }
        void SetVolume(int percent) override { sound_.volume = percent; }

      private:
        MemorySound& sound_;
        std::optional<double> duration_;
        double standsAt_ = 0; // seconds at the last start or stop
        std::int64_t startedAt_ = 0;
        bool running_ = false;
    };

    MemoryClock& clock_;
    CallLog& calls_;
};

} // namespace quorvane
