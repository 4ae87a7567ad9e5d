#include "VarnholtLib/Data/vrnFloatArray.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

#include "Platform/Runtime/Encoding.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "VarnholtLib/Data/vrnFloatSort.h"

namespace Varnholt {
namespace {

std::int32_t CheckedCount(std::int32_t nItems) {
    if (nItems < 1) throw EGridException(u"Can't create a float array with a dimension less than 1");
    return nItems;
}

}  // namespace

TFloatArray::TFloatArray(std::int32_t nItems) : TBasedArray(CheckedCount(nItems)) {}

TFloatArray::TFloatArray(std::vector<float>&& buffer, std::int32_t base) noexcept
    : TBasedArray(std::move(buffer), base) {}

TSingleArray TFloatArray::GetRange(std::int32_t startIndex, std::int32_t endIndex) const {
    return ValuesFrom(startIndex, std::int64_t{endIndex} - startIndex + 1);
}

TSingleArray TFloatArray::GetValues(std::int32_t startIndex, std::int32_t count) const {
    return ValuesFrom(startIndex, count);
}

TSingleArray TFloatArray::ValuesFrom(std::int64_t startIndex, std::int64_t count) const {
    if (count < 0) throw EGridException(u"Can't get a negative number of values from a TFloatArray");
    if (count == 0) return {};
    const std::int64_t position = startIndex - GetBase();
    if (!IsIndex(position, FBuffer.size())) RaiseIndexError(u"TFloatArray.GetFloat", startIndex);
    if (position + count > GetCount()) RaiseIndexError(u"TFloatArray.GetFloat", std::int64_t{GetLast()} + 1);
    return TSingleArray(
        GetBuffer().subspan(static_cast<std::size_t>(position), static_cast<std::size_t>(count)));
}

TSingleArray TFloatArray::ToArray() const {
    return TSingleArray(GetBuffer());
}

void TFloatArray::CopyFrom(std::span<const float> source, std::int32_t sStart, std::int32_t dStart,
                           std::int32_t count) {
    const std::int64_t sourceEnd = std::int64_t{sStart} + count;
    if (sStart < 0 || count < 0 || sourceEnd > std::ssize(source)) {
        throw Exception(u"Size error in source buffer");
    }
    const std::int64_t end = std::int64_t{dStart} + count;
    if (dStart < 0 || end > GetCount()) {
        throw Exception(
            Format(u"Size error is destination buffer\r\n%d/%d", {std::int64_t{GetCount()} - 1, end - 1}));
    }
    if (count == 0) return;
    const auto size = static_cast<std::size_t>(count) * sizeof(float);
    std::memmove(FBuffer.data() + dStart, source.data() + sStart, size);
}

float TFloatArray::Sum() const noexcept {
    float total = 0.0F;
    for (const float value : FBuffer) total += value;
    return total;
}

void TFloatArray::Sort() {
    SortFloats(FBuffer);
}

void TFloatArray::InsertionSort() {
    InsertionSortFloats(FBuffer);
}

TFloatArray TFloatArray::IndexSort() {
    std::vector<float> positions(FBuffer.size());
    IndexSortFloats(FBuffer, positions);
    return TFloatArray(std::move(positions), 1);
}

void TFloatArray::Reverse() noexcept {
    std::ranges::reverse(FBuffer);
}

std::optional<TFloatArray> TFloatArray::Clean(float min, float max) const {
    std::int32_t base = 1;
    std::vector<float> kept = ValuesOutside(min, max, base);
    if (kept.empty()) return std::nullopt;
    return TFloatArray(std::move(kept), base);
}

void TFloatArray::Filter(const TFloatFilterFunction& filterFunc, void* param) {
    if (!filterFunc) throw EArgumentNilException(u"filterFunc");
    std::vector<float> kept;
    for (std::size_t i = 0; i < FBuffer.size(); ++i) {  // by position: the callback may resize this array
        const float value = FBuffer[i];
        if (!filterFunc(value, param)) kept.push_back(value);
    }
    if (kept.size() != FBuffer.size()) FBuffer = std::move(kept);
}

String TFloatArray::ToString() const {
    String text;
    for (const float value : FBuffer) {
        if (!text.empty()) text += u',';
        text += Format(u"%.3f", {value});
    }
    return text;
}

void TFloatArray::SaveToFile(StringView fileName) const {
    SaveLines(fileName, String(), u"%d %f\r\n");
}

void TFloatArray::SaveToCSVFile(StringView fileName) const {
    SaveLines(fileName, u"Index,Value\r\n", u"%d,%f\r\n");
}

void TFloatArray::SaveLines(StringView fileName, String text, StringView lineFormat) const {
    std::int64_t index = GetBase();
    for (const float value : FBuffer) text += Format(lineFormat, {index++, value});
    WriteFileInOneGo(fileName, TEncoding::Default().GetBytes(text));
}

}  // namespace Varnholt
