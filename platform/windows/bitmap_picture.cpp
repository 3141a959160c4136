#include "platform/windows/picture.h"

#include "platform/exif.h"
#include "platform/windows/wide.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace quorvane {
namespace {

// The interface by which a decoder decodes at a smaller scale; the cross compiler's headers do not have it.
constexpr GUID reducedDecodeId{0x3B16811B, 0x6A43, 0x4EC9, {0xB7, 0x13, 0x3D, 0x5A, 0x0C, 0x13, 0xB9, 0x40}};
struct ReducedDecode : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE CopyPixels(const WICRect* part, UINT width, UINT height,
                                                 WICPixelFormatGUID* format, WICBitmapTransformOptions turn,
                                                 UINT stride, UINT size, BYTE* into) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetClosestSize(UINT* width, UINT* height) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetClosestPixelFormat(WICPixelFormatGUID* format) = 0;
    virtual HRESULT STDMETHODCALLTYPE DoesSupportTransform(WICBitmapTransformOptions turn,
                                                           BOOL* supported) = 0;

  protected:
    ~ReducedDecode() = default;
};

constexpr int upright = 1; // of the eight orientations that a photograph may carry

// Decoded pixels, blue first, three bytes a pixel or four with their share of opacity; rows as GDI wants
// them.
struct Pixels {
    PixelSize size;
    int bytesPerPixel = 3;
    std::vector<std::uint8_t> bytes;

    Pixels(PixelSize wanted, int pixelBytes)
        : size(wanted)
        , bytesPerPixel(pixelBytes)
        , bytes(Stride() * static_cast<std::size_t>(wanted.height)) {}

    std::size_t Stride() const {
        return (static_cast<std::size_t>(size.width) * static_cast<std::size_t>(bytesPerPixel) + 3) / 4 * 4;
    }
    std::uint8_t* At(int x, int y) {
        return bytes.data() + static_cast<std::size_t>(y) * Stride() +
               static_cast<std::size_t>(x) * static_cast<std::size_t>(bytesPerPixel);
    }
    BITMAPINFO Header() const {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = size.width;
        info.bmiHeader.biHeight = -size.height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = static_cast<WORD>(bytesPerPixel * 8);
        info.bmiHeader.biCompression = BI_RGB;
        return info;
    }
};

bool IsTurned(int orientation) {
    return orientation >= 5;
}

PixelSize Turned(PixelSize size) {
    return {size.height, size.width};
}

// The stored pixels put upright. Orientations 2 to 4 are mirrored or upside down, 5 to 8 lie on their side.
Pixels Upright(Pixels stored, int orientation) {
    if (orientation == upright) return stored;
    Pixels result(IsTurned(orientation) ? Turned(stored.size) : stored.size, stored.bytesPerPixel);
    const int lastX = stored.size.width - 1;
    const int lastY = stored.size.height - 1;
    const bool fromRight = orientation == 2 || orientation == 3 || orientation == 7 || orientation == 8;
    const bool fromBelow = orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7;
    const auto count = static_cast<std::size_t>(stored.bytesPerPixel);
    for (int y = 0; y < result.size.height; ++y) {
        for (int x = 0; x < result.size.width; ++x) {
            const int alongX = IsTurned(orientation) ? y : x;
            const int alongY = IsTurned(orientation) ? x : y;
            std::memcpy(result.At(x, y),
                        stored.At(fromRight ? lastX - alongX : alongX, fromBelow ? lastY - alongY : alongY),
                        count);
        }
    }
    return result;
}

bool CopyAll(IWICBitmapSource* source, Pixels& into) {
    return SUCCEEDED(source->CopyPixels(nullptr, static_cast<UINT>(into.Stride()),
                                        static_cast<UINT>(into.bytes.size()), into.bytes.data()));
}

// Pictures with a share of opacity in each pixel are laid over the surface.
bool HasAlpha(IWICImagingFactory& imaging, IWICBitmapSource* source) {
    WICPixelFormatGUID format{};
    ComPointer<IWICComponentInfo> info;
    ComPointer<IWICPixelFormatInfo2> formatInfo;
    BOOL transparent = FALSE;
    return SUCCEEDED(source->GetPixelFormat(&format)) &&
           SUCCEEDED(imaging.CreateComponentInfo(format, info.Out())) &&
           SUCCEEDED(
               info->QueryInterface(IID_IWICPixelFormatInfo2, reinterpret_cast<void**>(formatInfo.Out()))) &&
           SUCCEEDED(formatInfo->SupportsTransparency(&transparent)) && transparent;
}

class BitmapPicture final : public WindowsPicture {
  public:
    BitmapPicture(IWICImagingFactory& imaging, std::string path, PixelSize stored, int orientation)
        : imaging_(imaging)
        , path_(std::move(path))
        , stored_(stored)
        , orientation_(orientation) {}

    PixelSize Size() const override { return IsTurned(orientation_) ? Turned(stored_) : stored_; }

    bool Paint(HDC dc, const PixelRect& target, std::string& why) const override {
        ComPointer<IWICBitmapDecoder> decoder;
        ComPointer<IWICBitmapFrameDecode> frame;
        if (FAILED(imaging_.CreateDecoderFromFilename(WidePath(path_).c_str(), nullptr, GENERIC_READ,
                                                      WICDecodeMetadataCacheOnDemand, decoder.Out())) ||
            FAILED(decoder->GetFrame(0, frame.Out()))) {
            why = "Can't open the picture [" + path_ + "]";
            return false;
        }
        const PixelSize wanted = IsTurned(orientation_) ? PixelSize{target.height, target.width}
                                                        : PixelSize{target.width, target.height};
        const bool painted = HasAlpha(imaging_, frame.Get()) ? PaintOver(dc, target, wanted, frame.Get())
                                                             : PaintOpaque(dc, target, wanted, frame.Get());
        if (!painted) why = "Can't decode the picture [" + path_ + "]";
        return painted;
    }

  private:
    bool PaintOpaque(HDC dc, const PixelRect& target, PixelSize wanted, IWICBitmapFrameDecode* frame) const {
        Pixels pixels({1, 1}, 3);
        if (!DecodeReduced(frame, wanted, pixels)) {
            ComPointer<IWICBitmapSource> converted;
            if (FAILED(WICConvertBitmapSource(GUID_WICPixelFormat24bppBGR, frame, converted.Out())))
                return false;
            pixels = Pixels(stored_, 3);
            if (!CopyAll(converted.Get(), pixels)) return false;
        }
        pixels = Upright(std::move(pixels), orientation_);
        const BITMAPINFO info = pixels.Header();
        const int before = SetStretchBltMode(dc, HALFTONE);
        SetBrushOrgEx(dc, 0, 0, nullptr);
        const int lines =
            StretchDIBits(dc, target.x, target.y, target.width, target.height, 0, 0, pixels.size.width,
                          pixels.size.height, pixels.bytes.data(), &info, DIB_RGB_COLORS, SRCCOPY);
        SetStretchBltMode(dc, before);
        return lines > 0;
    }

    // Has the decoder itself leave out what a smaller target does not need: an eighth of the work for a large
    // photograph. False where it cannot.
    bool DecodeReduced(IWICBitmapFrameDecode* frame, PixelSize wanted, Pixels& out) const {
        if (wanted.width * 2 > stored_.width || wanted.height * 2 > stored_.height) return false;
        ComPointer<ReducedDecode> transform;
        if (FAILED(frame->QueryInterface(reducedDecodeId, reinterpret_cast<void**>(transform.Out()))))
            return false;
        auto width = static_cast<UINT>(wanted.width);
        auto height = static_cast<UINT>(wanted.height);
        WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
        if (FAILED(transform->GetClosestSize(&width, &height)) || width < static_cast<UINT>(wanted.width) ||
            width >= static_cast<UINT>(stored_.width) || FAILED(transform->GetClosestPixelFormat(&format)) ||
            !IsEqualGUID(format, GUID_WICPixelFormat24bppBGR)) {
            return false;
        }
        out = Pixels({static_cast<int>(width), static_cast<int>(height)}, 3);
        return SUCCEEDED(transform->CopyPixels(nullptr, width, height, &format, WICBitmapTransformRotate0,
                                               static_cast<UINT>(out.Stride()),
                                               static_cast<UINT>(out.bytes.size()), out.bytes.data()));
    }

    bool PaintOver(HDC dc, const PixelRect& target, PixelSize wanted, IWICBitmapFrameDecode* frame) const {
        ComPointer<IWICBitmapSource> converted;
        ComPointer<IWICBitmapScaler> scaler;
        if (FAILED(WICConvertBitmapSource(GUID_WICPixelFormat32bppPBGRA, frame, converted.Out())))
            return false;
        IWICBitmapSource* source = converted.Get();
        PixelSize size = stored_;
        // Reduced in good quality here; enlarged, if need be, by the blending, which knows no smooth mode.
        if (wanted.width < stored_.width && wanted.height < stored_.height &&
            SUCCEEDED(imaging_.CreateBitmapScaler(scaler.Out())) &&
            SUCCEEDED(scaler->Initialize(source, static_cast<UINT>(wanted.width),
                                         static_cast<UINT>(wanted.height), WICBitmapInterpolationModeFant))) {
            source = scaler.Get();
            size = wanted;
        }
        Pixels pixels(size, 4);
        if (!CopyAll(source, pixels)) return false;
        return Blend(dc, target, Upright(std::move(pixels), orientation_));
    }

    static bool Blend(HDC dc, const PixelRect& target, Pixels pixels) {
        const HDC memory = CreateCompatibleDC(dc);
        const BITMAPINFO info = pixels.Header();
        void* bits = nullptr;
        const HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        bool blended = false;
        if (bitmap) {
            std::copy(pixels.bytes.begin(), pixels.bytes.end(), static_cast<std::uint8_t*>(bits));
            const HGDIOBJ before = SelectObject(memory, bitmap);
            blended = AlphaBlend(dc, target.x, target.y, target.width, target.height, memory, 0, 0,
                                 pixels.size.width, pixels.size.height, {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA});
            SelectObject(memory, before);
            DeleteObject(bitmap);
        }
        DeleteDC(memory);
        return blended;
    }

    IWICImagingFactory& imaging_;
    std::string path_;
    PixelSize stored_;
    int orientation_;
};

// Photographs tell it in notes of their own, which not every build of the component reads; other formats in
// the component's metadata.
int OrientationOf(const std::wstring& path, IWICBitmapFrameDecode* frame) {
    std::string beginning(ExifReach, '\0');
    DWORD count = 0;
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        ReadFile(file, beginning.data(), static_cast<DWORD>(beginning.size()), &count, nullptr);
        CloseHandle(file);
    }
    if (const int orientation = ExifOrientation({beginning.data(), count}); orientation != upright)
        return orientation;

    ComPointer<IWICMetadataQueryReader> metadata;
    PROPVARIANT value{};
    if (FAILED(frame->GetMetadataQueryReader(metadata.Out())) ||
        FAILED(metadata->GetMetadataByName(L"/ifd/{ushort=274}", &value))) {
        return upright;
    }
    const int orientation = value.vt == VT_UI2 ? value.uiVal : upright;
    PropVariantClear(&value);
    return orientation >= 1 && orientation <= 8 ? orientation : upright;
}

} // namespace

std::unique_ptr<Picture> LoadBitmapPicture(IWICImagingFactory& imaging, const std::string& path,
                                           std::string& why) {
    const std::wstring wide = WidePath(path);
    if (GetFileAttributesW(wide.c_str()) == INVALID_FILE_ATTRIBUTES) {
        why = "File not found: [" + path + "]";
        return nullptr;
    }
    ComPointer<IWICBitmapDecoder> decoder;
    ComPointer<IWICBitmapFrameDecode> frame;
    UINT width = 0;
    UINT height = 0;
    constexpr UINT largestSide = 1U << 20;
    if (FAILED(imaging.CreateDecoderFromFilename(wide.c_str(), nullptr, GENERIC_READ,
                                                 WICDecodeMetadataCacheOnDemand, decoder.Out())) ||
        FAILED(decoder->GetFrame(0, frame.Out())) || FAILED(frame->GetSize(&width, &height)) || width == 0 ||
        height == 0 || width > largestSide || height > largestSide) {
        why = "No picture of a known format: [" + path + "]";
        return nullptr;
    }
    return std::make_unique<BitmapPicture>(imaging, path,
                                           PixelSize{static_cast<int>(width), static_cast<int>(height)},
                                           OrientationOf(wide, frame.Get()));
}

} // namespace quorvane
