#pragma once

#include "Platform/Runtime/Streams.h"

/// A file that a program writes anew for its own user, such as a log.
///
///     TPrivateFileStream file(u"C:\\home\\ann\\Documents\\Varnholt\\Logs\\Import (ombrix).log");
///     file.WriteBuffer(BytesOf(line));
///
/// Uses Streams.h. Threads: as any stream.
namespace Varnholt {

/// An empty file for writing. A new file can be read and written by its owner only (mode 0600); an existing one
/// loses its content and keeps its mode.
///
/// Every write appends: if a second process opens the same file, the content is lost once, and from then on the
/// writes of both follow each other.
///
/// A symbolic link in place of the file is not followed, and a pipe, a device or a file with a further hard link not used, so that whoever may
/// create names in the folder can neither have another file of the user emptied nor make the program wait.
class VARNHOLT_EXPORT TPrivateFileStream final : public TFileStream {
public:
    /// Raises EFCreateError (`Cannot create file "%s": %s`) with the path as given; an existing file is then
    /// unchanged.
    explicit TPrivateFileStream(StringView path);
};

}  // namespace Varnholt
