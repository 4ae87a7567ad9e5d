#pragma once

#include <memory>

#include "Platform/Drawing/Colors.h"
#include "VarnholtLib/Data/vrnList.h"

/// Colours that are told apart by hue and brightness, as for the lines of a chart.
///
///     const auto colors = TColorDistributorFactory::GetObject()->Distribute(9);
///
/// There are six hues, in this order: red, green, blue, yellow, magenta, cyan. Up to six colours have one
/// brightness; more have as many brightnesses as are needed, in equal steps from the darkest to the brightest, each
/// with the six hues. The same count always gives the same colours, and a count above a multiple of six changes all
/// of them.
///
/// Threads: an object may be used by any thread.
namespace Varnholt {

extern template class TInterfacedListEnumerator<TColor>;
extern template class TInterfacedList<TColor>;

class VARNHOLT_EXPORT IColorDistributor {
public:
    virtual ~IColorDistributor() = default;
    /// So many plain colours in a new list; none for a count of 0 or less.
    [[nodiscard]] virtual TNewList<TColor> Distribute(std::int32_t numColors) const = 0;
};

class VARNHOLT_EXPORT TColorDistributorFactory {
public:
    TColorDistributorFactory() = delete;
    [[nodiscard]] static std::shared_ptr<IColorDistributor> GetObject();
};

}  // namespace Varnholt
