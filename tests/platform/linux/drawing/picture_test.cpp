#include "platform/files.h"
#include "platform/linux/drawing/child.h"
#include "platform/linux/drawing/drawing.h"
#include "platform/painting/bitmap_file.h"
#include "tests/platform/linux/drawing/samples.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace quorvane {
namespace {

namespace fs = std::filesystem;

class PictureTest : public testing::Test {
  protected:
    ~PictureTest() override { fs::remove_all(folder); }

    std::string Save(const std::string& content) {
        const fs::path path = folder / std::to_string(++files);
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }
    std::unique_ptr<Picture> Load(const std::string& content) {
        return drawing.LoadPicture(Save(content), why);
    }

    static Color At(const PixelView& pixels, int x, int y) {
        const std::uint8_t* pixel = pixels.Row(y) + 3 * x;
        return Rgb(pixel[2], pixel[1], pixel[0]);
    }
    static bool Close(Color a, Color b, int most) {
        return std::abs(Red(a) - Red(b)) <= most && std::abs(Green(a) - Green(b)) <= most &&
               std::abs(Blue(a) - Blue(b)) <= most;
    }
    static std::string Text(Color color) {
        return std::to_string(Red(color)) + " " + std::to_string(Green(color)) + " " +
               std::to_string(Blue(color));
    }

    // The quarters of a picture drawn over the whole surface.
    void ExpectQuarters(const PixelView& pixels, int most, const std::string& what) {
        const PixelSize size = pixels.size;
        for (const int y : {size.height / 4, size.height * 3 / 4}) {
            for (const int x : {size.width / 4, size.width * 3 / 4}) {
                const Color wanted = samples::Quarters(x, y, size);
                EXPECT_TRUE(Close(At(pixels, x, y), wanted, most))
                    << what << " at " << x << "," << y << ": " << Text(At(pixels, x, y)) << ", not "
                    << Text(wanted);
            }
        }
    }

    // Cut at the surface's edges, a picture shows the same pixels as the whole one does there.
    void ExpectCutAlike(const Picture& picture, PixelSize drawn, const std::string& what) {
        const auto whole = drawing.CreateSurface(drawn), part = drawing.CreateSurface({31, 23});
        ASSERT_TRUE(whole->StretchPicture(picture, {0, 0, drawn.width, drawn.height}, why)) << what << why;
        const int left = drawn.width / 3, top = drawn.height / 3;
        ASSERT_TRUE(part->StretchPicture(picture, {-left, -top, drawn.width, drawn.height}, why))
            << what << why;
        int different = 0;
        for (int y = 0; y < 23; ++y)
            for (int x = 0; x < 31; ++x)
                different += !Close(At(part->Pixels(), x, y), At(whole->Pixels(), x + left, y + top), 1);
        EXPECT_EQ(different, 0) << what;
    }

    LinuxDrawing drawing;
    std::string why;
    fs::path folder = [] {
        std::string name = fs::temp_directory_path() / "quorvane-pictures-XXXXXX";
        return fs::path(mkdtemp(name.data()));
    }();
    int files = 0;
};

samples::Painter QuartersOf(PixelSize size) {
    return [size](int x, int y) { return samples::Quarters(x, y, size); };
}

Color Speckles(int x, int y) {
    const unsigned int h = static_cast<unsigned int>(x * 7919 + y * 104729) * 2654435761U;
    return Rgb(static_cast<int>(h >> 8), static_cast<int>(h >> 16), static_cast<int>(h >> 24));
}

struct Sample {
    std::string name;
    std::string content;
    PixelSize size;
    int tolerance;
};

std::vector<Sample> AllQuarters() {
    const PixelSize size{64, 48};
    const auto painter = QuartersOf(size);
    return {
        {"jpeg", samples::Jpeg(size, painter), size, 12},
        {"progressive jpeg", samples::Jpeg(size, painter, {0, false, false, true}), size, 12},
        {"jpeg of inks", samples::Jpeg(size, painter, {0, false, true, false}), size, 12},
        {"png", samples::ByQt(size, painter, "png"), size, 0},
        {"bmp", samples::ByQt(size, painter, "bmp"), size, 0},
        {"tiff", samples::ByQt(size, painter, "tiff"), size, 0},
        {"webp", samples::ByQt(size, painter, "webp"), size, 12},
        {"gif", samples::Gif(), {16, 12}, 0},
        {"interlaced gif", samples::Gif(true), {16, 12}, 0},
        {"interlaced png", samples::InterlacedPng(size), size, 0},
        {"tiff of one strip", samples::OneStripTiff(size), size, 0},
        {"top-down bmp", samples::TopDown(samples::ByQt(size, painter, "bmp")), size, 0},
        {"run-length bitmap", samples::RunLengthBitmap(), {16, 12}, 0},
        {"svg", samples::Svg(), {16, 12}, 0},
    };
}

TEST_F(PictureTest, ReadsEveryFormatReducedAndEnlarged) {
    for (const Sample& sample : AllQuarters()) {
        const auto picture = Load(sample.content);
        ASSERT_NE(picture, nullptr) << sample.name << ": " << why;
        EXPECT_EQ(picture->Size(), sample.size) << sample.name;
        for (const PixelSize size : {PixelSize{20, 12}, sample.size, {200, 120}}) {
            const auto surface = drawing.CreateSurface(size);
            ASSERT_TRUE(surface->StretchPicture(*picture, {0, 0, size.width, size.height}, why))
                << sample.name << ": " << why;
            ExpectQuarters(surface->Pixels(), sample.tolerance,
                           sample.name + " " + std::to_string(size.width) + " wide");
        }
        ExpectCutAlike(*picture, {120, 90}, sample.name);
        ExpectCutAlike(*picture, {50, 40}, sample.name);
    }
}

TEST_F(PictureTest, NamesAreBytes) {
    std::vector<Sample> all = AllQuarters();
    all.push_back({"wmf", samples::WindowsMetafile(), {}, 0});
    all.push_back({"emf", samples::EnhancedMetafile(), {}, 0});
    const auto surface = drawing.CreateSurface({20, 12});
    for (const Sample& sample : all) {
        const fs::path latin = folder / "caf\xE9";
        fs::rename(Save(sample.content), latin);
        const auto picture = drawing.LoadPicture(latin, why);
        ASSERT_NE(picture, nullptr) << sample.name << ": " << why;
        EXPECT_TRUE(surface->StretchPicture(*picture, {0, 0, 20, 12}, why)) << sample.name << ": " << why;
    }
}

TEST_F(PictureTest, ADrawingReadsNothingElse) {
    std::ofstream(folder / "red.svg")
        << "<svg width='4' height='4'><rect width='4' height='4' fill='red'/></svg>";
    std::ofstream(folder / "red.png") << samples::ByQt(
        {4, 4}, [](int, int) { return Rgb(255, 0, 0); }, "png");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0); // whoever opens it never comes back
    const auto drawingOf = [](const std::string& reference) {
        return "<svg width='8' height='8' xmlns:xlink='x'><image width='8' height='8' xlink:href='" +
               reference + "'/></svg>";
    };
    const auto inlined = [](const std::string& content) {
        return "data:image/png;base64," + QByteArray::fromStdString(content).toBase64().toStdString();
    };
    const std::string png = samples::ByQt(
        {4, 4}, [](int, int) { return Rgb(0, 0, 255); }, "png");
    for (const auto& [content, wanted] : std::vector<std::pair<std::string, Color>>{
             {drawingOf(folder / "red.png"), Rgb(0, 0, 0)},
             {drawingOf("file://" + (folder / "red.png").string()), Rgb(0, 0, 0)},
             {drawingOf(folder / "pipe"), Rgb(0, 0, 0)},
             {drawingOf(inlined(drawingOf(folder / "pipe"))), Rgb(0, 0, 0)},
             {"<?xml-stylesheet type=\"text/css\" href=\"" + (folder / "pipe").string() +
                  "\"?><svg width='8' height='8'/>",
              Rgb(0, 0, 0)},
             {drawingOf(inlined(png)), Rgb(0, 0, 255)}}) {
        const auto picture = Load(content);
        ASSERT_NE(picture, nullptr) << why;
        const auto surface = drawing.CreateSurface({8, 8});
        EXPECT_TRUE(surface->StretchPicture(*picture, {0, 0, 8, 8}, why)) << why;
        EXPECT_EQ(At(surface->Pixels(), 4, 4), wanted) << content;
    }
}

TEST_F(PictureTest, AChildThatHangsIsEnded) {
    const auto hangs = [](std::FILE*) { return pause() == 0; };
    EXPECT_TRUE(OutputOfChild(hangs, std::chrono::milliseconds(50)).isEmpty());
    const auto writes = [](std::FILE* out) { return std::fputs("done", out) >= 0; };
    EXPECT_EQ(OutputOfChild(writes, std::chrono::seconds(60)), "done");
}

TEST_F(PictureTest, ReadsMetafiles) {
    for (const std::string& content : {samples::WindowsMetafile(), samples::EnhancedMetafile()}) {
        const auto picture = Load(content);
        ASSERT_NE(picture, nullptr) << why;
        EXPECT_EQ(picture->Size(), (PixelSize{192, 96})); // 2 by 1 inch
        const auto surface = drawing.CreateSurface({100, 40});
        ASSERT_TRUE(surface->StretchPicture(*picture, {0, 0, 100, 40}, why)) << why;
        EXPECT_TRUE(Close(At(surface->Pixels(), 25, 20), Rgb(255, 0, 0), 2))
            << Text(At(surface->Pixels(), 25, 20));
        EXPECT_TRUE(Close(At(surface->Pixels(), 75, 20), Rgb(0, 0, 255), 2))
            << Text(At(surface->Pixels(), 75, 20));
    }
}

TEST_F(PictureTest, GreyPhotographsStayGrey) {
    const auto picture = Load(samples::Jpeg({32, 32}, [](int x, int) { return Rgb(x * 8, x * 8, x * 8); },
                                            {0, true, false, false}));
    ASSERT_NE(picture, nullptr) << why;
    const auto surface = drawing.CreateSurface({32, 32});
    ASSERT_TRUE(surface->StretchPicture(*picture, {0, 0, 32, 32}, why));
    EXPECT_TRUE(Close(At(surface->Pixels(), 20, 9), Rgb(160, 160, 160), 4));
}

TEST_F(PictureTest, TurnsPhotographsUpright) {
    // Of each orientation, as the standard words it: where the stored first row and first column are to be
    // seen.
    struct Turn {
        char row;
        char column;
    };
    constexpr Turn KTurns[] = {{'t', 'l'}, {'t', 'r'}, {'b', 'r'}, {'b', 'l'},
                               {'l', 't'}, {'r', 't'}, {'r', 'b'}, {'l', 'b'}};
    const PixelSize upright{96, 64};
    for (int number = 1; number <= 8; ++number) {
        const Turn turn = KTurns[number - 1];
        const bool rowsRunDown = turn.row == 't' || turn.row == 'b';
        const PixelSize stored = rowsRunDown ? upright : PixelSize{upright.height, upright.width};
        const auto content = samples::Jpeg(stored,
                                           [&](int column, int row) {
                                               int x = rowsRunDown ? column : row,
                                                   y = rowsRunDown ? row : column;
                                               if (turn.row == 'r' || turn.column == 'r')
                                                   x = upright.width - 1 - x;
                                               if (turn.row == 'b' || turn.column == 'b')
                                                   y = upright.height - 1 - y;
                                               return samples::Quarters(x, y, upright);
                                           },
                                           {number, false, false, false});
        const auto picture = Load(content);
        ASSERT_NE(picture, nullptr) << why;
        EXPECT_EQ(picture->Size(), upright) << number;
        for (const PixelSize size : {PixelSize{30, 22}, {96, 64}, {161, 99}}) {
            const auto surface = drawing.CreateSurface(size);
            ASSERT_TRUE(surface->StretchPicture(*picture, {0, 0, size.width, size.height}, why)) << why;
            ExpectQuarters(surface->Pixels(), 12, "orientation " + std::to_string(number));
        }
        ExpectCutAlike(*picture, {120, 90}, "orientation " + std::to_string(number));
    }
}

TEST_F(PictureTest, TakesTheMeanWhenItReduces) {
    const auto checks = Load(samples::ByQt(
        {66, 66}, [](int x, int y) { return (x + y) % 2 ? Rgb(255, 255, 255) : Rgb(0, 0, 0); }, "png"));
    const auto surface = drawing.CreateSurface({33, 33});
    ASSERT_TRUE(surface->StretchPicture(*checks, {0, 0, 33, 33}, why));
    for (const int at : {0, 16, 32})
        EXPECT_TRUE(Close(At(surface->Pixels(), at, at), Rgb(127, 127, 127), 1))
            << Text(At(surface->Pixels(), at, at));
    // Three pixels become two: a third of the middle one belongs to neither side alone.
    const auto three = Load(samples::ByQt(
        {3, 1}, [](int x, int) { return Rgb(90 * x, 90 * x, 90 * x); }, "png"));
    ASSERT_TRUE(surface->StretchPicture(*three, {0, 0, 2, 1}, why));
    EXPECT_TRUE(Close(At(surface->Pixels(), 0, 0), Rgb(30, 30, 30), 1)) << Text(At(surface->Pixels(), 0, 0));
    EXPECT_TRUE(Close(At(surface->Pixels(), 1, 0), Rgb(150, 150, 150), 1))
        << Text(At(surface->Pixels(), 1, 0));
}

TEST_F(PictureTest, RunsLinearlyWhenItEnlarges) {
    const auto two = Load(samples::ByQt(
        {2, 2}, [](int x, int) { return x ? Rgb(240, 240, 240) : Rgb(0, 0, 0); }, "png"));
    const auto surface = drawing.CreateSurface({8, 8});
    ASSERT_TRUE(surface->StretchPicture(*two, {0, 0, 8, 8}, why));
    constexpr int KWanted[] = {0, 0, 30, 90, 150, 210, 240, 240};
    for (int x = 0; x < 8; ++x)
        EXPECT_NEAR(Red(At(surface->Pixels(), x, x)), KWanted[x], 1) << x;
}

TEST_F(PictureTest, KeepsEachPixelAtItsOwnSize) {
    const PixelSize size{61, 37};
    const auto picture = Load(samples::ByQt(size, Speckles, "png"));
    for (int round = 0; round < 3; ++round) { // the later ones from what was kept
        const auto surface = drawing.CreateSurface({70, 40});
        ASSERT_TRUE(surface->StretchPicture(*picture, {5, 2, size.width, size.height}, why));
        int different = 0;
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x)
                different += At(surface->Pixels(), x + 5, y + 2) != Speckles(x, y);
        EXPECT_EQ(different, 0);
        EXPECT_EQ(At(surface->Pixels(), 4, 2), Rgb(0, 0, 0));
        EXPECT_EQ(At(surface->Pixels(), 66, 2), Rgb(0, 0, 0));
    }
}

class StringWriter final : public FileWriter {
  public:
    bool Write(const void* data, std::size_t count) override {
        if (bytes.size() + count > room) return false;
        bytes.append(static_cast<const char*>(data), count);
        return true;
    }
    bool Commit() override { return true; }
    std::string Why() const override { return {}; }

    std::string bytes;
    std::size_t room = std::string::npos;
};

TEST_F(PictureTest, ReadsBackWhatWasSaved) {
    const PixelSize size{61, 37};
    const auto surface = drawing.CreateSurface(size);
    ASSERT_TRUE(surface->StretchPicture(*Load(samples::ByQt(size, Speckles, "png")), {0, 0, 61, 37}, why));
    StringWriter png, bitmap;
    ASSERT_TRUE(drawing.WritePng(surface->Pixels(), png));
    ASSERT_TRUE(WriteBitmap(surface->Pixels(), bitmap));
    for (const std::string& content : {png.bytes, bitmap.bytes}) {
        const auto again = drawing.CreateSurface(size);
        const auto picture = Load(content);
        ASSERT_NE(picture, nullptr) << why;
        ASSERT_TRUE(again->StretchPicture(*picture, {0, 0, 61, 37}, why)) << why;
        int different = 0;
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x)
                different += At(again->Pixels(), x, y) != At(surface->Pixels(), x, y);
        EXPECT_EQ(different, 0);
    }
    StringWriter full;
    full.room = 100;
    EXPECT_FALSE(drawing.WritePng(surface->Pixels(), full));
}

TEST_F(PictureTest, ShinesThroughWhereThePictureIsClear) {
    const auto picture = Load(samples::TransparentPng({40, 20}));
    const auto surface = drawing.CreateSurface({40, 20});
    surface->Fill({0, 0, 40, 20}, Rgb(0, 200, 100));
    ASSERT_TRUE(surface->StretchPicture(*picture, {0, 0, 40, 20}, why));
    EXPECT_EQ(At(surface->Pixels(), 5, 10), Rgb(0, 200, 100));
    EXPECT_TRUE(Close(At(surface->Pixels(), 35, 10), Rgb(128, 100, 50), 2));
    // The later ones from what was kept.
    for (int round = 0; round < 3; ++round) {
        const auto tile = drawing.CreateSurface({40, 20});
        tile->Fill({0, 0, 40, 20}, Rgb(0, 200, 100));
        ASSERT_TRUE(tile->StretchPicture(*picture, {7, 3, 40, 20}, why));
        EXPECT_EQ(At(tile->Pixels(), 12, 13), Rgb(0, 200, 100));
        EXPECT_EQ(At(tile->Pixels(), 39, 13), At(surface->Pixels(), 32, 10));
    }
}

TEST_F(PictureTest, ALargePictureIsReadByRows) {
    // As many pixels as no memory limit of a toolkit allows, in one colour, which makes a small file.
    const PixelSize size{12000, 12000};
    const auto picture = Load(samples::PlainPng(size));
    ASSERT_NE(picture, nullptr) << why;
    const auto surface = drawing.CreateSurface({200, 200});
    EXPECT_TRUE(surface->StretchPicture(*picture, {0, 0, 200, 200}, why)) << why;
    EXPECT_TRUE(Close(At(surface->Pixels(), 199, 199), Rgb(255, 255, 255), 2));
}

TEST_F(PictureTest, DrawsWhatATornPhotographHolds) {
    const PixelSize size{320, 240};
    const std::string whole = samples::Jpeg(size, Speckles);
    const auto picture = Load(whole.substr(0, whole.size() / 2));
    ASSERT_NE(picture, nullptr) << why;
    const Color ground = Rgb(1, 2, 3);
    const auto surface = drawing.CreateSurface(size);
    surface->Fill({0, 0, size.width, size.height}, ground);
    EXPECT_TRUE(surface->StretchPicture(*picture, {0, 0, size.width, size.height}, why)) << why;
    EXPECT_NE(At(surface->Pixels(), 100, 20), ground);
    EXPECT_EQ(At(surface->Pixels(), 100, 220), ground);
}

TEST_F(PictureTest, SaysWhyAFileIsNoPicture) {
    for (const std::string& content :
         {std::string("Dear Ann,\n"), std::string("\0\0\0\0", 4), std::string("<html>")}) {
        EXPECT_EQ(Load(content), nullptr);
        EXPECT_EQ(why, "no picture of a known format");
    }
    EXPECT_EQ(Load(""), nullptr);
    EXPECT_EQ(why, "the file is empty");
    EXPECT_EQ(drawing.LoadPicture(folder / "gone", why), nullptr);
    EXPECT_EQ(why, "No such file or directory");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (const fs::path& path : {folder / "pipe", folder}) {
        EXPECT_EQ(drawing.LoadPicture(path, why), nullptr) << "and nobody waits for it";
        EXPECT_EQ(why, "not a regular file");
    }
    EXPECT_EQ(drawing.LoadPicture(folder, why), nullptr);
}

TEST_F(PictureTest, RefusesAbsurdSizes) {
    std::string bitmap = samples::ByQt({4, 4}, Speckles, "bmp");
    bitmap.replace(18, 8, "\xFF\xFF\xFF\x7F\xFF\xFF\xFF\x7F", 8);
    std::string jpeg = samples::Jpeg({8, 8}, Speckles);
    const std::size_t frame = jpeg.find("\xFF\xC0");
    jpeg.replace(frame + 5, 4, "\xFF\xDC\xFF\xDC", 4);
    std::string gif = samples::Gif();
    gif.replace(6, 4, "\xFF\xFF\xFF\xFF", 4);
    for (const std::string& content : {bitmap, jpeg, gif}) {
        const auto picture = Load(content);
        if (!picture) {
            EXPECT_FALSE(why.empty());
            continue;
        }
        const auto surface = drawing.CreateSurface({8, 8});
        surface->StretchPicture(*picture, {0, 0, 8, 8}, why);
    }
    EXPECT_EQ(Load(jpeg), nullptr);
    EXPECT_NE(why.find("too large"), std::string::npos) << why;
}

TEST_F(PictureTest, SurvivesTornAndSpoiltFiles) {
    std::vector<Sample> all = AllQuarters();
    all.push_back({"wmf", samples::WindowsMetafile(), {}, 0});
    all.push_back({"emf", samples::EnhancedMetafile(), {}, 0});
    all.push_back({"turned", samples::Jpeg({40, 24}, Speckles, {6, false, false, false}), {}, 0});
    const auto surface = drawing.CreateSurface({50, 30});
    for (const Sample& sample : all) {
        const std::size_t length = sample.content.size();
        for (std::size_t step = 0; step < 24; ++step) {
            std::string torn = sample.content.substr(0, length * step / 24);
            std::string spoilt = sample.content;
            spoilt[length * step / 24] = static_cast<char>(spoilt[length * step / 24] ^ 0xA5);
            for (const std::string& content : {torn, spoilt}) {
                const auto picture = Load(content);
                if (picture) surface->StretchPicture(*picture, {-5, -5, 60, 40}, why);
            }
        }
    }
}

} // namespace
} // namespace quorvane
