#include "VarnholtLib/Numerics/vrnTrendline.h"

#include <span>

namespace Varnholt {
namespace {

class TTrendline final : public ITrendline {
public:
    explicit TTrendline(std::span<const float> values);

    [[nodiscard]] float GetY(std::int32_t x) const override {
        return static_cast<float>(static_cast<Extended>(x) * FM + FB);
    }

private:
    float FM;
    float FB;
};

TTrendline::TTrendline(std::span<const float> values) {
    const auto n = static_cast<Extended>(values.size());
    float sumI = 0, sumV = 0, sumIV = 0, sumII = 0;
    Extended i = 0;
    for (const float v : values) {
        i += 1;
        sumI = static_cast<float>(sumI + i);
        sumV = static_cast<float>(sumV + Extended{v});
        sumIV = static_cast<float>(sumIV + i * v);
        sumII = static_cast<float>(sumII + i * i);
    }
    const Extended p = n * sumIV;
    const Extended q = Extended{sumI} * sumV;
    const Extended r = n * sumII;
    const Extended s = Extended{sumI} * sumI;
    FM = static_cast<float>((p - q) / (r - s));
    FB = static_cast<float>((sumV - FM * Extended{sumI}) / n);
}

}  // namespace

std::shared_ptr<ITrendline> TTrendlineFactory::GetObject(const TSingleArray& values) {
    return std::make_shared<TTrendline>(values);
}

}  // namespace Varnholt
