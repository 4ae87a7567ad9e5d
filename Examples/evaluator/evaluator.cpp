#include <cstdlib>
#include <iostream>

#include "VarnholtLib/Numerics/vrnMath.h"

// Calculates an expression with a keyword whose value this program supplies.
int main(int argc, char** argv) {
    using namespace Varnholt;
    double rain = argc > 1 ? std::atof(argv[1]) : 10.9;
    try {
        TCalc calc;
        calc.RegisterKeyword(u"rain", &rain, [](TCalc&, const String&, void* param) {
            return static_cast<Extended>(*static_cast<double*>(param));
        });
        calc.Set_Exp(u"2 * ($rain + 1.5)");
        std::cout << ToUtf8(calc.Get_Exp()) << " = " << static_cast<double>(calc.Calculate()) << '\n';
    } catch (const Exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
    return 0;
}
