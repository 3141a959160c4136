#include "engine/composition.h"

#include "core/run_time_error.h"
#include "engine/background.h"
#include "engine/placing.h"
#include "platform/shared/breather.h"

#include <array>

namespace quorvane {
namespace {

// A picture of one pixel is laid down millions of times; asking the time costs as much as a tile.
constexpr int TilesToABreath = 1024;

} // namespace

PixelSize TargetSize(int wallpaperResolution, PixelSize screen) {
    static constexpr std::array<PixelSize, 5> Sizes{
        {{640, 480}, {800, 600}, {1024, 768}, {1280, 1024}, {1600, 1200}}};
    const bool listed = wallpaperResolution >= 0 && wallpaperResolution < static_cast<int>(Sizes.size());
    return listed ? Sizes[static_cast<std::size_t>(wallpaperResolution)] : screen;
}

ComposedWallpaper Composition::Compose(const std::string& file, PixelSize screen) {
    const GlobalRecord& record = parts_.record;
    const std::int64_t start = parts_.clock.Ticks();
    parts_.random.Seed(SecondsOfDay(parts_.clock.Now()));
    const PixelSize target = TargetSize(record.WallpaperResolution, screen);
    const PixelSize size{target.width + CanvasMargin, target.height + CanvasMargin};
    ComposedWallpaper composed;
    composed.canvas = parts_.drawing.CreateCanvas(size);
    PassOver([&] { parts_.fileList.BuildFileList(); });
    GradientVertices vertices = SettingsVertices(record, size);
    if (record.UseRandomColors) DrawRandomColors(vertices, record, parts_.random);
    if (composed.canvas) PaintBackground(*composed.canvas, vertices, record, parts_.random);
    ChoosePicture(file);
    if (composed.canvas) {
        const std::int64_t loading = parts_.clock.Ticks();
        DrawPicture(composed, target);
        composed.loadMilliseconds = parts_.clock.Ticks() - loading;
        if (record.PaintCalendar) composed.calendar = paintCalendar_(*composed.canvas);
    }
    composed.composeMilliseconds = parts_.clock.Ticks() - start - composed.loadMilliseconds;
    return composed;
}

void Composition::ChoosePicture(const std::string& file) {
    std::string candidate = parts_.selection.GetNewWallpaper(); // also where `file` overrides it
    if (!file.empty()) candidate = file;
    if (!candidate.empty()) parts_.record.LastSelectedWallpaper = candidate;
}

void Composition::DrawPicture(ComposedWallpaper& composed, PixelSize target) {
    const std::string path = parts_.record.LastSelectedWallpaper;
    if (path.empty()) return;
    std::string why;
    composed.picture = parts_.drawing.LoadPicture(path, why);
    const Picture* picture = composed.picture.get();
    bool readable = picture != nullptr;
    Breather breather(parts_.clock, parts_.events);
    int drawn = 0;
    PassOver([&] {
        if (!picture) return;
        PlacePicture(parts_.record.WallpaperPosition, target, picture->Size(), [&](const PixelRect& place) {
            readable = readable && composed.canvas->StretchPicture(*picture, place, why);
            if (++drawn % TilesToABreath == 0) breather.Breathe();
        });
    });
    if (!readable) parts_.complaints.Tell(path, why);
}

void TellLateFailure(const Surface& canvas, const GlobalRecord& record, Complaints& complaints) {
    const std::string why = canvas.LateFailure();
    if (!why.empty()) complaints.Tell(record.LastSelectedWallpaper, why);
}

} // namespace quorvane
