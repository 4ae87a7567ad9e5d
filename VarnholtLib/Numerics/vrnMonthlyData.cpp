#include "VarnholtLib/Numerics/vrnMonthlyData.h"

#include <span>
#include <utility>
#include <vector>

namespace Varnholt {

namespace {

float SumOf(std::span<const float> values) {
    float sum = 0;
    for (const float value : values) sum += value;
    return sum;
}

float MeanOf(std::span<const float> values) {
    return SumOf(values) / static_cast<float>(values.size());
}

}  // namespace

float TMonthlyDataHelper::Sum(const TMonthlyData& data) {
    return SumOf(data.GetSpan());
}

float TMonthlyDataHelper::Average(const TMonthlyData& data) {
    return MeanOf(data.GetSpan());
}

float TMonthlyDataHelper::Min(const TMonthlyData& data) {
    return MinOf(data.GetSpan());
}

float TMonthlyDataHelper::Max(const TMonthlyData& data) {
    return MaxOf(data.GetSpan());
}

TSingleArray TMonthlyDataHelper::Extract(const TMonthlyData& data, const TMonthSet& months) {
    std::vector<float> values;
    for (const TMonth month : kMonths) {
        if (months[month]) values.push_back(data[month]);
    }
    return TSingleArray(std::move(values));
}

float TMonthlyDataHelper::Sum(const TMonthlyData& data, const TMonthSet& months) {
    return SumOf(Extract(data, months));
}

float TMonthlyDataHelper::Average(const TMonthlyData& data, const TMonthSet& months) {
    return MeanOf(Extract(data, months));
}

float TMonthlyDataHelper::Min(const TMonthlyData& data, const TMonthSet& months) {
    return MinOf(Extract(data, months));
}

float TMonthlyDataHelper::Max(const TMonthlyData& data, const TMonthSet& months) {
    return MaxOf(Extract(data, months));
}

}  // namespace Varnholt
