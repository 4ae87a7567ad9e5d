#pragma once

#include <cstdint>

/// Points, sizes and rectangles in pixels, with y growing downwards.
///
/// A whole number is the middle of a pixel: the line from (0, 0) to (3, 0) is on the first four pixels of the first row.
///
/// Threads: plain values.
namespace Varnholt {

struct TPoint {
    std::int32_t X = 0;
    std::int32_t Y = 0;
    bool operator==(const TPoint&) const = default;
};

/// A point between the pixels.
struct TFloatPoint {
    float X = 0;
    float Y = 0;
    bool operator==(const TFloatPoint&) const = default;
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
