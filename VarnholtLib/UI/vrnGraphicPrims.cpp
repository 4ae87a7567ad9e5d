#include "VarnholtLib/UI/vrnGraphicPrims.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "Platform/Runtime/FloatMath.h"

namespace Varnholt {
namespace {

constexpr std::uint8_t kLeft = 1, kRight = 2, kBottom = 4, kTop = 8;
/// A line needs at most four.
constexpr int kMaxCuts = 8;
constexpr Extended kMaxSpan = 0.98L;

/// The number without its fraction.
std::int32_t Truncated(Extended value) noexcept {
    using TLimits = std::numeric_limits<std::int32_t>;
    if (std::isnan(value)) return 0;
    return static_cast<std::int32_t>(
        std::clamp(value, static_cast<Extended>(TLimits::min()), static_cast<Extended>(TLimits::max())));
}

template <typename TNumber>
std::uint8_t CodeOf(TNumber x, TNumber y, const TRect& rect) noexcept {
    const int horizontal = x < static_cast<TNumber>(rect.Left)    ? kLeft
                           : x > static_cast<TNumber>(rect.Right) ? kRight
                                                                  : 0;
    const int vertical = y > static_cast<TNumber>(rect.Bottom) ? kBottom
                         : y < static_cast<TNumber>(rect.Top)  ? kTop
                                                               : 0;
    return static_cast<std::uint8_t>(horizontal + vertical);
}

/// The nearest integer of a quotient, ties to the even one.
std::int64_t RoundedQuotient(std::int64_t dividend, std::int64_t divisor) noexcept {
    const std::int64_t whole = dividend / divisor;
    const std::int64_t rest = 2 * std::abs(dividend % divisor), limit = std::abs(divisor);
    const bool isAway = rest > limit || (rest == limit && whole % 2 != 0);
    return whole + (isAway ? ((dividend < 0) == (divisor < 0) ? 1 : -1) : 0);
}

/// A line whose ends have coordinates of one type, and its slope.
template <typename TNumber>
struct TLine {
    struct TEnd {
        TNumber X, Y;
    };
    TEnd End1, End2;
    TEnd Start = End1;
    Extended DX = Difference(End2.X, End1.X), DY = Difference(End2.Y, End1.Y);

    static Extended Difference(TNumber a, TNumber b) noexcept {
        if constexpr (std::is_same_v<TNumber, float>)
            return a - b;  // rounded to 32 bits
        else
            return static_cast<Extended>(a) - b;
    }

    /// Puts an end on an edge that it is beyond. False if the new coordinate is no number.
    bool Cut(TEnd& end, std::uint8_t code, const TRect& rect) const noexcept {
        const bool isVerticalEdge = (code & (kLeft | kRight)) != 0;
        const std::int32_t edge = isVerticalEdge          ? (code & kLeft) != 0 ? rect.Left : rect.Right
                                  : (code & kBottom) != 0 ? rect.Bottom
                                                          : rect.Top;
        const Extended distance =
            isVerticalEdge ? Distance(DY, Start.X, edge, DX) : Distance(DX, Start.Y, edge, DY);
        if (!std::isfinite(distance)) return false;
        const bool isExact = isVerticalEdge && std::is_same_v<TNumber, float>;
        const Extended rounded = isExact ? distance : Rounded(distance);
        if (isVerticalEdge)
            end = {static_cast<TNumber>(edge), Moved(Start.Y, rounded)};
        else
            end = {Moved(Start.X, rounded), static_cast<TNumber>(edge)};
        return true;
    }

    /// rise * (edge - start) / run. Of small integers it is rounded already, which gives the same integer: a quotient n / d
    /// that is not halfway between integers is at least 1 / (2 d) away from there, and with n up to 2^60 the last of the
    /// 64 bits of Extended is at most 1 / (8 d).
    static Extended Distance(Extended rise, TNumber start, std::int32_t edge, Extended run) noexcept {
        if constexpr (!std::is_same_v<TNumber, float>) {
            constexpr std::int64_t kSmall = 1 << 30;
            const std::int64_t way = std::int64_t{edge} - start;
            if (run != 0 && std::fabs(rise) <= kSmall && std::fabs(run) <= kSmall && std::abs(way) <= kSmall)
                return static_cast<Extended>(
                    RoundedQuotient(static_cast<std::int64_t>(rise) * way, static_cast<std::int64_t>(run)));
        }
        return rise * (edge - static_cast<Extended>(start)) / run;
    }

    static TNumber Moved(TNumber from, Extended distance) noexcept {
        if constexpr (std::is_same_v<TNumber, float>)
            return static_cast<float>(from + distance);
        else
            return Truncated(from + distance);
    }

    /// Numbers from 2^63 on are whole.
    static Extended Rounded(Extended value) noexcept {
        if (std::fabs(value) < (1 << 30) && value == static_cast<Extended>(static_cast<std::int32_t>(value)))
            return value;
        const std::optional<std::int64_t> rounded = TryRoundToInt64(value);
        return rounded ? static_cast<Extended>(*rounded) : value;
    }
};

/// Puts the ends of the line on the part inside. False if there is none to draw.
template <typename TNumber>
bool Clip(TLine<TNumber>& line, const TRect& rect) noexcept {
    const Extended width = static_cast<Extended>(rect.Left) - rect.Right;
    const Extended height = static_cast<Extended>(rect.Top) - rect.Bottom;
    if (width == 0 || height == 0 || !std::isfinite(line.DX) || !std::isfinite(line.DY)) return false;
    std::uint8_t code1 = CodeOf(line.End1.X, line.End1.Y, rect);
    std::uint8_t code2 = CodeOf(line.End2.X, line.End2.Y, rect);
    for (int cuts = 0; code1 != 0 || code2 != 0; ++cuts) {
        if ((code1 & code2) != 0 || cuts == kMaxCuts) return false;
        const bool isFirst = code1 != 0;
        auto& end = isFirst ? line.End1 : line.End2;
        std::uint8_t& code = isFirst ? code1 : code2;
        if (!line.Cut(end, code, rect)) return false;
        code = CodeOf(end.X, end.Y, rect);
    }
    const auto span = [](TNumber a, TNumber b, Extended whole) {
        return std::fabs((static_cast<Extended>(a) - b) / whole);
    };
    return span(line.End1.X, line.End2.X, width) <= kMaxSpan &&
           span(line.End1.Y, line.End2.Y, height) <= kMaxSpan;
}

TLine<std::int32_t> LineOf(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2) noexcept {
    return {.End1 = {x1, y1}, .End2 = {x2, y2}};
}

// --- Curves ---

/// A coordinate of the uniform cubic B-spline of four points.
class TSplinePiece {
public:
    TSplinePiece(std::int64_t p0, std::int64_t p1, std::int64_t p2, std::int64_t p3) noexcept
        : FA(static_cast<Extended>(3 * p1 - p0 - 3 * p2 + p3)),
          FB(static_cast<Extended>(3 * (p0 - 2 * p1 + p2))),
          FC(static_cast<Extended>(3 * (p2 - p0))),
          FD(static_cast<Extended>(p0 + 4 * p1 + p2)) {}

    [[nodiscard]] std::int32_t At(float parameter) const noexcept {
        const Extended t = parameter;
        return Truncated((t * t * t * FA + t * t * FB + t * FC + FD) / 6);
    }

private:
    Extended FA, FB, FC, FD;
};

/// Draws chords from a first point on.
class TChords {
public:
    TChords(TCanvas& canvas, TPoint start) noexcept : FCanvas(canvas), FCurrent(start) {}

    void To(TPoint next) {
        FCanvas.MoveTo(FCurrent.X, FCurrent.Y);
        FCanvas.LineTo(next.X, next.Y);
        FCurrent = next;
    }

private:
    TCanvas& FCanvas;
    TPoint FCurrent;
};

/// The number of ways to choose k of n, as 32 bits: the product of k + 1 to n, divided by 2 to n - k in turn.
float Binomial(std::size_t n, std::size_t k) noexcept {
    double value = 1;
    for (std::size_t factor = k + 1; factor <= n; ++factor) value *= static_cast<double>(factor);
    for (std::size_t divisor = 2; divisor <= n - k; ++divisor) value /= static_cast<double>(divisor);
    return static_cast<float>(value);
}

/// The curve at a parameter. `binomials` has one for each point.
TPoint BezierAt(std::span<const TPoint> points, std::span<const float> binomials, float t) noexcept {
    TPoint sum;
    const Extended rest = Extended{1} - t;
    for (std::size_t k = 0; k < points.size(); ++k) {
        Extended product = binomials[k];
        for (std::size_t i = 0; i < k; ++i) product *= t;
        for (std::size_t i = k + 1; i < points.size(); ++i) product *= rest;
        const auto weight = static_cast<float>(product);
        sum.X = Truncated(sum.X + points[k].X * static_cast<Extended>(weight));
        sum.Y = Truncated(sum.Y + points[k].Y * static_cast<Extended>(weight));
    }
    return sum;
}

}  // namespace

std::uint8_t OutCode(std::int32_t x, std::int32_t y, const TRect& rect) noexcept {
    return CodeOf(x, y, rect);
}

std::uint8_t OutCode(float x, float y, const TRect& rect) noexcept {
    return CodeOf(x, y, rect);
}

bool ClipLine(TCanvas& canvas, std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2,
              const TRect& rect) {
    auto line = LineOf(x1, y1, x2, y2);
    if (!Clip(line, rect)) return false;
    canvas.Polyline(std::array{TPoint{line.End1.X, line.End1.Y}, TPoint{line.End2.X, line.End2.Y}});
    return true;
}

bool ClipLine(TGPGraphics& graphics, const TGPPen& pen, std::int32_t x1, std::int32_t y1, std::int32_t x2,
              std::int32_t y2, const TRect& rect) {
    auto line = LineOf(x1, y1, x2, y2);
    if (!Clip(line, rect)) return false;
    graphics.DrawLine(pen, line.End1.X, line.End1.Y, line.End2.X, line.End2.Y);
    return true;
}

bool ClipLine(TGPGraphicsPath& path, float x1, float y1, float x2, float y2, const TRect& rect) {
    TLine<float> line{.End1 = {x1, y1}, .End2 = {x2, y2}};
    if (!Clip(line, rect)) return false;
    path.AddLine(line.End1.X, line.End1.Y, line.End2.X, line.End2.Y);
    path.CloseFigure();
    return true;
}

bool InWindow(std::int32_t x, std::int32_t y, const TRect& rect) noexcept {
    return x >= rect.Left && x <= rect.Right && y >= rect.Top && y <= rect.Bottom;
}

bool RectInRect(const TRect& r1, const TRect& r2) noexcept {
    return r1.Left >= r2.Left && r1.Right <= r2.Right && r1.Top >= r2.Top && r1.Bottom <= r2.Bottom;
}

TRect OrderRect(const TRect& rect) noexcept {
    const auto [left, right] = std::minmax(rect.Left, rect.Right);
    const auto [top, bottom] = std::minmax(rect.Top, rect.Bottom);
    return {left, top, right, bottom};
}

void BSpline(TCanvas& canvas, std::span<const TPoint> points, std::int32_t steps) {
    if (steps < 1) return;
    const float step = static_cast<float>(Extended{1} / steps);
    for (std::size_t i = 0; i + 3 < points.size(); ++i) {
        const auto piece = points.subspan(i, 4);
        const TSplinePiece x(piece[0].X, piece[1].X, piece[2].X, piece[3].X);
        const TSplinePiece y(piece[0].Y, piece[1].Y, piece[2].Y, piece[3].Y);
        float t = step;
        TChords chords(canvas, {x.At(t), y.At(t)});
        for (std::int32_t chord = 0; chord < steps; ++chord) {
            t += step;
            chords.To({x.At(t), y.At(t)});
        }
    }
}

void Bezier(TCanvas& canvas, std::span<const TPoint> points, std::int32_t steps) {
    if (points.empty() || steps < 1) return;
    std::vector<float> binomials(points.size());
    for (std::size_t k = 0; k < points.size(); ++k) binomials[k] = Binomial(points.size() - 1, k);
    TChords chords(canvas, BezierAt(points, binomials, 0));
    for (std::int64_t i = 1; i <= steps; ++i)
        chords.To(BezierAt(points, binomials, static_cast<float>(static_cast<Extended>(i) / steps)));
}

TFloatPoint FloatPoint(float x, float y) noexcept {
    return {x, y};
}

}  // namespace Varnholt
