#pragma once

#include <memory>
#include <span>

#include "Platform/Runtime/Streams.h"

/// A file that is replaced as a whole or not at all.
///
///     TDraftFileStream file(u"C:\\data\\rain.csv");
///     file.WriteBuffer(BytesOf("1,2\r\n"));
///     file.Commit();                      // until here the former file is untouched
///
/// Uses Streams.h. Threads: as any stream; RemoveDraftFiles may be called anywhere.
namespace Varnholt {

/// Writes a temporary file, the draft, in the folder of the file. Commit flushes it to disk and renames it
/// over the file, so that a reader, and a crash at any time, finds the former file or the new one. For a
/// symbolic link that file is the one at the end of the links, and the links stay; a dangling link creates
/// it.
///
/// While it is written the draft has no name where the system offers that (O_TMPFILE on Linux), and then
/// nothing remains of it however the process ends. Elsewhere, and on any system during Commit, it is named
/// `varnholt-DIGITS.part`; see RemoveDraftFiles.
///
/// A former file keeps its mode, group and extended attributes, access control lists included: the draft is
/// created with mode 0600 and gets these before anything is written. A new file has the mode of any new file,
/// 0666 less the umask, or what the folder's default access control list says.
///
/// These files cannot be replaced by a rename and are written directly: their content is gone from the moment
/// of opening, and a failure leaves them partly written.
/// - devices, pipes, and links of the process file system such as /dev/stdout
/// - files with several hard links, of another user, not writable, immutable, or mounted on their own
/// - files in a folder in which no file may be created
/// - files whose group, mode or extended attributes cannot be set on a new file
class VARNHOLT_EXPORT TDraftFileStream final : public TFileStream {
public:
    /// Raises EFCreateError (`Cannot create file "%s": %s`) with the path as given, and leaves an existing
    /// file unchanged.
    explicit TDraftFileStream(StringView path);
    /// Without a Commit the draft is removed.
    ~TDraftFileStream() override;

    /// Whether a file of that path would be written directly. The file is neither opened nor changed; to find
    /// out, a draft is created and removed. False also where the constructor would raise instead.
    [[nodiscard]] static bool IsWrittenDirectly(StringView path);

    /// Flushes to disk, closes, and replaces the file. Raises EWriteError or EInOutError (`Cannot replace
    /// file "%s": %s`); the former file is then unchanged, the stream closed and the draft removed. There is
    /// one exception: if only the entry in the folder cannot be flushed to disk, EWriteError is raised
    /// although the file is replaced, and a power failure may bring the former file back.
    void Commit();

    /// Commits several files, all or none: all are flushed to disk first, then replaced one after the other.
    /// If one cannot be replaced, the files replaced before it get their former content back, and files that
    /// did not exist are removed. Raises as Commit, and EInOutError if two files have the same target.
    ///
    /// Signals to the calling thread wait until all are replaced. Only SIGKILL or a power failure between
    /// two of the renames leaves some files new and some former; the former content of the new ones is then
    /// beside them in files named `varnholt-DIGITS.part`. What is written directly is not put back: check
    /// IsWrittenDirectly first. Where the file system can neither exchange two names nor make hard links,
    /// several existing files cannot be committed together: EInOutError is raised and none is replaced.
    static void CommitTogether(std::span<TDraftFileStream* const> files);

private:
    struct TDraft;

    static void CheckTargets(std::span<TDraftFileStream* const> files);
    static void ReplaceAll(std::span<TDraftFileStream* const> files);
    void Prepare();
    void Discard() noexcept;
    [[noreturn]] void RaiseNotReplaced(int error) const;

    std::unique_ptr<TDraft> FDraft;  // none where the file is written directly, and after Commit
};

/// Removes the named drafts of this process. It is async-signal-safe: a program that ends itself in a signal
/// handler calls it there first, since the library installs no handler. A Commit afterwards raises
/// EInOutError.
VARNHOLT_EXPORT void RemoveDraftFiles() noexcept;

}  // namespace Varnholt
