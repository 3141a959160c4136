#include "platform/windows/drawing/picture.h"

#include "platform/painting/exif.h"
#include "platform/painting/resample.h"
#include "platform/painting/tiling.h"
#include "platform/windows/base/wide.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace quorvane {
namespace {

// The interface by which a decoder decodes at a smaller scale; the cross compiler's headers do not have it.
constexpr GUID ReducedDecodeId{0x3B16811B, 0x6A43, 0x4EC9, {0xB7, 0x13, 0x3D, 0x5A, 0x0C, 0x13, 0xB9, 0x40}};
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

constexpr int BandRows = 16; // decoded at a time
constexpr UINT LargestSide = 1U << 20;

// Rows of decoded pixels, blue first.
struct Pixels {
    PixelSize size;
    std::size_t bytesPerPixel = 4;
    std::vector<std::uint8_t> bytes;

    Pixels() = default;
    Pixels(PixelSize wanted, std::size_t pixelBytes)
        : size(wanted)
        , bytesPerPixel(pixelBytes)
        , bytes(Stride() * static_cast<std::size_t>(wanted.height)) {}
    std::size_t Stride() const { return static_cast<std::size_t>(size.width) * bytesPerPixel; }
    const std::uint8_t* Row(int y) const { return bytes.data() + static_cast<std::size_t>(y) * Stride(); }
};

// Fills `into` with the rows from `top` on.
bool CopyRows(IWICBitmapSource* source, int top, Pixels& into) {
    const WICRect part{0, top, into.size.width, into.size.height};
    return SUCCEEDED(source->CopyPixels(&part, static_cast<UINT>(into.Stride()),
                                        static_cast<UINT>(into.bytes.size()), into.bytes.data()));
}

// Pictures with a share of opacity in each pixel are laid over the surface.
bool HasAlpha(IWICImagingFactory& imaging, IWICBitmapSource* source) {
    WICPixelFormatGUID format{};
    ComPointer<IWICComponentInfo> info;
    ComPointer<IWICPixelFormatInfo2> formatInfo;
    BOOL transparent = FALSE;
    if (FAILED(source->GetPixelFormat(&format))) return false;
    // A palette may hold a transparent colour.
    if (IsEqualGUID(format, GUID_WICPixelFormat8bppIndexed) ||
        IsEqualGUID(format, GUID_WICPixelFormat4bppIndexed)) {
        return true;
    }
    return SUCCEEDED(imaging.CreateComponentInfo(format, info.Out())) &&
           SUCCEEDED(
               info->QueryInterface(IID_IWICPixelFormatInfo2, reinterpret_cast<void**>(formatInfo.Out()))) &&
           SUCCEEDED(formatInfo->SupportsTransparency(&transparent)) && transparent;
}

// Puts a row into the four bytes a pixel that the resampler works on.
void PutRow(const std::uint8_t* row, const Pixels& pixels, std::uint8_t* into) {
    if (pixels.bytesPerPixel == 4) {
        std::memcpy(into, row, pixels.Stride());
        return;
    }
    for (int x = 0; x < pixels.size.width; ++x, row += 3, into += 4) {
        std::memcpy(into, row, 3);
        into[3] = 255;
    }
}

class BitmapPicture final : public WindowsPicture {
  public:
    BitmapPicture(IWICImagingFactory& imaging, std::string path, PixelSize stored, Orientation orientation,
                  RowPainter::Mode mode)
        : imaging_(imaging)
        , path_(std::move(path))
        , stored_(stored)
        , orientation_(orientation)
        , mode_(mode) {}

    PixelSize Size() const override { return orientation_.Upright(stored_); }

    bool Paint(const Canvas& canvas, HDC, const PixelRect& target, std::string& why) const override {
        const bool painted = tiling_.Paint(canvas, target, orientation_, mode_,
                                           [this](RowPainter& painter) { return Decode(painter); });
        if (!painted) why = "the picture is damaged";
        return painted;
    }

  private:
    bool Decode(RowPainter& painter) const {
        ComPointer<IWICBitmapDecoder> decoder;
        ComPointer<IWICBitmapFrameDecode> frame;
        ComPointer<IWICBitmapSource> converted;
        if (FAILED(imaging_.CreateDecoderFromFilename(WidePath(path_).c_str(), nullptr, GENERIC_READ,
                                                      WICDecodeMetadataCacheOnDemand, decoder.Out())) ||
            FAILED(decoder->GetFrame(0, frame.Out()))) {
            return false;
        }
        Pixels reduced;
        if (mode_ == RowPainter::Mode::Copy && DecodeReduced(frame.Get(), painter.StoredSize(), reduced)) {
            PaintWhole(reduced, painter);
            return true;
        }
        return SUCCEEDED(
                   WICConvertBitmapSource(GUID_WICPixelFormat32bppPBGRA, frame.Get(), converted.Out())) &&
               PaintBands(converted.Get(), painter);
    }

    // Has the decoder itself leave out what a smaller target does not need: an eighth of the work for a large
    // photograph. False where it cannot.
    bool DecodeReduced(IWICBitmapFrameDecode* frame, PixelSize wanted, Pixels& out) const {
        ComPointer<ReducedDecode> reducer;
        if (wanted.width * 2 > stored_.width || wanted.height * 2 > stored_.height ||
            FAILED(frame->QueryInterface(ReducedDecodeId, reinterpret_cast<void**>(reducer.Out())))) {
            return false;
        }
        auto width = static_cast<UINT>(wanted.width);
        auto height = static_cast<UINT>(wanted.height);
        WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
        if (FAILED(reducer->GetClosestSize(&width, &height)) || width < static_cast<UINT>(wanted.width) ||
            height < static_cast<UINT>(wanted.height) || width >= static_cast<UINT>(stored_.width) ||
            FAILED(reducer->GetClosestPixelFormat(&format)) ||
            !IsEqualGUID(format, GUID_WICPixelFormat24bppBGR)) {
            return false;
        }
        out = Pixels({static_cast<int>(width), static_cast<int>(height)}, 3);
        return SUCCEEDED(reducer->CopyPixels(nullptr, width, height, &format, WICBitmapTransformRotate0,
                                             static_cast<UINT>(out.Stride()),
                                             static_cast<UINT>(out.bytes.size()), out.bytes.data()));
    }

    static void PaintWhole(const Pixels& pixels, RowPainter& painter) {
        Resampler resampler = MakeResampler(pixels.size, painter);
        for (int y = resampler.FirstRow(); y < resampler.EndRow(); ++y) {
            PutRow(pixels.Row(y), pixels, resampler.InputRow());
            resampler.Push();
        }
    }

    // Never holds more of a large picture than a few rows.
    bool PaintBands(IWICBitmapSource* source, RowPainter& painter) const {
        Resampler resampler = MakeResampler(stored_, painter);
        bool decoded = true;
        for (int y = resampler.FirstRow(); decoded && y < resampler.EndRow(); y += BandRows) {
            Pixels band({stored_.width, std::min(BandRows, resampler.EndRow() - y)}, 4);
            decoded = CopyRows(source, y, band);
            for (int row = 0; decoded && row < band.size.height; ++row) {
                PutRow(band.Row(row), band, resampler.InputRow());
                resampler.Push();
            }
        }
        return decoded;
    }

    static Resampler MakeResampler(PixelSize input, RowPainter& painter) {
        return Resampler(input, painter.StoredSize(), painter.StoredPart(),
                         [&painter](int row, const std::uint8_t* pixels) { painter.Put(row, pixels); });
    }

    IWICImagingFactory& imaging_;
    std::string path_;
    PixelSize stored_;
    Orientation orientation_;
    RowPainter::Mode mode_;
    mutable Tiling tiling_;
};

// Photographs tell it in notes that not every build of the component reads; other formats in its metadata.
Orientation StoredOrientation(std::string_view head, IWICBitmapFrameDecode* frame) {
    if (const std::string_view notes = FindExif(head); !notes.empty())
        return OrientationOf(ExifOrientation(notes));
    ComPointer<IWICMetadataQueryReader> metadata;
    PROPVARIANT value{};
    if (FAILED(frame->GetMetadataQueryReader(metadata.Out())) ||
        FAILED(metadata->GetMetadataByName(L"/ifd/{ushort=274}", &value))) {
        return {};
    }
    const int orientation = value.vt == VT_UI2 ? value.uiVal : 1;
    PropVariantClear(&value);
    return OrientationOf(orientation);
}

} // namespace

std::unique_ptr<Picture> LoadBitmapPicture(IWICImagingFactory& imaging, const std::string& path,
                                           std::string_view head, std::string& why) {
    ComPointer<IWICBitmapDecoder> decoder;
    ComPointer<IWICBitmapFrameDecode> frame;
    UINT width = 0;
    UINT height = 0;
    if (FAILED(imaging.CreateDecoderFromFilename(WidePath(path).c_str(), nullptr, GENERIC_READ,
                                                 WICDecodeMetadataCacheOnDemand, decoder.Out())) ||
        FAILED(decoder->GetFrame(0, frame.Out())) || FAILED(frame->GetSize(&width, &height))) {
        why = "no picture of a known format";
        return nullptr;
    }
    if (width == 0 || height == 0 || width > LargestSide || height > LargestSide) {
        why = "the picture is too large, " + std::to_string(width) + " by " + std::to_string(height) +
              " pixels";
        return nullptr;
    }
    const auto mode = HasAlpha(imaging, frame.Get()) ? RowPainter::Mode::Blend : RowPainter::Mode::Copy;
    return std::make_unique<BitmapPicture>(imaging, path,
                                           PixelSize{static_cast<int>(width), static_cast<int>(height)},
                                           StoredOrientation(head, frame.Get()), mode);
}

} // namespace quorvane
