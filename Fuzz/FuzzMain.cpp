#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iostream>

#include "Fuzz/FuzzInput.h"

namespace Varnholt::Fuzz {

void Fail(const char* property, StringView found, StringView expected) {
    std::cerr << "violated: " << property << '\n';
    if (found != expected) {
        std::cerr << "found:    [" << ToUtf8(found) << "]\nexpected: [" << ToUtf8(expected) << "]\n";
    }
    std::abort();
}

bool SameValue(Extended a, Extended b) {
    constexpr std::size_t kValueBytes = 10;
    return std::memcmp(&a, &b, kValueBytes) == 0 || (std::isnan(a) && std::isnan(b));
}

String TextOf(TInput input) {
    if (input.size() >= 2 && input[0] == 0xFF && input[1] == 0xFE) {
        String text(input.size() / 2 - 1, u'\0');
        std::memcpy(text.data(), input.data() + 2, text.size() * sizeof(Char));
        return text;
    }
    return FromUtf8({reinterpret_cast<const char*>(input.data()), input.size()});
}

}  // namespace Varnholt::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Varnholt::Fuzz::RunInput({data, size});
    return 0;
}
