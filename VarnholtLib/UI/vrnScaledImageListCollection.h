#pragma once

#include <vector>

#include "Platform/Controls/ImageList.h"

/// The choice of an image list by the scale of the display.
///
///     TScaledImageListCollection icons;
///     icons.AddImageList(&small, 1.0F);
///     icons.AddImageList(&large, 2.0F);
///     Draw(*icons.GetImageList(), row);
///
/// The lists are not owned. One that is destroyed is returned as null.
///
/// Threads: main thread only.
namespace Varnholt {

struct TScaledImageList {
    TComponentRef<TImageList> ImageList;
    float Scale = 1;
};

class VARNHOLT_EXPORT TScaledImageListCollection {
public:
    /// Adds a list for a scale, 1 being the design's. Of equal scales the one added first comes first. A scale that
    /// is no number comes last.
    void AddImageList(TImageList* imageList, float scale);
    /// The list of the smallest scale that is at least the given one; if all are smaller, that of the largest. Null
    /// if there is none.
    [[nodiscard]] TImageList* GetImageList(float scale) const;
    /// The same for the density of the screen.
    [[nodiscard]] TImageList* GetImageList() const;

private:
    std::vector<TScaledImageList> FScaledImageLists;  // in rising order of the scale
};

}  // namespace Varnholt
