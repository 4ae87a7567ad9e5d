#pragma once

#include <cstdint>

namespace Varnholt::Test {

/// How often the program has allocated memory by operator new. Counted in test programs that link
/// AllocationCount.cpp.
[[nodiscard]] std::int64_t AllocationCount();

}  // namespace Varnholt::Test
