#pragma once

#include <cstdint>

/// Points, sizes and rectangles in pixels, with y growing downwards.
///
/// Threads: plain values.
namespace Varnholt {

struct TPoint {
    std::int32_t X = 0;
    std::int32_t Y = 0;
    bool operator==(const TPoint&) const = default;
};

struct TSize {
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    bool operator==(const TSize&) const = default;
};

/// The pixels from Left to Right and from Top to Bottom, without those at Right and Bottom.
struct TRect {
    std::int32_t Left = 0;
    std::int32_t Top = 0;
    std::int32_t Right = 0;
    std::int32_t Bottom = 0;
    bool operator==(const TRect&) const = default;
};

}  // namespace Varnholt
