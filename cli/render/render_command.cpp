#include "cli/commands.h"
#include "cli/engine_rig.h"
#include "commands/json.h"
#include "core/text.h"
#include "engine/calendar_layer.h"
#include "engine/composition.h"
#include "platform/drawing.h"
#include "platform/headless.h"
#include "platform/painting/bitmap_file.h"

#include <charconv>
#include <ostream>

namespace quorvane::cli {
namespace {

constexpr PixelSize UsualScreen{1920, 1080};
constexpr int LargestSide = 32767;

std::optional<int> Side(std::string_view text) {
    int pixels = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), pixels);
    const bool whole = result.ec == std::errc() && result.ptr == text.data() + text.size();
    if (!whole || pixels < 1 || pixels > LargestSide) return std::nullopt;
    return pixels;
}

PixelSize ScreenOf(const Arguments& arguments) {
    const auto text = arguments.Value("size");
    if (!text) return UsualScreen;
    const std::vector<std::string> sides = Split(LowerCase(*text), 'x');
    const auto width = Side(sides[0]);
    const auto height = sides.size() == 2 ? Side(sides[1]) : std::nullopt;
    if (!width || !height) throw UsageError("--size is WIDTHxHEIGHT in pixels, each up to 32767");
    return {*width, *height};
}

enum class Format { Bitmap, Png };

Format FormatOf(const std::string& path) {
    const std::string folded = LowerCase(path);
    if (folded.ends_with(".bmp")) return Format::Bitmap;
    if (folded.ends_with(".png")) return Format::Png;
    throw UsageError("--out ends in .bmp or .png");
}

bool Save(Surface& canvas, Drawing& drawing, Files& files, const std::string& path, Format format,
          std::string& why) {
    if (format == Format::Bitmap) return SaveBitmap(canvas, files, path, why);
    const auto writer = files.Replace(path, why);
    if (!writer) return false;
    if (drawing.WritePng(canvas.Pixels(), *writer) && writer->Commit()) return true;
    why = writer->Why();
    return false;
}

JsonObject RectObject(const PixelRect& rect) {
    return JsonObject().Add("x", rect.x).Add("y", rect.y).Add("width", rect.width).Add("height", rect.height);
}

} // namespace

int Render(const Arguments& arguments, Streams& streams) {
    arguments.NoInputs();
    const auto out = arguments.Value("out");
    if (!out) throw UsageError("--out is missing");
    const Format format = FormatOf(*out);
    const PixelSize screen = ScreenOf(arguments);
    const std::string picture = arguments.Value("picture").value_or("");

    EngineRig rig(arguments);
    const auto drawing = CreateDrawing();
    if (picture.empty()) rig.FillList(); // what it would draw is overridden otherwise
    const LocaleStrings builtInWords;
    Composition composition(
        {rig.record, rig.fileList, rig.selection, rig.complaints, *rig.clock, rig.events, *drawing,
         rig.random},
        CalendarLayer(rig.record, *rig.clock, *drawing, *rig.store, *rig.system, builtInWords, nullptr));
    const ComposedWallpaper composed = composition.Compose(picture, screen);
    if (!composed.canvas) throw RefusedInput("there is no memory for a canvas of that size");
    const std::int64_t start = rig.clock->Ticks();
    std::string why;
    const bool saved = Save(*composed.canvas, *drawing, *rig.files, *out, format, why);
    TellLateFailure(*composed.canvas, rig.record, rig.complaints);
    if (!saved)
        throw RefusedInput(*out + ": the wallpaper cannot be saved; the old file stays (" + why + ")");
    const std::int64_t saveMilliseconds = rig.clock->Ticks() - start;

    const PixelSize size = composed.canvas->Size();
    if (!arguments.Json()) {
        streams.out << Shown(*out, streams) << ": " << size.width << 'x' << size.height << ' '
                    << Shown(rig.record.LastSelectedWallpaper, streams) << '\n';
        return Done;
    }
    const JsonObject times = JsonObject()
                                 .Add("load", composed.loadMilliseconds)
                                 .Add("compose", composed.composeMilliseconds)
                                 .Add("save", saveMilliseconds);
    streams.out << JsonObject()
                       .Add("out", *out)
                       .Add("width", size.width)
                       .Add("height", size.height)
                       .Add("picture", rig.record.LastSelectedWallpaper)
                       .Add("calendar", RectObject(composed.calendar))
                       .Add("milliseconds", times)
                       .Text()
                << '\n';
    return Done;
}

} // namespace quorvane::cli
