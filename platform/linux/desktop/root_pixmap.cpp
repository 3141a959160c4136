#include "platform/linux/desktop/root_pixmap.h"

#include "platform/linux/desktop/bitmap_rows.h"
#include "platform/linux/desktop/xcb_reply.h"

#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <optional>

namespace quorvane {

namespace {

// Fills a row of what the root window is to show, as 0xFFRRGGBB; false where it cannot be had.
using RowSource = std::function<bool(int y, QRgb* row)>;

// The server's own form of a pixel.
struct PixelForm {
    int bitsPerPixel = 0;
    bool highByteFirst = false;
    std::uint32_t red = 0;
    std::uint32_t green = 0;
    std::uint32_t blue = 0;

    // The four bytes of a 32-bit QImage pixel as they are.
    bool IsNative() const {
        return bitsPerPixel == 32 && !highByteFirst && red == 0xFF0000 && green == 0xFF00 && blue == 0xFF;
    }
};

// A screen over a connection of its own: what is made here belongs to nobody else and may outlive us.
class RootWindow {
  public:
    RootWindow() {
        int number = 0;
        connection_ = xcb_connect(nullptr, &number);
        if (xcb_connection_has_error(connection_)) return;
        auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection_));
        for (; screens.rem > 0; xcb_screen_next(&screens)) {
            if (number-- == 0) screen_ = screens.data;
        }
    }
    ~RootWindow() { xcb_disconnect(connection_); }
    RootWindow(const RootWindow&) = delete;
    RootWindow& operator=(const RootWindow&) = delete;

    bool IsConnected() const { return screen_ != nullptr; }
    PixelSize Size() const { return {screen_->width_in_pixels, screen_->height_in_pixels}; }
    // Shows a picture of the root window's size, and keeps it when the connection closes. Where the picture
    // breaks off, what was shown before stays.
    bool Show(const RowSource& picture);
    // Whether it shows the picture, which has its size.
    bool Shows(const QImage& picture) const;

  private:
    PixelForm Form() const;
    bool Send(xcb_pixmap_t pixmap, const RowSource& picture) const;
    std::optional<xcb_pixmap_t> PixmapOf(xcb_atom_t property) const;

    xcb_connection_t* connection_ = nullptr;
    xcb_screen_t* screen_ = nullptr;
};

PixelForm RootWindow::Form() const {
    const xcb_setup_t* setup = xcb_get_setup(connection_);
    PixelForm form;
    form.highByteFirst = setup->image_byte_order == XCB_IMAGE_ORDER_MSB_FIRST;
    for (auto formats = xcb_setup_pixmap_formats_iterator(setup); formats.rem > 0;
         xcb_format_next(&formats)) {
        if (formats.data->depth == screen_->root_depth) form.bitsPerPixel = formats.data->bits_per_pixel;
    }
    for (auto depths = xcb_screen_allowed_depths_iterator(screen_); depths.rem > 0; xcb_depth_next(&depths)) {
        auto visuals = xcb_depth_visuals_iterator(depths.data);
        for (; visuals.rem > 0; xcb_visualtype_next(&visuals)) {
            if (visuals.data->visual_id == screen_->root_visual) {
                form.red = visuals.data->red_mask;
                form.green = visuals.data->green_mask;
                form.blue = visuals.data->blue_mask;
            }
        }
    }
    return form;
}

std::uint32_t Placed(int channel, std::uint32_t mask) {
    if (mask == 0) return 0;
    const int low = __builtin_ctz(mask);
    const std::uint32_t largest = mask >> low;
    return (static_cast<std::uint32_t>(channel) * largest + 127) / 255 << low;
}

// One row in the server's form; rows are padded to four bytes.
void ConvertRow(const QRgb* from, int count, const PixelForm& form, std::uint8_t* to) {
    const int bytes = form.bitsPerPixel / 8;
    for (int x = 0; x < count; ++x, to += bytes) {
        const std::uint32_t pixel = Placed(qRed(from[x]), form.red) | Placed(qGreen(from[x]), form.green) |
                                    Placed(qBlue(from[x]), form.blue);
        for (int i = 0; i < bytes; ++i) {
            to[form.highByteFirst ? bytes - 1 - i : i] = static_cast<std::uint8_t>(pixel >> (8 * i));
        }
    }
}

// In stripes that fit a request.
bool RootWindow::Send(xcb_pixmap_t pixmap, const RowSource& picture) const {
    const PixelForm form = Form();
    const PixelSize size = Size();
    const xcb_gcontext_t context = xcb_generate_id(connection_);
    xcb_create_gc(connection_, context, pixmap, 0, nullptr);
    const int rowBytes = (size.width * form.bitsPerPixel + 31) / 32 * 4;
    const int largest =
        static_cast<int>(std::min(xcb_get_maximum_request_length(connection_), 65536U)) * 4 - 64;
    const int stripe = std::max(largest / rowBytes, 1);
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(rowBytes) * static_cast<std::size_t>(stripe));
    std::vector<QRgb> pixels(static_cast<std::size_t>(size.width));
    bool whole = true;
    for (int y = 0; y < size.height && whole; y += stripe) {
        const int rows = std::min(stripe, size.height - y);
        for (int row = 0; row < rows; ++row) {
            std::uint8_t* to = bytes.data() + static_cast<std::ptrdiff_t>(row) * rowBytes;
            whole = whole && picture(y + row, pixels.data());
            if (form.IsNative()) {
                std::memcpy(to, pixels.data(), pixels.size() * sizeof(QRgb));
            } else {
                ConvertRow(pixels.data(), size.width, form, to);
            }
        }
        xcb_put_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context,
                      static_cast<std::uint16_t>(size.width), static_cast<std::uint16_t>(rows), 0,
                      static_cast<std::int16_t>(y), 0, screen_->root_depth,
                      static_cast<std::uint32_t>(rowBytes * rows), bytes.data());
    }
    xcb_free_gc(connection_, context);
    return whole;
}

std::optional<xcb_pixmap_t> RootWindow::PixmapOf(xcb_atom_t property) const {
    const auto cookie = xcb_get_property(connection_, 0, screen_->root, property, XCB_ATOM_PIXMAP, 0, 1);
    const auto reply = Own(xcb_get_property_reply(connection_, cookie, nullptr));
    if (!reply || reply->type != XCB_ATOM_PIXMAP || xcb_get_property_value_length(reply.get()) != 4)
        return std::nullopt;
    return *static_cast<const xcb_pixmap_t*>(xcb_get_property_value(reply.get()));
}

// Both properties naming one pixmap means that it was left behind by a client that is gone, for its successor
// to free; ending that client's resources is the only way to do it.
bool RootWindow::Show(const RowSource& picture) {
    const xcb_atom_t shown = InternAtom(connection_, "_XROOTPMAP_ID");
    const xcb_atom_t left = InternAtom(connection_, "ESETROOT_PMAP_ID");
    const auto before = PixmapOf(left);
    const bool ownerIsGone = before && before == PixmapOf(shown);

    const xcb_pixmap_t pixmap = xcb_generate_id(connection_);
    xcb_create_pixmap(connection_, screen_->root_depth, pixmap, screen_->root, screen_->width_in_pixels,
                      screen_->height_in_pixels);
    if (!Send(pixmap, picture)) return false;
    xcb_grab_server(connection_);
    for (const xcb_atom_t property : {shown, left}) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, screen_->root, property, XCB_ATOM_PIXMAP, 32,
                            1, &pixmap);
    }
    xcb_change_window_attributes(connection_, screen_->root, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(connection_, 0, screen_->root, 0, 0, 0, 0);
    if (ownerIsGone) xcb_kill_client(connection_, *before);
    xcb_set_close_down_mode(connection_, XCB_CLOSE_DOWN_RETAIN_PERMANENT);
    xcb_ungrab_server(connection_);
    // A round trip: all of it has been done, or the connection has failed.
    const auto done = Own(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    return done != nullptr;
}

bool RootWindow::Shows(const QImage& picture) const {
    const auto pixmap = PixmapOf(InternAtom(connection_, "_XROOTPMAP_ID"));
    if (!pixmap) return false;
    const PixelForm form = Form();
    const PixelSize size = Size();
    const auto pixelBytes = static_cast<std::size_t>(form.bitsPerPixel / 8);
    std::vector<std::uint8_t> wanted(static_cast<std::size_t>(size.width) * pixelBytes);
    for (int y = 0; y < size.height; ++y) {
        const auto cookie =
            xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, *pixmap, 0, static_cast<std::int16_t>(y),
                          static_cast<std::uint16_t>(size.width), 1, ~0U);
        const auto row = Own(xcb_get_image_reply(connection_, cookie, nullptr));
        if (!row || static_cast<std::size_t>(xcb_get_image_data_length(row.get())) < wanted.size())
            return false;
        ConvertRow(reinterpret_cast<const QRgb*>(picture.constScanLine(y)), size.width, form, wanted.data());
        const std::uint8_t* shown = xcb_get_image_data(row.get());
        for (std::size_t at = 0; at < wanted.size(); ++at) {
            // Of the four bytes of a pixel of 24 bits the topmost means nothing.
            const std::size_t unused = form.highByteFirst ? 0 : 3;
            if ((pixelBytes != 4 || at % 4 != unused) && shown[at] != wanted[at]) return false;
        }
    }
    return true;
}

// By a file that is open already: a name need not be UTF-8, which the toolkit takes it for.
QImage ReadPicture(const std::string& path) {
    std::FILE* file = std::fopen(path.c_str(), "rbe");
    QFile device;
    if (!file || !device.open(file, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) return {};
    return QImageReader(&device).read();
}

// All of the root window; null where the file cannot be read.
QImage WholePicture(const std::string& file, WallpaperStyle style, const std::vector<PixelRect>& monitors,
                    PixelSize size) {
    const QImage picture = ReadPicture(file).convertToFormat(QImage::Format_RGB32);
    if (picture.isNull()) return {};
    QImage whole(size.width, size.height, QImage::Format_RGB32);
    whole.fill(Qt::black);
    QPainter painter(&whole);
    for (const PixelRect& monitor : monitors) {
        painter.drawImage(monitor.x, monitor.y,
                          MonitorPicture(picture, style, {monitor.width, monitor.height}));
    }
    return whole;
}

} // namespace

QImage MonitorPicture(const QImage& picture, WallpaperStyle style, PixelSize size) {
    const QSize target(size.width, size.height);
    if (style == WallpaperStyle::Stretched) {
        const auto border = WithoutBorder({picture.width(), picture.height()}, size);
        return border ? picture.copy(border->x, border->y, size.width, size.height)
                      : picture.scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    QImage shown(target, QImage::Format_RGB32);
    shown.fill(Qt::black);
    QPainter painter(&shown);
    if (style == WallpaperStyle::Tiled) {
        painter.fillRect(shown.rect(), QBrush(picture));
    } else {
        painter.drawImage((size.width - picture.width()) / 2, (size.height - picture.height()) / 2, picture);
    }
    return shown;
}

bool PaintRootWindow(const std::string& file, WallpaperStyle style, const std::vector<PixelRect>& monitors) {
    RootWindow root;
    if (!root.IsConnected()) return false;
    const PixelSize size = root.Size();
    const bool oneMonitor =
        monitors.size() == 1 && monitors.front() == PixelRect{0, 0, size.width, size.height};
    if (oneMonitor && style == WallpaperStyle::Stretched) {
        const auto rows = BitmapRows::Open(file);
        const auto border = rows ? WithoutBorder(rows->Size(), size) : std::nullopt;
        if (border) {
            return root.Show(
                [&](int y, QRgb* row) { return rows->Read(border->x, border->y + y, size.width, row); });
        }
    }
    const QImage whole = WholePicture(file, style, monitors, size);
    if (whole.isNull()) return false;
    return root.Show([&whole](int y, QRgb* row) {
        std::memcpy(row, whole.constScanLine(y), static_cast<std::size_t>(whole.width()) * sizeof(QRgb));
        return true;
    });
}

bool RootWindowShows(const std::string& file, WallpaperStyle style, const std::vector<PixelRect>& monitors) {
    const RootWindow root;
    if (!root.IsConnected()) return false;
    const QImage whole = WholePicture(file, style, monitors, root.Size());
    return !whole.isNull() && root.Shows(whole);
}

} // namespace quorvane
