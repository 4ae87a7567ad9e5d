#include <string>

#include <unistd.h>

#include "Fuzz/FuzzInput.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Paths.h"
#include "VarnholtLib/UI/vrnUIBookmarkXMLDb.h"

/// A bookmark database of a stranger: refused with a message and empty, or collections that are saved, loaded again and
/// still the same.
namespace Varnholt::Fuzz {
namespace {

const String& FilePath() {
    static const String path =
        FromNativePath("/tmp/varnholt-fuzz-" + std::to_string(getpid()) + ".bookmarks");
    return path;
}

void RequireSameCollections(const IUIBookmarkDb& a, const IUIBookmarkDb& b) {
    Require(a.Count() == b.Count(), "the collections are read back");
    for (std::int32_t c = 0; c < a.Count(); ++c) {
        RequireSame(a[c]->GetName(), b[c]->GetName(), "the name of a collection is read back");
        Require(a[c]->Count() == b[c]->Count(), "the bookmarks are read back");
        for (std::int32_t i = 0; i < a[c]->Count(); ++i) {
            const auto bookmark = (*a[c])[i], again = (*b[c])[i];
            RequireSame(bookmark->GetName(), again->GetName(), "the name of a bookmark is read back");
            Require(bookmark->GetValues() == again->GetValues(), "the values are read back");
        }
    }
}

}  // namespace

void RunInput(TInput input) {
    const auto db = TUIBookmarkXMLDbFactory::GetObject(), again = TUIBookmarkXMLDbFactory::GetObject();
    WriteFileInOneGo(FilePath(), {reinterpret_cast<const char*>(input.data()), input.size()});
    const String failure = FailureOf([&] { db->Load(FilePath()); });
    if (!failure.empty()) return Require(db->GetIsEmpty(), "a refused file leaves the database empty");
    db->Save();
    const std::string bytes = ReadWholeFile(FilePath());
    again->Load(FilePath());
    RequireSameCollections(*db, *again);
    again->Save();
    Require(ReadWholeFile(FilePath()) == bytes, "the same database is the same bytes");
}

}  // namespace Varnholt::Fuzz
