#include "VarnholtBaseLib/Months.h"

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"

namespace Varnholt {

void RaiseMonthOutOfRange(std::int64_t month) {
    throw ERangeError(Format(u"Month out of range (%d)", {month}));
}

TMonthSet MonthSetOf(std::initializer_list<TMonth> months) {
    TMonthSet set;
    for (const TMonth month : months) set[month] = true;
    return set;
}

}  // namespace Varnholt
