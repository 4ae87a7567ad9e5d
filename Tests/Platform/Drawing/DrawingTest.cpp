#include "Platform/Drawing/Drawing.h"

#include <gmock/gmock.h>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Files.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

constexpr TColor kColor = 0x84A5C6;  // blue, green, red; its bits stay in all formats with colours

TEST(Bitmap, FormatsHaveTheirBytes) {
    const std::tuple<TPixelFormat, std::vector<int>, TColor> cases[] = {
        {pf8bit, {0xAB}, 0xABABAB},
        {pf15bit, {0x90, 0x62}, 0x84A5C6},
        {pf16bit, {0x30, 0xC5}, 0x84A6C6},
        {pf24bit, {0x84, 0xA5, 0xC6}, kColor},
        {pf32bit, {0x84, 0xA5, 0xC6, 0}, kColor},
        {pfDevice, {0x84, 0xA5, 0xC6, 0}, kColor}};
    for (const auto& [format, bytes, back] : cases) {
        TBitmap bitmap(3, 2, format);
        bitmap.GetCanvas().SetPixel(1, 1, kColor);
        const auto row = bitmap.ScanLine(1);
        EXPECT_EQ(row.size() % 4, 0U);
        EXPECT_TRUE(std::ranges::equal(row.subspan(bytes.size(), bytes.size()), bytes)) << int{format};
        // Drawing elsewhere leaves the bytes as they are.
        bitmap.GetCanvas().FillRect({0, 0, 1, 2});
        EXPECT_TRUE(std::ranges::equal(bitmap.ScanLine(1).subspan(bytes.size(), bytes.size()), bytes))
            << int{format};
        bitmap.SetPixelFormat(pf32bit);
        EXPECT_EQ(bitmap.GetCanvas().GetPixel(1, 1), back) << int{format};
        EXPECT_EQ(bitmap.GetCanvas().GetPixel(0, 1), clWhite);
    }
}

TEST(Bitmap, SizesAndRefusals) {
    TBitmap bitmap(4, 4, pf24bit);
    bitmap.GetCanvas().SetPixel(3, 3, clRed);
    for (const TPixelFormat format : {pf1bit, pf4bit, pfCustom}) bitmap.SetPixelFormat(format);
    EXPECT_EQ(bitmap.GetPixelFormat(), pf24bit);
    bitmap.SetSize(6, 5);
    EXPECT_EQ(bitmap.GetCanvas().GetPixel(3, 3), clRed);
    EXPECT_EQ(bitmap.GetCanvas().GetPixel(5, 4), clWhite);
    EXPECT_EQ(Raised<EArgumentException>([&] { bitmap.SetWidth(-1); }),
              u"Size -1 x 5 of a bitmap is not between 0 and 32767");
    EXPECT_THROW(bitmap.SetHeight(32768), EArgumentException);
    EXPECT_EQ(Raised<EListError>([&] { return bitmap.ScanLine(5); }), u"List index out of bounds (5)");
    bitmap.GetCanvas().SetPixel(6, 0, clRed);
    EXPECT_EQ(bitmap.GetCanvas().GetPixel(-1, 0), clWhite);
    TBitmap other;
    other.GetCanvas().LineTo(5, 5);  // on no pixels
    other.Assign(bitmap);
    EXPECT_EQ(other.GetCanvas().GetPixel(3, 3), clRed);
}

TEST(Canvas, DrawsOnItsPixels) {
    TBitmap bitmap(40, 30);
    TCanvas& canvas = bitmap.GetCanvas();
    const auto pixels = [&](std::initializer_list<TPoint> points) {
        std::vector<TColor> colors;
        for (const TPoint point : points) colors.push_back(canvas.GetPixel(point.X, point.Y));
        return colors;
    };
    canvas.SetPen({.Color = clRed});
    canvas.SetBrush({.Color = 0xFF0000});
    canvas.Rectangle({2, 2, 10, 8});
    EXPECT_THAT(pixels({{1, 2}, {2, 2}, {9, 7}, {3, 3}, {8, 6}, {10, 7}}),
                ElementsAre(clWhite, clRed, clRed, 0xFF0000, 0xFF0000, clWhite));
    bitmap.ScanLine(4)[4 * 4] = 0;  // written by other means, and kept by what is drawn
    canvas.MoveTo(12, 1);
    canvas.LineTo(15, 1);
    EXPECT_THAT(pixels({{4, 4}, {11, 1}, {12, 1}, {15, 1}, {16, 1}, {13, 2}}),
                ElementsAre(clBlack, clWhite, clRed, clRed, clWhite, clWhite));
    canvas.SetClipRect(TRect{20, 0, 22, 30});
    canvas.SetPen({.Style = psClear});
    canvas.Polygon(std::vector<TPoint>{{18, 2}, {30, 2}, {30, 9}, {18, 9}});
    canvas.SetClipRect({});
    EXPECT_THAT(pixels({{19, 5}, {20, 5}, {21, 5}, {22, 5}}),
                ElementsAre(clWhite, 0xFF0000, 0xFF0000, clWhite));
    canvas.SetBrush({.Color = clRed, .Style = bsVertical});
    canvas.FillRect({24, 12, 40, 20});
    EXPECT_THAT(pixels({{24, 13}, {25, 13}, {31, 13}, {32, 13}, {33, 13}}),
                ElementsAre(clRed, clWhite, clWhite, clRed, clWhite));
    canvas.Gradient({.X = 0, .Y = 20}, {.X = 40, .Y = 30, .Red = 65535}, kGradientHorizontal);
    EXPECT_LT(canvas.GetPixel(1, 25), 16U);
    EXPECT_GT(canvas.GetPixel(38, 29), 240U);
    canvas.SetBrush({.Color = clRed});
    canvas.SetPen({});
    canvas.Ellipse({INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX});
    canvas.MoveTo(INT32_MIN, INT32_MAX);
    canvas.LineTo(INT32_MAX, INT32_MIN);
    for (const TBrushStyle style : {bsHorizontal, bsFDiagonal, bsBDiagonal, bsCross, bsDiagCross}) {
        canvas.SetBrush({.Style = style});
        canvas.FillRect({INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX});
    }
    EXPECT_EQ(canvas.GetPixel(39, 12), clRed);
}

TEST(Canvas, TextHasItsSizeAndDirection) {
    TBitmap bitmap(200, 200);
    TCanvas& canvas = bitmap.GetCanvas();
    const auto darkest = [&](const TRect& rect) {
        TColor color = clWhite;
        for (std::int32_t y = rect.Top; y < rect.Bottom; ++y)
            for (std::int32_t x = rect.Left; x < rect.Right; ++x)
                color = std::min(color, canvas.GetPixel(x, y));
        return color;
    };
    canvas.SetFont({.Size = 15, .Color = clBlack});
    const TSize size = canvas.TextExtent(u"Rain");
    EXPECT_TRUE(size.Width > 30 && size.Width < 60 && size.Height > 18 && size.Height < 30) << size.Width;
    canvas.TextOut(100, 100, u"Rain");
    const TRect right{100, 100, 100 + size.Width, 100 + size.Height};
    const TRect above{100, 100 - size.Width, 100 + size.Height, 100};
    EXPECT_LT(darkest(right), 0x404040U);
    EXPECT_EQ(darkest(above), clWhite);
    canvas.SetFont({.Size = 15, .Color = clBlack, .Escapement = 900});
    EXPECT_EQ(canvas.TextExtent(u"Rain"), size);
    canvas.TextOut(100, 100, u"Rain");
    EXPECT_LT(darkest(above), 0x404040U);
    // Longer texts count as long as the longest, and what is no text is drawn somehow.
    const std::int32_t longest = canvas.TextWidth(String(32'767, u'm'));
    EXPECT_EQ(canvas.TextWidth(String(100'000, u'm')), longest);
    const Char odd[] = {0, u'\n', 0xD800, 0xFFFF, u'\t'};
    canvas.TextOut(0, 0, StringView(odd, 5));
    EXPECT_EQ(canvas.TextHeight(u"a\nb"), size.Height);
}

TEST(Picture, AllFormatsAreWritten) {
    const TTemporaryFolder folder;
    const auto draw = [](TCanvas& canvas) {
        canvas.Ellipse({1, 1, 20, 20});
        canvas.TextOut(2, 2, u"Rain");
    };
    const std::pair<TPictureFormat, std::string> cases[] = {
        {pictPng, std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\x28\0\0\0\x1E", 24)},
        {pictSvg, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns"},
        {pictPdf, "%PDF-1."}};
    for (const auto& [format, begin] : cases)
        EXPECT_THAT(DrawPicture(format, {40, 30}, draw), StartsWith(begin));
    EXPECT_THAT(DrawPicture(pictSvg, {40, 30}, draw), testing::HasSubstr("width=\"40px\" height=\"30px\""));
    EXPECT_THAT(DrawPicture(pictPdf, {40, 30}, draw), testing::HasSubstr("[ 0 0 30 22.5 ]"));
    EXPECT_EQ(DrawPicture(pictPng, {40, 30}, draw), DrawPicture(pictPng, {40, 30}, draw));
    DrawToFile(folder.GetPath(u"a.SVG"), {40, 30}, draw);
    EXPECT_TRUE(FileExists(folder.GetPath(u"a.SVG")));
    ExpectRaised<EArgumentException>({{[&] {
                                           DrawToFile(u"a.jpg", {4, 4}, draw);
                                       },
                                       u"The format of picture \"a.jpg\" is not known"},
                                      {[&] {
                                           DrawToFile(u"svg", {4, 4}, draw);
                                       },
                                       u"The format of picture \"svg\" is not known"},
                                      {[&] {
                                           static_cast<void>(DrawPicture(pictPng, {0, 4}, draw));
                                       },
                                       u"Size 0 x 4 of a picture is not between 1 and 32767"}});
    const auto fail = [](TCanvas&) { throw Exception(u"No data"); };
    EXPECT_EQ(Raised<Exception>([&] { DrawToFile(folder.GetPath(u"b.png"), {4, 4}, fail); }), u"No data");
    EXPECT_FALSE(FileExists(folder.GetPath(u"b.png")));
}

}  // namespace
}  // namespace Varnholt::Test
