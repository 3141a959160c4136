#pragma once

#include <memory>
#include <optional>
#include <string>

namespace quorvane {

// One sound being played: a file rendered for the person's ears. Several play at once, each on a graph of its
// own. What the graph plays ends with it.
class SoundGraph {
  public:
    virtual ~SoundGraph() = default;

    // Makes the graph ready for a sound file, or for the sound of a video file. False where it cannot be
    // played; the graph then plays nothing. Where there is nothing to hear it with, it plays in silence.
    virtual bool RenderFile(const std::string& path) = 0;
    // From the position on. Both false where nothing is rendered.
    virtual bool Run() = 0;
    // The position stands still.
    virtual bool Stop() = 0;

    // Seconds. Nothing where they are not known, which is not the end.
    virtual std::optional<double> Duration() = 0;
    virtual std::optional<double> Position() = 0;
    virtual bool PutPosition(double seconds) = 0;

    // 0 is silent, 100 as loud as the system plays; 100 at first.
    virtual void SetVolume(int percent) = 0;
};

class Sound {
  public:
    virtual ~Sound() = default;

    // Never null. The first graph of a process may take long to make, as the system looks for its players.
    virtual std::unique_ptr<SoundGraph> CreateGraph() = 0;
    // What plays here, in the words of a report; empty where nothing does.
    virtual std::string Means() = 0;
};

} // namespace quorvane
