#include <gmock/gmock.h>

#include "Platform/Drawing/CanvasRecorder.h"
#include "Tests/Support/Raised.h"
#include "VarnholtLib/UI/vrnGraphicPrims.h"
#include "VarnholtLib/UI/vrnGraphics.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;

struct TDrawing {
    TCanvasRecorder Recorder;
    TCanvas Canvas{Recorder};
    /// What was drawn since the last call, one operation a line.
    std::string Take() {
        std::string text;
        for (const String& line : Recorder.Describe()) text += (text.empty() ? "" : "|") + ToUtf8(line);
        Recorder.Clear();
        return text;
    }
};

constexpr TRect kWindow{0, 0, 100, 50};

TEST(GraphicPrims, LinesAreClipped) {
    struct TCase {
        std::int32_t X1, Y1, X2, Y2;
        const char* Drawn;
    };
    const TCase cases[] = {
        {10, 10, 90, 40, "10,10 90,40"},
        {-10, 10, 50, 40, "0,15 50,40"},
        {-1, 0, 3, 2, "0,0 3,2"},  // a half becomes the even 0
        {-3, 0, 1, 2, "0,2 1,2"},  // and one and a half the even 2
        {90, 45, 130, 65, "90,45 100,50"},
        {-20, -5, 20, 60, "0,27 14,50"},
        {5, 5, 5, 5, "5,5 5,5"},
        {0, 0, 98, 0, "0,0 98,0"},
        {0, 0, 99, 0, ""},
        {0, 0, 0, 49, "0,0 0,49"},
        {0, 0, 0, 50, ""},
        {-5, 20, 105, 20, ""},
        {-30, -1, -1, 60, ""},
        {30, -20, 60, 80, ""},
        {50, 25, INT32_MAX, 25, "50,25 100,25"},
        {INT32_MIN, INT32_MIN + 8, 60, 30, "30,0 60,30"},
        {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX, ""},
    };
    TDrawing drawing;
    TGPGraphics graphics(drawing.Canvas);
    for (const TCase& c : cases) {
        const std::string drawn = c.Drawn;
        EXPECT_EQ(ClipLine(drawing.Canvas, c.X1, c.Y1, c.X2, c.Y2, kWindow), !drawn.empty()) << c.X1 << drawn;
        EXPECT_EQ(drawing.Take(), drawn.empty() ? "" : "Polyline " + drawn);
        EXPECT_EQ(ClipLine(graphics, {.Width = 2}, c.X1, c.Y1, c.X2, c.Y2, kWindow), !drawn.empty());
        EXPECT_EQ(drawing.Take(), drawn.empty() ? "" : "Path " + drawn + " pen FF000000 2");
    }
    for (const TRect& none : {TRect{0, 0, 0, 50}, TRect{0, 0, 100, 0}, TRect{100, 50, 0, 0}})
        EXPECT_FALSE(ClipLine(drawing.Canvas, -5, 0, 7, 3, none));
}

TEST(GraphicPrims, LinesOfPathsAreClipped) {
    constexpr float kNaN = std::numeric_limits<float>::quiet_NaN(),
                    kInfinity = std::numeric_limits<float>::infinity();
    TDrawing drawing;
    TGPGraphics graphics(drawing.Canvas);
    TGPGraphicsPath path;
    EXPECT_TRUE(ClipLine(path, -1, 0.5F, 3, 2.5F, kWindow));    // the new Y is not rounded
    EXPECT_TRUE(ClipLine(path, 1.25F, -1, 4.25F, 7, kWindow));  // 3 / 8 is no whole distance
    for (const float x : {kNaN, kInfinity, -kInfinity}) EXPECT_FALSE(ClipLine(path, x, 1, 5, 9, kWindow));
    EXPECT_FALSE(ClipLine(path, 0, 5, 98.5F, 5, kWindow));
    graphics.DrawPath({}, path);
    EXPECT_EQ(drawing.Take(),
              "Path 0,1 3,2.5 closed pen FF000000 1|Path 1.25,0 4.25,7 closed pen FF000000 1");
}

TEST(GraphicPrims, RectanglesAreTested) {
    EXPECT_EQ(OutCode(0, 50, kWindow) + OutCode(100.0F, 0.0F, kWindow), 0);
    EXPECT_EQ(OutCode(-1, -1, kWindow), 9);
    EXPECT_EQ(OutCode(100.5F, 50.5F, kWindow), 6);
    EXPECT_EQ(OutCode(50, -1, {60, 0, 40, 10}), 9);  // left, though right too
    EXPECT_TRUE(InWindow(100, 50, kWindow) && !InWindow(101, 50, kWindow) && !InWindow(0, -1, kWindow));
    EXPECT_TRUE(RectInRect(kWindow, kWindow));
    for (const TRect& beyond :
         {TRect{-1, 0, 100, 50}, TRect{0, -1, 100, 50}, TRect{0, 0, 101, 50}, TRect{0, 0, 100, 51}})
        EXPECT_TRUE(!RectInRect(beyond, kWindow) && RectInRect(kWindow, beyond)) << beyond.Right;
    EXPECT_EQ(OrderRect({100, 50, 0, 0}), kWindow);
    EXPECT_EQ(MakeTRect(3, 4, 0, 2), (TRect{3, 4, 3, 6}));
    EXPECT_EQ(MakeTRect(INT32_MAX, 0, 5, INT32_MAX), (TRect{INT32_MAX, 0, INT32_MAX, INT32_MAX}));
}

TEST(GraphicPrims, CurvesAreChords) {
    TDrawing drawing;
    const std::vector<TPoint> spline = {{0, 0}, {30, 60}, {61, -10}, {95, 33}, {120, -70}};
    BSpline(drawing.Canvas, spline, 3);
    EXPECT_EQ(drawing.Take(),
              "Line 40,30 50,18|Line 50,18 61,8|Line 61,8 72,12|"
              "Line 72,9 83,12|Line 83,12 93,8|Line 93,8 102,-11");
    BSpline(drawing.Canvas, std::span(spline).first(3), 3);
    BSpline(drawing.Canvas, spline, 0);
    Bezier(drawing.Canvas, spline, -1);
    Bezier(drawing.Canvas, {}, 4);
    EXPECT_EQ(drawing.Take(), "");
    Bezier(drawing.Canvas, std::vector<TPoint>{{10, 20}, {45, -33}, {77, 58}, {100, 9}}, 3);
    EXPECT_EQ(drawing.Take(), "Line 10,20 42,3|Line 42,3 72,20|Line 72,20 100,9");
    Bezier(drawing.Canvas, std::vector<TPoint>{{7, -9}}, 1);
    EXPECT_EQ(drawing.Take(), "Line 7,-9 7,-9");
    // Points at the ends of the range, and binomials beyond a float: no undefined arithmetic.
    const std::vector<TPoint> far(600, {INT32_MAX, INT32_MIN});
    BSpline(drawing.Canvas, std::span(far).first(4), 1);
    Bezier(drawing.Canvas, far, 2);
    EXPECT_EQ(drawing.Recorder.GetOperations().size(), 3U);
}

TEST(Graphics, GradientsAndTurnedTexts) {
    TDrawing drawing;
    GradFill(drawing.Canvas, 0x0201FF, clBtnFace, {1, 2, 30, 40}, kGradientVertical);
    EXPECT_EQ(drawing.Take(), "Gradient 1,2 30,40 65025/255/510 61200/61200/61200 vertical");
    GradFill(drawing.Canvas, clBlack, clWhite, 30, 40, kGradientHorizontal);
    EXPECT_EQ(drawing.Take(), "Gradient 0,0 30,40 0/0/0 65025/65025/65025 horizontal");
    GradFill(drawing.Canvas, clBlack, clWhite, 30, 40, 2);
    AngleTextOut(drawing.Canvas, 45, 7, 8, u"Rain");
    drawing.Canvas.TextOut(1, 2, u"Sun");
    EXPECT_EQ(drawing.Take(), "Text 7,8 \"Rain\" size 9 turned 450|Text 1,2 \"Sun\" size 9");
}

TEST(Graphics, PathsAreShortened) {
    TDrawing drawing;
    drawing.Canvas.SetFont({.Size = 1});  // a pixel a unit
    const std::tuple<StringView, std::int32_t, StringView> cases[] = {
        {u"C:\\Users\\ann\\rain.csv", 21, u"C:\\Users\\ann\\rain.csv"},
        {u"C:\\Users\\ann\\rain.csv", 20, u"C:\\Users...\\rain.csv"},
        {u"C:\\Users\\ann\\rain.csv", 13, u"C...\\rain.csv"},
        {u"C:\\Users\\ann\\rain.csv", 12, u"...\\rain.csv"},
        {u"C:\\Users\\ann\\rain.csv", 11, u"...\\rain..."},
        {u"C:\\Users\\ann\\rain.csv", 6, u"......"},
        {u"C:\\Users\\ann\\rain.csv", 2, u"C:\\Users\\ann\\rain.csv"},
        {u"rainfall.csv", 7, u"rain..."},
        {u"\xD83C\xDF27rain/x", 6, u".../x"},
        {u"\xD83C\xDF27rain/x", 7, u"\xD83C\xDF27.../x"},
        {u"", 0, u""}};
    for (const auto& [path, width, shortened] : cases)
        EXPECT_EQ(ToUtf8(EllipsePathString(path, drawing.Canvas, width)), ToUtf8(shortened)) << width;
    const String longPath = String(100'000, u'a') + u"\\" + String(100'000, u'b');
    EXPECT_EQ(EllipsePathString(longPath, drawing.Canvas, 10), u"...\\bbb...");
    TLabel label;
    label.SetWidth(0);
    EXPECT_EQ(EllipsePathString(u"C:\\x", label), u"C:\\x");
    label.SetWidth(60);
    const String shortened = EllipsePathString(u"C:\\Windspeed\\Northern station\\rain.csv", label);
    EXPECT_TRUE(shortened.starts_with(u"...\\r") && shortened.size() < 15) << ToUtf8(shortened);
}

TEST(Graphics, WindowsBecomeBitmaps) {
    TForm form;
    form.SetClientSize({20, 10});
    form.SetColor(clRed);
    TPanel& panel = form.Add<TPanel>(u"inner");
    panel.SetBounds(5, 2, 4, 3);
    panel.SetColor(0xFF0000);
    std::unique_ptr<TBitmap> bitmap;
    GetWindowBitmap(form, bitmap);
    TCanvas& canvas = bitmap->GetCanvas();
    EXPECT_THAT((std::vector{canvas.GetPixel(0, 5), canvas.GetPixel(1, 1), canvas.GetPixel(6, 3),
                             canvas.GetPixel(9, 5), canvas.GetPixel(10, 5), canvas.GetPixel(19, 9)}),
                ElementsAre(clWhite, clRed, 0xFF0000, 0xFF0000, clRed, clRed));
    EXPECT_EQ(bitmap->GetWidth() * 100 + bitmap->GetHeight(), 2010);
}

/// A bitmap that refuses formats.
struct TChoosy : TBitmap {
    TChoosy(std::int32_t width, std::int32_t height, std::vector<TPixelFormat> held)
        : TBitmap(width, height), Held(std::move(held)) {}
    bool Holds(TPixelFormat format) const noexcept override { return std::ranges::count(Held, format) != 0; }
    std::vector<TPixelFormat> Held;
};

TEST(BitmapPixels, FormatsAreTriedInTurn) {
    const std::pair<std::vector<TPixelFormat>, TPixelFormat> cases[] = {
        {{pf15bit, pf16bit, pf24bit}, pf24bit},
        {{pfDevice, pf15bit, pf16bit}, pf16bit},
        {{pfDevice, pf15bit}, pf15bit},
        {{pfDevice, pf8bit}, pfDevice}};
    for (const auto& [held, taken] : cases) {
        TChoosy bitmap(4, 2, held);
        TBitmapPixels pixels(bitmap, false);
        EXPECT_EQ(bitmap.GetPixelFormat(), taken);
        EXPECT_EQ(pixels.Get_Pixel(3, 1), clWhite);
        // 100 and 200 with 5 bits: 100 * 31 / 255 = 12 and 24, with 6 bits 24; read back through the canvas.
        pixels.Set_Pixel(3, 1, 0xFF64C8);
        const std::uint32_t green = taken == pf16bit ? 0x61 : 0x63;
        EXPECT_EQ(pixels.Get_Pixel(3, 1),
                  taken == pf24bit || taken == pfDevice ? 0xFF64C8 : 0xFF0000 | green << 8 | 0xC6)
            << int{taken};
        EXPECT_EQ(Raised<Exception>([&] { pixels.SetPixelFormat(pf32bit); }),
                  u"Pixel format is not supported");
        EXPECT_EQ(pixels.GetPixelFormat(), taken);
    }
}

TEST(BitmapPixels, PixelsAreReadAndSet) {
    TBitmap source(3, 2, pf32bit);
    source.GetCanvas().SetPixel(2, 1, 0x030201);
    TBitmapPixels copy(source, true);
    copy.Set_Pixel(0, 0, clBtnFace);
    EXPECT_EQ(copy.Get_Pixel(2, 1) + (copy.Get_Pixel(0, 0) << 1), 0x030201U + 0xF0F0F0 * 2);
    EXPECT_THAT(copy.GetBitmap().ScanLine(1).subspan(6, 3), ElementsAre(3, 2, 1));
    EXPECT_EQ(source.GetPixelFormat(), pf32bit);
    copy.SetPixelFormat(pf32bit);
    copy.Set_Pixel(1, 1, 0x0A0B0C);
    EXPECT_THAT(copy.GetBitmap().ScanLine(1).subspan(4, 4), ElementsAre(10, 11, 12, 0));
    copy.SetPixelFormat(pf8bit);
    copy.Set_Pixel(1, 1, 0x404040);
    EXPECT_EQ(copy.Get_Pixel(1, 1), 0x404040U);
    copy.GetBitmap().GetCanvas().SetBrush({.Color = clRed});
    copy.GetBitmap().GetCanvas().FillRect({0, 1, 3, 2});  // in the row that was asked for last
    EXPECT_NE(copy.Get_Pixel(1, 1), 0x404040U);
    copy.SetPixelFormat(pf24bit);
    copy.GetBitmap().SetSize(1, 9);  // the address of the row is gone
    copy.Set_Pixel(0, 1, clRed);
    copy.SetWidth(200);
    EXPECT_EQ(copy.Get_Pixel(0, 1), clRed);
    for (const TPoint outside : {TPoint{-1, 0}, TPoint{200, 0}, TPoint{0, -1}, TPoint{0, 9}}) {
#ifdef NDEBUG
        copy.Set_Pixel(outside.X, outside.Y, clRed);
        EXPECT_EQ(copy.Get_Pixel(outside.X, outside.Y), clBlack);
#else
        EXPECT_THROW(copy.Set_Pixel(outside.X, outside.Y, clRed), EArgumentException);
        EXPECT_THROW(static_cast<void>(copy.Get_Pixel(outside.X, outside.Y)), EArgumentException);
#endif
    }
}

}  // namespace
}  // namespace Varnholt::Test
