#pragma once

#include <cstdint>
#include <functional>

namespace Varnholt::Test {

/// How often the program has allocated memory by operator new. Counted in test programs that link
/// AllocationCount.cpp.
[[nodiscard]] std::int64_t AllocationCount();

/// Runs the call with its first allocation failing, then with its second, and so on, until none fails any
/// more. After each run the check must hold:
///
///     FailEachAllocation([&] { calc.Set_Exp(u"1+2"); }, [&] { EXPECT_EQ(calc.Get_Exp(), u"3"); });
///
/// The call may raise anything while an allocation fails, and nothing afterwards. Allocations of other
/// threads do not fail. Returns the number of allocations that failed.
std::int64_t FailEachAllocation(const std::function<void()>& call, const std::function<void()>& check);

}  // namespace Varnholt::Test
