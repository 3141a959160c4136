#include "platform/windows/drawing/drawing.h"

#include "platform/files.h"
#include "platform/painting/bitmap_file.h"
#include "platform/painting/raster.h"
#include "platform/windows/base/wide.h"
#include "platform/windows/drawing/picture.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace quorvane {
namespace {

constexpr int LargestSide = 32767; // of a bitmap that GDI still handles everywhere

int ScreenDotsPerInch(int index) {
    const HDC screen = GetDC(nullptr);
    const int dots = GetDeviceCaps(screen, index);
    ReleaseDC(nullptr, screen);
    return dots > 0 ? dots : 96;
}

// GDI takes places of 27 bits.
int Place(double pixels) {
    return static_cast<int>(std::lround(std::clamp(pixels, -1e7, 1e7)));
}

BITMAPINFO HeaderOf(PixelSize size, bool bottomUp = false) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size.width;
    info.bmiHeader.biHeight = bottomUp ? size.height : -size.height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 24;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

constexpr std::ptrdiff_t StrideOf(int width) {
    return (static_cast<std::ptrdiff_t>(width) * 3 + 3) / 4 * 4;
}

// A 24-bit DIB section with its own device context.
class DibSurface final : public Surface {
  public:
    DibSurface(HDC dc, HBITMAP bitmap, std::uint8_t* bits, PixelSize size)
        : dc_(dc)
        , bitmap_(bitmap)
        , bits_(bits)
        , size_(size)
        , before_(SelectObject(dc, bitmap)) {
        SetBkMode(dc_, TRANSPARENT);
        SetTextAlign(dc_, TA_LEFT | TA_TOP | TA_NOUPDATECP);
    }
    ~DibSurface() override {
        if (font_) DeleteObject(font_);
        SelectObject(dc_, before_);
        DeleteDC(dc_);
        DeleteObject(bitmap_);
    }

    PixelSize Size() const override { return size_; }

    void Fill(const PixelRect& area, Color color) override {
        const RECT rectangle{area.x, area.y, area.x + area.width, area.y + area.height};
        const HBRUSH brush = CreateSolidBrush(static_cast<COLORREF>(color));
        FillRect(dc_, &rectangle, brush);
        DeleteObject(brush);
    }

    void GradientRectangle(const GradientVertex& upperLeft, const GradientVertex& lowerRight,
                           GradientDirection direction) override {
        TRIVERTEX corners[] = {Corner(upperLeft), Corner(lowerRight)};
        GRADIENT_RECT mesh{0, 1};
        GradientFill(dc_, corners, 2, &mesh, 1,
                     direction == GradientDirection::LeftToRight ? GRADIENT_FILL_RECT_H
                                                                 : GRADIENT_FILL_RECT_V);
    }

    void GradientTriangle(const GradientVertex& a, const GradientVertex& b,
                          const GradientVertex& c) override {
        TRIVERTEX corners[] = {Corner(a), Corner(b), Corner(c)};
        GRADIENT_TRIANGLE mesh{0, 1, 2};
        GradientFill(dc_, corners, 3, &mesh, 1, GRADIENT_FILL_TRIANGLE);
    }

    void Line(double x1, double y1, double x2, double y2, double width, Color color) override {
        GdiFlush();
        FillLine({bits_, StrideOf(size_.width), size_}, x1, y1, x2, y2, width, color);
    }

    bool StretchPicture(const Picture& picture, const PixelRect& target, std::string& why) override {
        const auto* painter = dynamic_cast<const WindowsPicture*>(&picture);
        if (!painter) {
            why = "the picture belongs to another drawing service";
            return false;
        }
        if (Clip(target, size_).width == 0) return true;
        GdiFlush();
        return painter->Paint({bits_, StrideOf(size_.width), size_}, dc_, target, why);
    }

    double TextWidth(const FontSpec& font, std::string_view text) override {
        Use(font);
        const std::wstring wide = Wide(text);
        SIZE extent{};
        GetTextExtentPoint32W(dc_, wide.data(), static_cast<int>(wide.size()), &extent);
        return extent.cx;
    }

    double TextHeight(const FontSpec& font) override {
        Use(font);
        TEXTMETRICW metrics{};
        GetTextMetricsW(dc_, &metrics);
        return metrics.tmHeight;
    }

    void PrintText(double x, double y, const FontSpec& font, Color color, std::string_view text) override {
        Use(font);
        SetTextColor(dc_, static_cast<COLORREF>(color));
        const std::wstring wide = Wide(text);
        TextOutW(dc_, Place(x), Place(y), wide.data(), static_cast<int>(wide.size()));
    }

    PixelView Pixels() override {
        GdiFlush();
        return {bits_, StrideOf(size_.width), size_};
    }
    bool WriteBitmap(FileWriter& out) override { return quorvane::WriteBitmap(Pixels(), out); }

  private:
    static TRIVERTEX Corner(const GradientVertex& vertex) {
        return {vertex.x,
                vertex.y,
                static_cast<COLOR16>(vertex.red),
                static_cast<COLOR16>(vertex.green),
                static_cast<COLOR16>(vertex.blue),
                static_cast<COLOR16>(vertex.alpha)};
    }

    // A calendar prints hundreds of words in few fonts: the last one stays selected.
    void Use(const FontSpec& font) {
        if (font_ && font == used_) return;
        const HFONT fresh = CreateFontFor(font, GetDeviceCaps(dc_, LOGPIXELSY));
        SelectObject(dc_, fresh);
        if (font_) DeleteObject(font_);
        font_ = fresh;
        used_ = font;
    }

    HDC dc_;
    HBITMAP bitmap_;
    std::uint8_t* bits_;
    PixelSize size_;
    HGDIOBJ before_;
    HFONT font_ = nullptr;
    FontSpec used_;
};

// The beginning of a file: enough for its format and for the orientation that a photograph carries.
bool ReadHead(const std::string& path, std::string& head, std::string& why) {
    constexpr std::size_t Bytes = 128 * 1024;
    const HANDLE file = CreateFileW(WidePath(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        why = GetLastError() == ERROR_ACCESS_DENIED ? "the file may not be read" : "the file is not there";
        return false;
    }
    head.resize(Bytes);
    DWORD count = 0;
    const bool read = ReadFile(file, head.data(), static_cast<DWORD>(Bytes), &count, nullptr);
    CloseHandle(file);
    head.resize(read ? count : 0);
    if (head.empty()) why = read ? "the file is empty" : "the file cannot be read";
    return !head.empty();
}

// Encodes into `stream`.
bool EncodePng(IWICImagingFactory& imaging, const PixelView& pixels, IStream* stream) {
    ComPointer<IWICBitmapEncoder> encoder;
    ComPointer<IWICBitmapFrameEncode> frame;
    if (FAILED(imaging.CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.Out())) ||
        FAILED(encoder->Initialize(stream, WICBitmapEncoderNoCache)) ||
        FAILED(encoder->CreateNewFrame(frame.Out(), nullptr)) || FAILED(frame->Initialize(nullptr)) ||
        FAILED(frame->SetSize(static_cast<UINT>(pixels.size.width), static_cast<UINT>(pixels.size.height)))) {
        return false;
    }
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    if (FAILED(frame->SetPixelFormat(&format)) || !IsEqualGUID(format, GUID_WICPixelFormat24bppBGR))
        return false;
    const UINT rowBytes = static_cast<UINT>(pixels.size.width) * 3;
    for (int y = 0; y < pixels.size.height; ++y) {
        auto* row = const_cast<BYTE*>(pixels.Row(y));
        if (FAILED(frame->WritePixels(1, rowBytes, rowBytes, row))) return false;
    }
    return SUCCEEDED(frame->Commit()) && SUCCEEDED(encoder->Commit());
}

HFONT CreateFontOf(const FontSpec& font, int dotsPerInch, BYTE quality) {
    LOGFONTW description{};
    description.lfHeight = -static_cast<LONG>(std::lround(font.size * static_cast<float>(dotsPerInch) / 72));
    description.lfWeight = font.bold ? FW_BOLD : FW_NORMAL;
    description.lfItalic = font.italic;
    description.lfUnderline = font.underline;
    description.lfStrikeOut = font.strikethrough;
    description.lfCharSet = DEFAULT_CHARSET;
    description.lfQuality = quality;
    CopyToField(font.name, description.lfFaceName, LF_FACESIZE);
    return CreateFontIndirectW(&description);
}

} // namespace

// Grey edges: the coloured ones are meant for the pixels of one screen, and a wallpaper may be stretched.
HFONT CreateFontFor(const FontSpec& font, int dotsPerInch) {
    return CreateFontOf(font, dotsPerInch, ANTIALIASED_QUALITY);
}

HFONT CreateWindowFont(const FontSpec& font, int dotsPerInch) {
    return CreateFontOf(font, dotsPerInch, DEFAULT_QUALITY);
}

void PaintSurface(Surface& surface, HDC target, int x, int y) {
    const PixelView pixels = surface.Pixels();
    const bool bottomUp = pixels.stride < 0;
    const std::uint8_t* first = bottomUp ? pixels.Row(pixels.size.height - 1) : pixels.top;
    const BITMAPINFO info = HeaderOf(pixels.size, bottomUp);
    SetDIBitsToDevice(target, x, y, static_cast<DWORD>(pixels.size.width),
                      static_cast<DWORD>(pixels.size.height), 0, 0, 0, static_cast<UINT>(pixels.size.height),
                      first, &info, DIB_RGB_COLORS);
}

WindowsDrawing::WindowsDrawing()
    : ownsCom_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}

WindowsDrawing::~WindowsDrawing() {
    if (imaging_) imaging_->Release();
    if (ownsCom_) CoUninitialize();
}

IWICImagingFactory* WindowsDrawing::Imaging() {
    if (!looked_) {
        looked_ = true;
        CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                         reinterpret_cast<void**>(&imaging_));
    }
    return imaging_;
}

std::unique_ptr<Surface> WindowsDrawing::CreateSurface(PixelSize size) {
    if (size.width <= 0 || size.height <= 0 || size.width > LargestSide || size.height > LargestSide)
        return nullptr;
    const HDC dc = CreateCompatibleDC(nullptr);
    const BITMAPINFO info = HeaderOf(size);
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (!bitmap) {
        DeleteDC(dc);
        return nullptr;
    }
    return std::make_unique<DibSurface>(dc, bitmap, static_cast<std::uint8_t*>(bits), size);
}

std::unique_ptr<Picture> WindowsDrawing::LoadPicture(const std::string& path, std::string& why) {
    std::string head;
    if (!ReadHead(path, head, why)) return nullptr;
    if (LooksLikeMetafile(head)) return LoadMetafile(path, ScreenDotsPerInch(LOGPIXELSX), why);
    if (!Imaging()) {
        why = "the system's imaging component is missing";
        return nullptr;
    }
    return LoadBitmapPicture(*Imaging(), path, head, why);
}

bool WindowsDrawing::WritePng(const PixelView& pixels, FileWriter& out) {
    ComPointer<IStream> stream;
    HGLOBAL memory = nullptr;
    STATSTG status{};
    if (!Imaging() || FAILED(CreateStreamOnHGlobal(nullptr, TRUE, stream.Out())) ||
        !EncodePng(*Imaging(), pixels, stream.Get()) || FAILED(GetHGlobalFromStream(stream.Get(), &memory)) ||
        FAILED(stream->Stat(&status, STATFLAG_NONAME))) {
        return false;
    }
    const void* Bytes = GlobalLock(memory);
    const bool written = Bytes && out.Write(Bytes, static_cast<std::size_t>(status.cbSize.QuadPart));
    GlobalUnlock(memory);
    return written;
}

double WindowsDrawing::TwipsPerPixelX() const {
    return 1440.0 / ScreenDotsPerInch(LOGPIXELSX);
}

double WindowsDrawing::TwipsPerPixelY() const {
    return 1440.0 / ScreenDotsPerInch(LOGPIXELSY);
}

std::unique_ptr<Drawing> CreateDrawing() {
    return std::make_unique<WindowsDrawing>();
}

} // namespace quorvane
