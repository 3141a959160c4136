// What only the readers of Linux can show, besides what every platform's do.
#include "platform/linux/drawing/child.h"
#include "platform/linux/drawing/drawing.h"
#include "tests/contracts/picture_contract.h"
#include "tests/contracts/surface_contract.h"

#include <QBuffer>
#include <QImage>

#include <sys/stat.h>
#include <unistd.h>

namespace quorvane {
namespace {

namespace fs = std::filesystem;
using namespace pictures;

std::unique_ptr<Drawing> MakeLinuxDrawing() {
    return std::make_unique<LinuxDrawing>();
}

INSTANTIATE_TEST_SUITE_P(Linux, SurfaceContract, testing::Values(&MakeLinuxDrawing));
INSTANTIATE_TEST_SUITE_P(Linux, PictureContract, testing::Values(&MakeLinuxDrawing));

class PictureTest : public testing::Test, protected PictureBench {
  protected:
    PictureTest()
        : PictureBench(MakeLinuxDrawing()) {}
};

std::string Encoded(const QImage& image, const char* format) {
    QBuffer buffer;
    EXPECT_TRUE(buffer.open(QIODevice::WriteOnly) && image.save(&buffer, format));
    return buffer.data().toStdString();
}

// A picture of these colours, as a file.
std::string Painted(PixelSize size, const std::function<Color(int x, int y)>& colorAt, const char* format) {
    QImage image(size.width, size.height, QImage::Format_RGB32);
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            image.setPixel(x, y, qRgb(Red(colorAt(x, y)), Green(colorAt(x, y)), Blue(colorAt(x, y))));
    return Encoded(image, format);
}

TEST_F(PictureTest, ReadsWhatNotEverySystemCan) {
    ExpectReads({{"inks.jpg", {64, 48}, 12}, {"quarters.webp", {64, 48}, 12}, {"quarters.svg", {16, 12}, 0}});
}

TEST_F(PictureTest, TornAndSpoiltFilesAreSurvived) {
    const auto surface = drawing->CreateSurface({50, 30});
    for (const auto& entry : fs::directory_iterator(QUORVANE_PICTURES)) {
        const std::string whole = Content(entry.path().filename());
        for (std::size_t step = 0; step < 24; ++step) {
            const std::size_t at = whole.size() * step / 24;
            std::string spoilt = whole;
            spoilt[at] = static_cast<char>(spoilt[at] ^ 0xA5);
            for (const std::string& content : {whole.substr(0, at), spoilt}) {
                const auto picture = Load(content);
                if (picture) surface->StretchPicture(*picture, {-5, -5, 60, 40}, why);
            }
        }
    }
}

TEST_F(PictureTest, NamesAreBytes) {
    for (const auto& entry : fs::directory_iterator(QUORVANE_PICTURES)) {
        const fs::path latin = folder.Path() / "caf\xE9";
        fs::copy_file(entry, latin, fs::copy_options::overwrite_existing);
        const auto picture = drawing->LoadPicture(latin, why);
        ASSERT_NE(picture, nullptr) << entry.path() << why;
        Drawn(*picture, {20, 12});
    }
}

TEST_F(PictureTest, ADrawingReadsNothingElse) {
    const std::string png = Content("quarters.png");
    std::ofstream(folder.Path() / "red.png") << png;
    const std::string pipe = Path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0); // whoever opens it never comes back
    const auto drawingOf = [](const std::string& reference) {
        return "<svg width='8' height='8' xmlns:xlink='x'><image width='8' height='8' xlink:href='" +
               reference + "'/></svg>";
    };
    const auto inlined = [](const std::string& content) {
        return "data:image/png;base64," + QByteArray::fromStdString(content).toBase64().toStdString();
    };
    for (const std::string& content :
         {drawingOf(Path("red.png")), drawingOf("file://" + Path("red.png")), drawingOf(pipe),
          drawingOf(inlined(drawingOf(pipe))),
          "<?xml-stylesheet type=\"text/css\" href=\"" + pipe + "\"?><svg width='8' height='8'/>"}) {
        const auto picture = Load(content);
        ASSERT_NE(picture, nullptr) << why;
        EXPECT_EQ(At(Drawn(*picture, {8, 8})->Pixels(), 1, 1), Rgb(0, 0, 0)) << content;
    }
    EXPECT_EQ(At(Drawn(*Load(drawingOf(inlined(png))), {8, 8})->Pixels(), 1, 1), Red255);
}

TEST_F(PictureTest, AChildThatHangsIsEnded) {
    const auto hangs = [](std::FILE*) { return pause() == 0; };
    EXPECT_TRUE(OutputOfChild(hangs, std::chrono::milliseconds(50)).isEmpty());
    const auto writes = [](std::FILE* out) { return std::fputs("done", out) >= 0; };
    EXPECT_EQ(OutputOfChild(writes, std::chrono::seconds(60)), "done");
}

TEST_F(PictureTest, TakesTheMeanWhenItReduces) {
    const auto grey = [](int value) { return Rgb(value, value, value); };
    const auto checks = Load(Painted(
        {66, 66}, [&](int x, int y) { return grey((x + y) % 2 * 255); }, "png"));
    const auto surface = Drawn(*checks, {33, 33});
    for (const int at : {0, 16, 32})
        EXPECT_TRUE(Near(At(surface->Pixels(), at, at), grey(127), 1)) << at;
    // Three pixels become two: a third of the middle one belongs to neither side alone.
    const auto three = Drawn(*Load(Painted(
                                 {3, 1}, [&](int x, int) { return grey(90 * x); }, "png")),
                             {2, 1});
    EXPECT_TRUE(Near(At(three->Pixels(), 0, 0), grey(30), 1));
    EXPECT_TRUE(Near(At(three->Pixels(), 1, 0), grey(150), 1));
}

TEST_F(PictureTest, RunsLinearlyWhenItEnlarges) {
    const auto two = Load(Painted(
        {2, 2}, [](int x, int) { return Rgb(240 * x, 240 * x, 240 * x); }, "png"));
    const auto surface = Drawn(*two, {8, 8});
    constexpr int Wanted[] = {0, 0, 30, 90, 150, 210, 240, 240};
    for (int x = 0; x < 8; ++x)
        EXPECT_NEAR(Red(At(surface->Pixels(), x, x)), Wanted[x], 1) << x;
}

TEST_F(PictureTest, ALargePictureIsReadByRows) {
    // As many pixels as no memory limit of a toolkit allows, in one colour, which makes a small file.
    QImage white(12000, 12000, QImage::Format_Mono);
    white.fill(1);
    const auto picture = Load(Encoded(white, "png"));
    ASSERT_NE(picture, nullptr) << why;
    EXPECT_TRUE(Near(At(Drawn(*picture, {200, 200})->Pixels(), 199, 199), White, 2));
}

TEST_F(PictureTest, DrawsWhatATornPhotographHolds) {
    const PixelSize size{320, 240};
    const std::string whole = Painted(size, Speckles, "jpg");
    const auto picture = Load(whole.substr(0, whole.size() / 2));
    ASSERT_NE(picture, nullptr) << why;
    const Color ground = Rgb(1, 2, 3);
    const auto surface = drawing->CreateSurface(size);
    surface->Fill({0, 0, size.width, size.height}, ground);
    EXPECT_TRUE(surface->StretchPicture(*picture, {0, 0, size.width, size.height}, why)) << why;
    EXPECT_NE(At(surface->Pixels(), 100, 20), ground);
    EXPECT_EQ(At(surface->Pixels(), 100, 220), ground);
}

TEST_F(PictureTest, SaysWhyInTheSystemsWordsAndWaitsForNobody) {
    const std::string pipe = Path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::pair<std::string, const char*> rows[] = {
        {Save("Dear Ann,\n"), "no picture of a known format"},
        {Save(""), "the file is empty"},
        {Path("gone"), "No such file or directory"},
        {pipe, "not a regular file"},
        {folder.Path(), "not a regular file"},
    };
    for (const auto& [path, words] : rows) {
        EXPECT_EQ(drawing->LoadPicture(path, why), nullptr) << path;
        EXPECT_EQ(why, words) << path;
    }
}

TEST_F(PictureTest, RefusesAbsurdSizes) {
    std::string bitmap = Content("quarters.bmp"), jpeg = Content("quarters.jpg"),
                gif = Content("quarters.gif");
    bitmap.replace(18, 8, "\xFF\xFF\xFF\x7F\xFF\xFF\xFF\x7F", 8);
    jpeg.replace(jpeg.find("\xFF\xC0") + 5, 4, "\xFF\xDC\xFF\xDC", 4);
    gif.replace(6, 4, "\xFF\xFF\xFF\xFF", 4);
    for (const std::string& content : {bitmap, gif}) {
        const auto picture = Load(content);
        if (picture) drawing->CreateSurface({8, 8})->StretchPicture(*picture, {0, 0, 8, 8}, why);
    }
    EXPECT_EQ(Load(jpeg), nullptr);
    EXPECT_NE(why.find("too large"), std::string::npos) << why;
}

constexpr PixelSize CanvasSize{501, 400}; // several stripes of rows that are filled up to four bytes
constexpr PixelRect All{0, 0, CanvasSize.width, CanvasSize.height}, Fitted{0, 33, CanvasSize.width, 334};

struct Placed {
    std::string content; // of the picture's file
    std::vector<PixelRect> targets;
};

class CanvasTest : public testing::Test, protected PictureBench {
  protected:
    CanvasTest()
        : PictureBench(std::make_unique<LinuxDrawing>()) {}

    // What a change paints. False where a picture could not be.
    bool Paint(Surface& surface, const Placed& placed, bool text) {
        surface.GradientTriangle({0, 0, -256, 0, 0}, {501, 0, 0, -256, 0}, {0, 400, 0, 0, -256});
        surface.GradientRectangle({300, 50, -256, 0, 0}, {390, 350, 0, -256, 9},
                                  GradientDirection::TopToBottom);
        surface.Line(20, 390, 480, 10, 3.5, Rgb(9, 8, 7));
        if (text) surface.PrintText(150, 5, {"", 20}, Rgb(255, 255, 255), "below the picture");
        picture = Load(placed.content);
        for (const PixelRect& target : placed.targets)
            if (!surface.StretchPicture(*picture, target, why)) return false;
        if (text) surface.Fill({200, 60, 120, 60}, Rgb(50, 60, 70));
        for (int line = 0; text && line < 5; ++line)
            surface.PrintText(203, 60 + 21 * line, {"", 14, false, line == 3}, Rgb(250, 240, 9),
                              "\u0160g, 31");
        return true;
    }

    std::unique_ptr<Picture> picture;
};

TEST_F(CanvasTest, WritesWhatASurfaceWouldWrite) {
    const std::string jpeg = Content("quarters.jpg");
    std::vector<Placed> cases{
        {jpeg, {}},
        {jpeg, {All}},
        {jpeg, {{-40, -70, 700, 900}}},
        {jpeg, {{205, 170, 90, 60}}},
        {jpeg, {{0, 0, 300, 300}, {300, 0, 300, 300}, {0, 300, 300, 300}}},
        {jpeg, {{600, 0, 20, 20}}},
        {jpeg.substr(0, jpeg.size() - 20), {Fitted}},
        {Content("half_clear.png"), {Fitted}},
        {Content("interlaced.png"), {All}},
        {Content("quarters.svg"), {Fitted}},
    };
    for (char number = 2; number <= 8; ++number)
        cases.push_back({WithOrientation(jpeg, number), {Fitted}});
    for (std::size_t number = 0; number < cases.size(); ++number) {
        for (const bool text : {false, true}) {
            const auto surface = drawing->CreateSurface(CanvasSize),
                       canvas = drawing->CreateCanvas(CanvasSize);
            test::StringWriter once, striped, whole;
            EXPECT_TRUE(Paint(*surface, cases[number], text)) << number << why;
            ASSERT_TRUE(surface->WriteBitmap(once));
            EXPECT_TRUE(Paint(*canvas, cases[number], text)) << number << why;
            ASSERT_TRUE(canvas->WriteBitmap(striped));
            EXPECT_EQ(canvas->LateFailure(), "");
            EXPECT_TRUE(once.bytes == striped.bytes) << number << (text ? " with text" : "");
            // Once the pixels are asked for, the canvas is a surface.
            ASSERT_EQ(canvas->Pixels().size, CanvasSize);
            ASSERT_TRUE(canvas->WriteBitmap(whole));
            EXPECT_TRUE(once.bytes == whole.bytes) << number << (text ? " with text" : "");
        }
    }
}

TEST_F(CanvasTest, TellsLateOfADamagedPictureAndOfAFullDisk) {
    const std::string png = Content("quarters.png");
    const Placed torn{png.substr(0, png.size() * 2 / 3), {All}};
    const auto surface = drawing->CreateSurface(CanvasSize), canvas = drawing->CreateCanvas(CanvasSize);
    EXPECT_FALSE(Paint(*surface, torn, false));
    const std::string told = why;
    EXPECT_TRUE(Paint(*canvas, torn, false));
    test::StringWriter once, striped, full;
    ASSERT_TRUE(surface->WriteBitmap(once) && canvas->WriteBitmap(striped));
    EXPECT_EQ(canvas->LateFailure(), told);
    EXPECT_TRUE(once.bytes == striped.bytes);
    full.room = 300'000;
    EXPECT_FALSE(canvas->WriteBitmap(full));
    EXPECT_EQ(drawing->CreateCanvas({0, 5}), nullptr);
}

} // namespace
} // namespace quorvane
