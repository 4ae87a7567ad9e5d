#pragma once

#include <array>
#include <cstddef>
#include <utility>

#include "VarnholtLib/vrnPackage.h"

/// The machinery behind vrnPackage.h: makes a load table from a list of modules. A library holds one such
/// table, in the source that names its modules.
///
///     constexpr std::array kModules = {
///         TModule{u"vrnMath", {}},
///         TModule{u"vrnLog", {.Initialize = &CreateNullLog, .Finalize = &ReleaseNullLog}},
///     };
///     using TTable = TLoadTable<kModules>;
///
///     [[gnu::constructor(101)]] void Load() noexcept { TTable::Initialize(); }
///     [[gnu::destructor(101)]] void Unload() noexcept { TTable::Finalize(); }
///
/// The loader runs the last two. Their priority is the first that applications may use: in a program that
/// links the library statically, they run before the constructors and after the destructors of its static
/// objects. It has to be given to plain functions, because g++ 12 ignores one inside a template.
///
/// A module that begins to work at load takes two lines there: the include of its private header, such as
/// vrnLogLoadPrivate.h, which declares its steps, and the steps in its row. What the steps create is kept in
/// a TModuleState (vrnModuleState.h), because they run before all constructors of an application's static
/// objects and after all their destructors.
///
/// Each module counts its uses, so that a library that is loaded twice starts its modules once, and stops
/// them at the last unload. The count runs down: 0 for a module that is not in use, -1 for one that was
/// loaded once.
///
/// Threads: the counts are plain integers; the loader calls on one thread.
namespace Varnholt {

/// One step of a module's start or end. It must not raise: nothing could catch it while the library loads.
using TWorkStep = void (*)() noexcept;

/// What a module does at load and at unload; a missing step is null. The class steps are those of a class of
/// the module that holds state at class level.
struct TModuleWork {
    TWorkStep ConstructClass = nullptr;
    TWorkStep Initialize = nullptr;
    TWorkStep Finalize = nullptr;
    TWorkStep DestructClass = nullptr;
};

struct TModule {
    StringView Name;
    TModuleWork Work;
};

/// One use count and its rule.
class TUseCount {
public:
    /// Decrements the count, and runs the step only if the count was 0 before.
    void Initialize(TWorkStep step) noexcept {
        const bool isFirst = FCount-- == 0;
        if (isFirst && step != nullptr) step();
    }

    /// Increments the count, and runs the step only if the count is now 0.
    void Finalize(TWorkStep step) noexcept {
        const bool isLast = ++FCount == 0;
        if (isLast && step != nullptr) step();
    }

    [[nodiscard]] int GetCount() const noexcept { return FCount; }

private:
    int FCount = 0;
};

/// The use counts of a module: one of its own and one for its class-level work, which runs immediately before
/// the module's initialise step and immediately after its finalise step.
class TModuleUse {
public:
    void Initialize(const TModuleWork& work) noexcept {
        FClass.Initialize(work.ConstructClass);
        FModule.Initialize(work.Initialize);
    }

    void Finalize(const TModuleWork& work) noexcept {
        FModule.Finalize(work.Finalize);
        FClass.Finalize(work.DestructClass);
    }

    /// The module's own count.
    [[nodiscard]] int GetCount() const noexcept { return FModule.GetCount(); }

private:
    TUseCount FClass;
    TUseCount FModule;
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
        for (auto row = kRows.rbegin(); row != kRows.rend(); ++row) row->Finalize();
    }

private:
    static constexpr std::size_t kCount = kModules.size();

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
