#include "VarnholtLib/UI/vrnColorDistributor.h"

#include <algorithm>

#include "Platform/Runtime/FloatMath.h"

namespace Varnholt {

template class TInterfacedListEnumerator<TColor>;
template class TInterfacedList<TColor>;

namespace {

constexpr std::int32_t kHueCount = 6;
// The channels that have the level, as bytes of a colour: red, green, blue, yellow, magenta, cyan.
constexpr TColor kHues[kHueCount] = {0x000001, 0x000100, 0x010000, 0x000101, 0x010001, 0x010100};

class TColorDistributor final : public IColorDistributor {
public:
    TNewList<TColor> Distribute(std::int32_t numColors) const override {
        const auto colors = std::make_shared<TInterfacedList<TColor>>();
        if (numColors <= 0) return colors;
        const std::int32_t last = (numColors - 1) / kHueCount;  // the number of the last brightness, from 0
        if (last == 0) AddHues(*colors, 0.7F);
        const auto step = static_cast<float>(Extended{100} / std::max(last, 1) / 100);
        for (std::int32_t i = 0; last > 0 && i <= last; ++i)
            AddHues(*colors, static_cast<float>(Extended{step} * i));
        return colors->Take(numColors);
    }

private:
    static void AddHues(IList<TColor>& colors, float brightness) {
        const auto level = static_cast<TColor>(RoundToInt(Extended{180} * brightness) + 50);
        for (const TColor hue : kHues) colors.Add(hue * level);
    }
};

}  // namespace

std::shared_ptr<IColorDistributor> TColorDistributorFactory::GetObject() {
    return std::make_shared<TColorDistributor>();
}

}  // namespace Varnholt
