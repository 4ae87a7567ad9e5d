#include "VarnholtLib/UI/vrnScaledImageListCollection.h"

#include <algorithm>

#include "Platform/Controls/Application.h"

namespace Varnholt {

void TScaledImageListCollection::AddImageList(TImageList* imageList, float scale) {
    const auto place = std::ranges::find_if(FScaledImageLists, [&](const TScaledImageList& item) {
        return item.Scale > scale || item.Scale != item.Scale;
    });
    FScaledImageLists.insert(place, {imageList, scale});
}

TImageList* TScaledImageListCollection::GetImageList(float scale) const {
    if (FScaledImageLists.empty()) return nullptr;
    const auto found = std::ranges::find_if(
        FScaledImageLists, [&](const TScaledImageList& item) { return item.Scale >= scale; });
    return (found == FScaledImageLists.end() ? FScaledImageLists.back() : *found).ImageList.Get();
}

TImageList* TScaledImageListCollection::GetImageList() const {
    return GetImageList(static_cast<float>(Screen().GetPixelsPerInch()) / 96.0F);
}

}  // namespace Varnholt
