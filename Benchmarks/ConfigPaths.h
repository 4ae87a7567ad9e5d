#pragma once

#include <vector>

#include "Platform/Runtime/Format.h"

namespace Varnholt {

inline constexpr int kSettings = 1000;

/// The paths of kSettings settings in three levels: ten groups of ten groups of ten settings.
inline std::vector<String> ConfigPaths(StringView separator = u".") {
    std::vector<String> paths;
    for (int i = 0; i < kSettings; ++i)
        paths.push_back(
            Format(u"group%d%sforms%d%ssetting%d", {i / 100, separator, i / 10 % 10, separator, i % 10}));
    return paths;
}

}  // namespace Varnholt
