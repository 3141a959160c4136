#include "platform/windows/base/files.h"
#include "platform/windows/drawing/drawing.h"
#include "tests/contracts/surface_contract.h"
#include "tests/platform/windows/temporary_folder.h"

#include <fstream>

namespace quorvane {
namespace {

std::unique_ptr<Drawing> MakeWindowsDrawing() {
    return std::make_unique<WindowsDrawing>();
}

INSTANTIATE_TEST_SUITE_P(Windows, SurfaceContract, testing::Values(&MakeWindowsDrawing));

void PutFile(const std::string& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

Color At(Surface& surface, int x, int y) {
    const std::uint8_t* pixel = surface.Pixels().Row(y) + 3 * x;
    return Rgb(pixel[2], pixel[1], pixel[0]);
}

constexpr Color red = Rgb(255, 0, 0), green = Rgb(0, 255, 0), blue = Rgb(0, 0, 255),
                white = Rgb(255, 255, 255);

// 40 by 20: red and green above, blue and white below.
std::unique_ptr<Surface> FourColours(Drawing& drawing) {
    auto surface = drawing.CreateSurface({40, 20});
    surface->Fill({0, 0, 20, 10}, red);
    surface->Fill({20, 0, 20, 10}, green);
    surface->Fill({0, 10, 20, 10}, blue);
    surface->Fill({20, 10, 20, 10}, white);
    return surface;
}

bool SavePng(Drawing& drawing, Surface& surface, const std::string& path) {
    WindowsFiles files;
    std::string why;
    const auto writer = files.Replace(path, why);
    return writer && drawing.WritePng(surface.Pixels(), *writer) && writer->Commit();
}

// The quarter that a place of the surface shows, give or take the coder's losses.
Color Quarter(Surface& surface, int x, int y) {
    const Color seen = At(surface, x, y);
    for (const Color known : {red, green, blue, white}) {
        if (std::abs(Red(seen) - Red(known)) < 40 && std::abs(Green(seen) - Green(known)) < 40 &&
            std::abs(Blue(seen) - Blue(known)) < 40) {
            return known;
        }
    }
    return seen;
}

void ExpectQuarters(Surface& surface, const PixelRect& area, std::array<Color, 4> expected) {
    const int x = area.x + area.width / 4, y = area.y + area.height / 4;
    const int stepX = area.width / 2, stepY = area.height / 2;
    EXPECT_EQ(Quarter(surface, x, y), expected[0]);
    EXPECT_EQ(Quarter(surface, x + stepX, y), expected[1]);
    EXPECT_EQ(Quarter(surface, x, y + stepY), expected[2]);
    EXPECT_EQ(Quarter(surface, x + stepX, y + stepY), expected[3]);
}

std::string JpegOf(Surface& surface) {
    ComPointer<IWICImagingFactory> imaging;
    CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                     reinterpret_cast<void**>(imaging.Out()));
    ComPointer<IStream> stream;
    ComPointer<IWICBitmapEncoder> encoder;
    ComPointer<IWICBitmapFrameEncode> frame;
    CreateStreamOnHGlobal(nullptr, TRUE, stream.Out());
    imaging->CreateEncoder(GUID_ContainerFormatJpeg, nullptr, encoder.Out());
    encoder->Initialize(stream.Get(), WICBitmapEncoderNoCache);
    encoder->CreateNewFrame(frame.Out(), nullptr);
    frame->Initialize(nullptr);
    const PixelView pixels = surface.Pixels();
    frame->SetSize(static_cast<UINT>(pixels.size.width), static_cast<UINT>(pixels.size.height));
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    frame->SetPixelFormat(&format);
    frame->WritePixels(static_cast<UINT>(pixels.size.height), static_cast<UINT>(pixels.stride),
                       static_cast<UINT>(pixels.stride * pixels.size.height), const_cast<BYTE*>(pixels.top));
    frame->Commit();
    encoder->Commit();
    HGLOBAL memory = nullptr;
    STATSTG status{};
    GetHGlobalFromStream(stream.Get(), &memory);
    stream->Stat(&status, STATFLAG_NONAME);
    std::string bytes(static_cast<const char*>(GlobalLock(memory)),
                      static_cast<std::size_t>(status.cbSize.QuadPart));
    GlobalUnlock(memory);
    return bytes;
}

// The photograph's notes with nothing in them but its orientation.
std::string WithOrientation(const std::string& jpeg, char orientation) {
    std::string notes("\xFF\xE1\x00\x22"
                      "Exif\0\0II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0?\0\0\0\0\0\0\0",
                      36);
    notes[notes.find('?')] = orientation;
    return jpeg.substr(0, 2) + notes + jpeg.substr(2);
}

TEST(WindowsDrawing, PicturesComeBackFromTheirFiles) {
    const TemporaryFolder folder;
    WindowsDrawing drawing;
    const auto original = FourColours(drawing);
    const std::string path = folder.path + "\\Четыре.png";
    ASSERT_TRUE(SavePng(drawing, *original, path));
    std::string why;
    const auto picture = drawing.LoadPicture(path, why);
    ASSERT_TRUE(picture) << why;
    EXPECT_EQ(picture->Size(), (PixelSize{40, 20}));

    const auto surface = drawing.CreateSurface({100, 80});
    EXPECT_TRUE(surface->StretchPicture(*picture, {10, 10, 40, 20}, why));
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 40; ++x)
            ASSERT_EQ(At(*surface, 10 + x, 10 + y), At(*original, x, y)) << x << "," << y;
    }
    EXPECT_EQ(At(*surface, 9, 10), 0);
    EXPECT_EQ(At(*surface, 50, 29), 0);
    EXPECT_TRUE(surface->StretchPicture(*picture, {-20, -20, 140, 120}, why)) << "cut on all sides";
    ExpectQuarters(*surface, {-20, -20, 140, 120}, {red, green, blue, white});
}

TEST(WindowsDrawing, PhotographsAreTurnedUpright) {
    const TemporaryFolder folder;
    WindowsDrawing drawing;
    const std::string jpeg = JpegOf(*FourColours(drawing));
    struct Case {
        char orientation;
        PixelSize size;
        std::array<Color, 4> quarters;
    };
    const Case cases[] = {
        {1, {40, 20}, {red, green, blue, white}}, {2, {40, 20}, {green, red, white, blue}},
        {3, {40, 20}, {white, blue, green, red}}, {4, {40, 20}, {blue, white, red, green}},
        {5, {20, 40}, {red, blue, green, white}}, {6, {20, 40}, {blue, red, white, green}},
        {7, {20, 40}, {white, green, blue, red}}, {8, {20, 40}, {green, white, red, blue}},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(static_cast<int>(row.orientation));
        const std::string path = folder.path + "\\photo" + std::to_string(row.orientation) + ".jpg";
        PutFile(path, WithOrientation(jpeg, row.orientation));
        std::string why;
        const auto picture = drawing.LoadPicture(path, why);
        ASSERT_TRUE(picture) << why;
        EXPECT_EQ(picture->Size(), row.size);
        const auto surface = drawing.CreateSurface({80, 80});
        EXPECT_TRUE(surface->StretchPicture(*picture, {0, 0, 80, 80}, why)) << why;
        ExpectQuarters(*surface, {0, 0, 80, 80}, row.quarters);
    }
}

TEST(WindowsDrawing, MetafilesPlayAtTheirSize) {
    const TemporaryFolder folder;
    WindowsDrawing drawing;
    const std::string enhanced = folder.path + "\\m.emf", placeable = folder.path + "\\m.wmf";
    const int inch = 2540;
    const RECT frame{0, 0, 2 * inch, inch}; // two inches by one
    const HDC dc = CreateEnhMetaFileA(nullptr, enhanced.c_str(), &frame, nullptr);
    SetMapMode(dc, MM_ANISOTROPIC);
    SetWindowExtEx(dc, 200, 100, nullptr);
    SetViewportExtEx(dc, 2 * GetDeviceCaps(dc, LOGPIXELSX), GetDeviceCaps(dc, LOGPIXELSY), nullptr);
    const RECT half{0, 0, 100, 100}, rest{100, 0, 200, 100};
    const HBRUSH redBrush = CreateSolidBrush(red), greenBrush = CreateSolidBrush(green);
    FillRect(dc, &half, redBrush);
    FillRect(dc, &rest, greenBrush);
    const HENHMETAFILE file = CloseEnhMetaFile(dc);
    const HDC screen = GetDC(nullptr);
    std::string bits(GetWinMetaFileBits(file, 0, nullptr, MM_ANISOTROPIC, screen), '\0');
    GetWinMetaFileBits(file, static_cast<UINT>(bits.size()), reinterpret_cast<BYTE*>(bits.data()),
                       MM_ANISOTROPIC, screen);
    ReleaseDC(nullptr, screen);
    DeleteEnhMetaFile(file);
    DeleteObject(redBrush);
    DeleteObject(greenBrush);
    PutFile(placeable,
            std::string("\xD7\xCD\xC6\x9A\0\0\0\0\0\0\xD0\x07\xE8\x03\xE8\x03\0\0\0\0\0\0", 22) + bits);

    const int dots = static_cast<int>(std::lround(1440 / drawing.TwipsPerPixelX()));
    for (const std::string& path : {enhanced, placeable}) {
        SCOPED_TRACE(path);
        std::string why;
        const auto picture = drawing.LoadPicture(path, why);
        ASSERT_TRUE(picture) << why;
        EXPECT_NEAR(picture->Size().width, 2 * dots, 2);
        EXPECT_NEAR(picture->Size().height, dots, 2);
        const auto surface = drawing.CreateSurface({120, 60});
        EXPECT_TRUE(surface->StretchPicture(*picture, {0, 0, 120, 60}, why)) << why;
        ExpectQuarters(*surface, {0, 0, 120, 60}, {red, green, red, green});
    }
}

TEST(WindowsDrawing, RefusesWhatIsNoPicture) {
    const TemporaryFolder folder;
    WindowsDrawing drawing;
    const auto original = FourColours(drawing);
    ASSERT_TRUE(SavePng(drawing, *original, folder.path + "\\whole.png"));
    std::string png = *WindowsFiles().Read(folder.path + "\\whole.png");
    PutFile(folder.path + "\\empty.jpg", "");
    PutFile(folder.path + "\\text.bmp", "This is no picture at all, whatever its name says.");
    PutFile(folder.path + "\\noise.emf", std::string(500, '\x7F'));
    PutFile(folder.path + "\\short.wmf", "\xD7\xCD\xC6\x9A");
    for (const char* name : {"gone.png", "gone.emf", "empty.jpg", "text.bmp", "noise.emf", "short.wmf", ""}) {
        std::string why;
        EXPECT_EQ(drawing.LoadPicture(folder.path + "\\" + name, why), nullptr) << name;
        EXPECT_FALSE(why.empty()) << name;
    }

    PutFile(folder.path + "\\cut.png", png.substr(0, png.size() / 2));
    std::string why;
    const auto cut = drawing.LoadPicture(folder.path + "\\cut.png", why);
    const auto surface = drawing.CreateSurface({40, 20});
    const bool refused = !cut || !surface->StretchPicture(*cut, {0, 0, 40, 20}, why);
    EXPECT_TRUE(!refused || !why.empty())
        << "a decoder may show what is there, but must say why where it does not";
}

} // namespace
} // namespace quorvane
