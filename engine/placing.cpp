#include "engine/placing.h"

#include "core/numbers.h"
#include "core/run_time_error.h"

#include <cmath>

namespace quorvane {
namespace {

using DrawOnto = std::function<void(const PixelRect&)>;

PixelRect Rounded(double x, double y, double width, double height) {
    return {ToInteger(x), ToInteger(y), ToInteger(width), ToInteger(height)};
}

struct Placing {
    double Tw;
    double Th;
    double pw;
    double ph;
    double s; // from target to canvas, on both axes

    void Centred(const DrawOnto& draw) const {
        draw(Rounded((Tw - pw) * s / 2, (Th - ph) * s / 2, pw * s, ph * s));
    }

    // One tile more than fits on each axis: the last one covers what the margin left over.
    void Tiled(const DrawOnto& draw) const {
        const double nx = std::floor(Tw / pw) + 1;
        const double ny = std::floor(Th / ph) + 1;
        for (double i = 0; i <= nx; ++i) {
            for (double j = 0; j <= ny; ++j) {
                draw(Rounded(i * pw * s, j * ph * s, pw * s, ph * s));
            }
        }
    }

    // As large as fits wholly, with a bar on either side where the aspects differ.
    void Fitted(const DrawOnto& draw) const {
        if (pw / ph < Tw / Th) {
            const double nw = Th / ph * pw;
            draw(Rounded((Tw - nw) / 2 * s, 0, nw * s, Th * s));
        } else if (pw / ph == Tw / Th) {
            draw(Rounded(0, 0, Tw * s, Th * s));
        } else {
            const double nh = Tw / pw * ph;
            draw(Rounded(0, (Th - nh) / 2 * s, Tw * s, nh * s));
        }
    }
};

} // namespace

void PlacePicture(int position, PixelSize target, PixelSize picture, const DrawOnto& draw) {
    if (target.width <= 0 || target.height <= 0 || picture.width <= 0 || picture.height <= 0)
        throw RunTimeError::DivisionByZero();
    const double canvasHeight = target.height + CanvasMargin;
    const Placing placing{static_cast<double>(target.width), static_cast<double>(target.height),
                          static_cast<double>(picture.width), static_cast<double>(picture.height),
                          canvasHeight / target.height};
    switch (position) {
    case wallpaper_position::Center:
    case wallpaper_position::CenterOnBackground:
        placing.Centred(draw);
        break;
    case wallpaper_position::Tile:
        placing.Tiled(draw);
        break;
    case wallpaper_position::Stretch:
        draw({0, 0, target.width + CanvasMargin, target.height + CanvasMargin});
        break;
    case wallpaper_position::FitOnBackground:
        placing.Fitted(draw);
        break;
    default:
        break;
    }
}

} // namespace quorvane
