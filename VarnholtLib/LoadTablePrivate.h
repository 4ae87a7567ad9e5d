#pragma once

#include <array>
#include <cstddef>
#include <ranges>
#include <utility>

#include "VarnholtLib/Foundation/vrnUseCount.h"
#include "VarnholtLib/vrnPackage.h"

/// The machinery behind vrnPackage.h: makes a load table of a list of modules and ties it to the loader.
/// Internal: a library holds one such table, in the source that names its modules.
///
///     constexpr std::array kModules = {TModule{u"vrnMath", {}}, TModule{u"vrnLog", kLogWork}};
///     template class TLoadTable<kModules>;   // from here on the loader runs the table
///
/// A module that begins to work at load takes two lines: the include of its header, and its TModuleWork in
/// its row. The header offers the steps as a constant, such as kLogWork above.
///
/// What the steps work on must be ready before any constructor of a static object has run, and must outlive
/// all destructors of such objects: at the end of a process these run before the loader calls Unload. Hence
/// the variables that the steps set are constinit and have trivial destructors.
namespace Varnholt {

struct TModule {
    StringView Name;
    TModuleWork Work;
};

/// The load table of the modules in the array `kModules`.
template <const auto& kModules>
class TLoadTable {
public:
    [[nodiscard]] static std::span<const TPackageInfoRow> GetRows() noexcept { return kRows; }

    static void Initialize() noexcept {
        for (const TPackageInfoRow& row : kRows) row.Initialize();
    }

    static void Finalize() noexcept {
        for (const TPackageInfoRow& row : kRows | std::views::reverse) row.Finalize();
    }

private:
    static constexpr std::size_t kCount = kModules.size();

    [[gnu::constructor]] static void Load() noexcept { Initialize(); }
    [[gnu::destructor]] static void Unload() noexcept { Finalize(); }

    template <std::size_t kIndex>
    static constexpr TPackageInfoRow MakeRow() noexcept {
        return {kModules[kIndex].Name,  //
                []() noexcept { FUses[kIndex].Initialize(kModules[kIndex].Work); },
                []() noexcept { FUses[kIndex].Finalize(kModules[kIndex].Work); },
                []() noexcept { return FUses[kIndex].GetCount(); }};
    }

    template <std::size_t... kIndexes>
    static constexpr std::array<TPackageInfoRow, kCount> MakeRows(std::index_sequence<kIndexes...>) noexcept {
        return {MakeRow<kIndexes>()...};
    }

    static constinit inline std::array<TModuleUse, kCount> FUses{};
    static constexpr std::array<TPackageInfoRow, kCount> kRows = MakeRows(std::make_index_sequence<kCount>());
};

}  // namespace Varnholt
