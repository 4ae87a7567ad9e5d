#pragma once

#include "Platform/Runtime/Streams.h"

/// A file that comes whole or not at all.
///
///     TDraftFileStream file(u"C:\\data\\rain.csv");
///     file.WriteBuffer(BytesOf("1,2\r\n"));
///     file.Commit();                      // until here the former file stands untouched
///
/// Leans on Streams.h and Files.h. Threads: as any stream.
namespace Varnholt {

/// Writes a draft beside the file, which Commit puts in the file's place. A crash at any time leaves the
/// former file or the new one. What a rename would not replace as meant is written directly, as it comes: a
/// link, also a hard one, a pipe or device, a file of another user or one that may not be written, and a file in
/// a folder that takes no new one.
class VARNHOLT_EXPORT TDraftFileStream final : public TFileStream {
public:
    /// Raises EFCreateError (`Cannot create file "%s": %s`) with the file's own path, and leaves a present
    /// file alone.
    explicit TDraftFileStream(StringView path);
    /// Without a Commit the draft goes.
    ~TDraftFileStream() override;

    /// Waits until the bytes lie on the disk, closes, and puts the draft in the place of the file, with the
    /// former file's permissions. Raises EWriteError or EInOutError, and then the former file stands.
    void Commit();

private:
    [[nodiscard]] bool OpenDraft();

    String FDraft;  // empty where the file is written directly, and after Commit
};

}  // namespace Varnholt
