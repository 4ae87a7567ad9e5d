#pragma once

#include <cstdint>
#include <span>

#include "Platform/Runtime/Types.h"

/// The frame of the library: what happens when it loads and unloads.
///
/// A user has nothing to do. The dynamic loader runs Initialize before the first line of a program that links
/// the library, or inside dlopen, and Finalize when the library is unloaded: at dlclose, or at the end of the
/// process after the last destructor of a static object. In between any function or class can be used.
///
///     for (const TPackageInfoRow& row : GetPackageInfoTable().Rows) std::cout << ToUtf8(row.Name) << '\n';
///
/// Each module counts its uses downwards: 0 before the loader has run, -1 from then on, -2 after one more
/// explicit Initialize, and back by one for each Finalize. It works when its count leaves 0 and when it
/// returns to 0. So an explicit Initialize with its Finalize only changes counts, and the pairs may be
/// nested. One Finalize too many stops the modules early.
///
/// Threads: only the thread that loads and unloads the library calls Initialize, Finalize and the operations
/// of the rows; the counts are plain integers.
namespace Varnholt {

/// One module in the load table.
struct TPackageInfoRow {
    StringView Name;
    void (*Initialize)() noexcept;  ///< counts one more use of the module
    void (*Finalize)() noexcept;    ///< undoes one Initialize
    int (*GetUseCount)() noexcept;  ///< minus the number of uses
};

/// The load table: all modules in the order in which they initialise. They finalise in the reverse order.
struct TPackageInfoTable {
    std::int32_t Count;                     ///< number of rows
    std::span<const TPackageInfoRow> Rows;  ///< valid while the library is loaded
};

[[nodiscard]] VARNHOLT_EXPORT TPackageInfoTable GetPackageInfoTable() noexcept;

/// Runs the initialise half of the load table, first row to last.
VARNHOLT_EXPORT void Initialize() noexcept;

/// Runs the finalise half of the load table, last row to first.
VARNHOLT_EXPORT void Finalize() noexcept;

}  // namespace Varnholt
