#pragma once

#include <cstddef>
#include <span>

#include "Platform/Runtime/Types.h"

/// The version that an executable file or shared library carries.
///
///     const String version = ReadFileVersion(u"C:\\opt\\station\\station.exe");  // "2.10.0.7", or empty
///
/// Two formats are read:
/// - A Windows file (PE32 and PE32+): the file version in the fixed information of its version resource; if it has
///   several, the first name and the first language.
/// - An ELF file (32 and 64 bits, either byte order): the note of owner "Varnholt" and type kVersionNoteType, in a
///   segment PT_NOTE or, in a file that has none with the note, a section SHT_NOTE. The CMake function
///   varnholt_embed_version puts it there. All numbers are in the byte order of the file:
///
///       offset  bytes  content
///            0      4  9, the length of the owner's name with its zero
///            4      4  8, the length of the version
///            8      4  1, kVersionNoteType
///           12     12  "Varnholt", filled up with zeros
///           24      2  major
///           26      2  minor
///           28      2  release
///           30      2  build
///
/// The text is the four numbers, each from 0 to 65535, with a full stop between them. It is empty for a file that is
/// missing, cannot be read, is no regular file, has no version, or is malformed. Only the parts that are needed are
/// read, at most kMaxVersionReads numbers, so the time does not depend on the size of the file.
///
/// Threads: the functions may be called on any thread.
namespace Varnholt {

inline constexpr std::uint32_t kVersionNoteType = 1;

inline constexpr int kMaxVersionReads = 200'000;

/// The version of the file at a library path. Never waits for a FIFO or a device.
[[nodiscard]] VARNHOLT_EXPORT String ReadFileVersion(StringView fileName);

/// The same for the content of a file in memory.
[[nodiscard]] VARNHOLT_EXPORT String ReadFileVersion(std::span<const std::byte> content);

}  // namespace Varnholt
