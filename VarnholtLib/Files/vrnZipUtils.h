#pragma once

#include "Platform/Zip/ZipFile.h"

/// Finding entries of zip files, with either separator between folders.
///
/// Threads: as the zip file.
namespace Varnholt {

/// The position of an entry: of the name with backslashes or else with slashes; -1 if there is neither.
[[nodiscard]] VARNHOLT_EXPORT std::int32_t ZipFileIndexOf(const TZipFile& zipFile, StringView fileName);

}  // namespace Varnholt
