#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "Platform/Drawing/Colors.h"
#include "Platform/Drawing/Geometry.h"

/// Paths between the pixels, and the pen that draws them. Drawn by TGPGraphics.
///
/// Threads: plain values.
namespace Varnholt {

struct TGPPen {
    TARGB Color = 0xFF000000;
    float Width = 1;  ///< in pixels
    bool operator==(const TGPPen&) const = default;
};

/// Figures, each a line through points that may be closed.
class VARNHOLT_EXPORT TGPGraphicsPath {
public:
    struct TFigure {
        std::vector<TFloatPoint> Points;
        bool IsClosed = false;
        bool operator==(const TFigure&) const = default;
    };

    /// Appends a line to the last figure, with a line to its beginning if that is another point than the end of the
    /// figure; begins a figure if there is none, the last one is closed,
    /// or BeginFigure was called.
    void AddLine(float x1, float y1, float x2, float y2);
    /// Makes the next line begin a new figure and leaves the last one open.
    void BeginFigure() noexcept { FBegins = true; }
    /// Closes the last figure; nothing if there is none.
    void CloseFigure() noexcept;
    /// Removes all figures.
    void Reset() noexcept {
        FFigures.clear();
        FBegins = false;
    }

    [[nodiscard]] std::span<const TFigure> GetFigures() const& noexcept { return FFigures; }
    std::span<const TFigure> GetFigures() const&& = delete;

private:
    std::vector<TFigure> FFigures;
    bool FBegins = false;
};

}  // namespace Varnholt
