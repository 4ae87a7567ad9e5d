#pragma once

#include <cstdint>
#include <vector>

#include "Platform/Runtime/Types.h"

/// The file types of a file dialog, each with the application's own code.
///
///     TCommonDialogFilters filters;
///     filters.Add(kCsv, u"Comma-separated (*.csv)", u"*.csv", u".csv");
///     filters.Add(kAny, u"All files", u"*.*");
///     dialog.SetFilter(filters.GetFilterString());
///     ...
///     const TFilterItem& type = filters.GetFilter(dialog.GetFilterIndex());
///     Save(type.FormatFileName(dialog.GetFileName()), type.Code);
///
/// Threads: an object may be used by one thread at a time, or by any number of threads that only read it.
namespace Varnholt {

struct VARNHOLT_EXPORT TFilterItem {
    std::int32_t Code = 0;  ///< the application's code of the file type
    String Name;            ///< the text in the dialog
    String Extensions;      ///< the pattern of the dialog, such as `*.csv;*.txt`
    String DefaultExt;  ///< appended to a file name without an extension, with its full stop; may be empty

    /// The file name, with DefaultExt appended if it has no extension.
    [[nodiscard]] String FormatFileName(StringView fileName) const;
};

class VARNHOLT_EXPORT TCommonDialogFilters {
public:
    void Add(std::int32_t filterCode, StringView filterName, StringView filterExtensions,
             StringView defaultExt = {});

    /// `Name|Extensions` of each type in the order of Add, with `|` between them; empty without types.
    [[nodiscard]] String GetFilterString() const;

    /// The type at a position that counts from 1, as the filter index of a file dialog does. EListError `List index out
    /// of bounds (%d)` with the position from 0 if there is none. The reference is valid until the next Add.
    [[nodiscard]] const TFilterItem& GetFilter(std::int32_t filterIndex) const;
    /// Its code. Raises as GetFilter.
    [[nodiscard]] std::int32_t GetFilterCode(std::int32_t filterIndex) const;

private:
    std::vector<TFilterItem> FFilters;
};

}  // namespace Varnholt
