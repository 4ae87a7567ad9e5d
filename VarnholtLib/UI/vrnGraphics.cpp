#include "VarnholtLib/UI/vrnGraphics.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace Varnholt {
namespace {

std::int32_t Added(std::int32_t edge, std::int32_t size) noexcept {
    using TLimits = std::numeric_limits<std::int32_t>;
    const std::int64_t sum = std::int64_t{edge} + size;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(sum, TLimits::min(), TLimits::max()));
}

TGradientVertex Corner(std::int32_t x, std::int32_t y, TColor color) noexcept {
    const TColor plain = ColorToRGB(color);
    const auto channel = [&](int index) {
        return static_cast<std::uint16_t>((plain >> (8 * index) & 0xFF) * 255);
    };
    return {.X = x, .Y = y, .Red = channel(0), .Green = channel(1), .Blue = channel(2), .Alpha = 0};
}

constexpr StringView kDots = u"...";
constexpr std::size_t kMaxMeasured = 32767;

bool Fits(StringView text, TCanvas& canvas, std::int32_t width) {
    return text.size() <= kMaxMeasured && canvas.TextWidth(text) <= width;
}

/// The first units of a text, without half of a surrogate pair at the end.
StringView Head(StringView text, std::size_t count) noexcept {
    const bool isCut = count > 0 && count < text.size() && (text[count - 1] & 0xFC00) == 0xD800;
    return text.substr(0, isCut ? count - 1 : count);
}

/// `before`, the longest beginning of the text that leaves the whole inside the width, `after`; nothing if not even
/// an empty beginning does.
std::optional<String> Longest(StringView before, StringView text, StringView after, TCanvas& canvas,
                              std::int32_t width) {
    const auto made = [&](std::size_t count) {
        return String(before) + String(Head(text, count)) + String(after);
    };
    const auto fits = [&](std::size_t count) { return Fits(made(count), canvas, width); };
    if (!fits(0)) return std::nullopt;
    const std::size_t rest = std::min(before.size() + after.size(), kMaxMeasured);
    std::size_t fitting = 0, failing = std::min(text.size(), kMaxMeasured - rest) + 1;
    while (failing - fitting > 1) {
        const std::size_t middle = fitting + (failing - fitting) / 2;
        (fits(middle) ? fitting : failing) = middle;
    }
    return made(fitting);
}

}  // namespace

TRect MakeTRect(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height) noexcept {
    return {left, top, Added(left, width), Added(top, height)};
}

void GradFill(TCanvas& canvas, TColor color1, TColor color2, std::int32_t left, std::int32_t top,
              std::int32_t right, std::int32_t bottom, std::uint32_t mode) {
    canvas.Gradient(Corner(left, top, color1), Corner(right, bottom, color2), mode);
}

void GradFill(TCanvas& canvas, TColor color1, TColor color2, const TRect& rect, std::uint32_t mode) {
    GradFill(canvas, color1, color2, rect.Left, rect.Top, rect.Right, rect.Bottom, mode);
}

void GradFill(TCanvas& canvas, TColor color1, TColor color2, std::int32_t right, std::int32_t bottom,
              std::uint32_t mode) {
    GradFill(canvas, color1, color2, 0, 0, right, bottom, mode);
}

void AngleTextOut(TCanvas& canvas, std::int32_t angle, std::int32_t x, std::int32_t y, StringView text) {
    struct TKept {
        TCanvas& Canvas;
        TFont Font = Canvas.GetFont();
        ~TKept() { Canvas.SetFont(Font); }
    };
    const TKept kept{canvas};
    TFont turned = kept.Font;
    // Beyond what fits, the same direction.
    const bool fits =
        std::int64_t{angle} * 10 == std::clamp<std::int64_t>(std::int64_t{angle} * 10, INT32_MIN, INT32_MAX);
    turned.Escapement = (fits ? angle : angle % 360) * 10;
    canvas.SetFont(turned);
    canvas.TextOut(x, y, text);
}

String ShortenedText(StringView text, TCanvas& canvas, std::int32_t width) {
    if (Fits(text, canvas, width)) return String(text);
    return Longest({}, text, kDots, canvas, width).value_or(String(text));
}

String EllipsePathString(StringView path, TCanvas& canvas, std::int32_t width) {
    if (Fits(path, canvas, width)) return String(path);
    const std::size_t slash = path.find_last_of(u"\\/");
    const StringView name = slash == StringView::npos ? path : path.substr(slash);  // with its separator
    if (slash != StringView::npos) {
        const String end = String(kDots) + String(name);
        if (const auto shortened = Longest({}, path.substr(0, slash), end, canvas, width)) return *shortened;
        if (const auto shortened = Longest(kDots, name, kDots, canvas, width)) return *shortened;
    }
    return Longest({}, name, kDots, canvas, width).value_or(String(path));
}

String EllipsePathString(StringView path, const TLabel& label) {
    TBitmap measure;
    measure.GetCanvas().SetFont(label.GetFont());
    return EllipsePathString(path, measure.GetCanvas(), label.GetWidth());
}

void GetWindowBitmap(TCustomForm& form, std::unique_ptr<TBitmap>& bitmap) {
    bitmap = std::make_unique<TBitmap>(form.GetWidth(), form.GetHeight());
    TCanvas& canvas = bitmap->GetCanvas();
    struct TLocked {
        TCanvas& Canvas;
        explicit TLocked(TCanvas& locked) : Canvas(locked) { Canvas.Lock(); }
        ~TLocked() { Canvas.Unlock(); }
    };
    const TLocked locked(canvas);
    form.PaintTo(canvas, 1, 1);
}

}  // namespace Varnholt
