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
/// A symbolic link in place of the file is not followed, and a pipe, a device or a file with a further hard link
/// not used, so that whoever may create names in the folder can neither have another file of the user emptied nor
/// make the program wait.
class VARNHOLT_EXPORT TPrivateFileStream final : public TFileStream {
public:
    /// Raises EFCreateError (`Cannot create file "%s": %s`) with the path as given; an existing file is then
    /// unchanged.
    explicit TPrivateFileStream(StringView path);
};

/// Makes sure, before a file with secrets is written, that only its owner can read and write it: creates an empty
/// file of mode 0600 if there is none, and takes the rights of others from an existing one; of a link, the file
/// that it names. A file that is replaced as a whole (DraftFile.h) keeps that mode. Does nothing to what is no
/// regular file, or where the system refuses; the writing then reports what is wrong.
VARNHOLT_EXPORT void MakePrivateFile(StringView path);

}  // namespace Varnholt
