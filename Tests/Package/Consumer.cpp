#include <cstdlib>
#include <iostream>

#include "VarnholtLib/VarnholtLib.h"

namespace {

using namespace Varnholt;

/// Uses what the library makes at load before main begins and after it ends.
class TEarlyAndLate {
public:
    ~TEarlyAndLate() {
        if (TFitFuncs::Items().size() != FFits) std::_Exit(3);
    }
    [[nodiscard]] std::size_t GetFits() const { return FFits; }

private:
    std::size_t FFits = TFitFuncs::Items().size();
};

const TEarlyAndLate kEarlyAndLate;

}  // namespace

int main() {
    TCalc calc;
    calc.Set_Exp(u"2 * (1 + 1.5)");
    const bool isRight =
        kEarlyAndLate.GetFits() == 2 && calc.Calculate() == 5 && ToUpper(u"\u00E4") == u"\u00C4";
    std::cout << (isRight ? "The package works" : "The package fails") << '\n';
    return isRight ? 0 : 1;
}
