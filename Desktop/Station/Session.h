#pragma once

#include "Platform/Runtime/Types.h"

/// A session in one archive: the station's file as it is shown, the settings and the bookmarks.
///
///     PackSession(u"C:\\data\\seattle.vrnstation", {csv, settingsFile, bookmarksFile});
///     const TSessionFiles files = UnpackSession(u"C:\\data\\seattle.vrnstation", u"C:\\data\\seattle");
namespace Varnholt::Station {

/// The extension of an archive, with its full stop.
inline constexpr StringView kSessionExtension = u".vrnstation";

struct TSession {
    String Table;     ///< the text of the station's file
    String Settings;  ///< paths of files; one that is empty or does not exist is left out
    String Bookmarks;
};

/// The same after unpacking.
struct TSessionFiles {
    String Table;  ///< paths, empty for a part that the archive does not have
    String Settings;
    String Bookmarks;
};

/// Writes the archive, which replaces an existing one as a whole. Raises what TVarnCompressor raises.
void PackSession(StringView archive, const TSession& session);

/// Extracts the parts into a folder, which is created; files in it are replaced. Raises what TVarnDecompressor raises,
/// and Exception `"%s" holds no session` for an archive without a table, and `Cannot extract "%s"`.
[[nodiscard]] TSessionFiles UnpackSession(StringView archive, StringView folder);

/// Makes this program the one that opens sessions, with its icon. Raises as TFileTypeAssociation.
void AssociateSessions();

}  // namespace Varnholt::Station
