#pragma once

#include "Platform/Controls/Component.h"
#include "Platform/Drawing/Geometry.h"

/// A list of images of one size.
///
/// Threads: main thread only.
namespace Varnholt {

class VARNHOLT_EXPORT TImageList : public TComponent {
public:
    explicit TImageList(TSize size = {16, 16});
    ~TImageList() override;
    /// Of each image, in pixels.
    [[nodiscard]] TSize GetSize() const noexcept { return FSize; }

private:
    TSize FSize;
};

}  // namespace Varnholt
