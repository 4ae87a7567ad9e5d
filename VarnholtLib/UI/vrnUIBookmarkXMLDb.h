#pragma once

#include "Platform/Xml/XmlDocument.h"
#include "VarnholtLib/UI/vrnUIBookmark.h"

/// The bookmark database in an XML file.
///
///     const std::shared_ptr<IUIBookmarkDb> db = TUIBookmarkXMLDbFactory::GetObject();
///     db->Load(u"C:\\data\\station.bookmarks");
///     db->GetCollection(u"Main")->Add(bookmark);
///     db->Save();
///
/// File. An XML document in UTF-8 without added white space:
///
///     <uibCollections>
///       <uibCollection name="NAME OF THE COLLECTION">
///         <uibBookmark name="NAME OF THE BOOKMARK">
///           <values><value name="KEY">VALUE</value></values>
///         </uibBookmark>
///       </uibCollection>
///     </uibCollections>
///
/// Collections and bookmarks are in list order, values in the order of their keys. Other elements and attributes are
/// ignored. Of several values with one key the last counts. The same database always gives the same bytes.
///
/// Load empties the database first. A file that does not exist gives an empty database and no error. A file that is
/// not an XML document raises as LoadXMLDocument, and one with another root element EXMLDocError as TXmlUtils says; the
/// database is then empty, and a Save without a path replaces that file. Damage below that costs the entry that it
/// touches and nothing else, and is not reported: a collection without a name; a bookmark without a name or without
/// the element `values`, or with a value that has no name.
///
/// Save replaces the file as a whole or not at all: the document is written to a temporary file, which is renamed over
/// the former one (IXMLDocument::SaveToFile, which says what it raises). What XML cannot hold is refused before
/// anything is written, with EXMLDocError that names the entry and has the reason of XmlDocument.h at its end:
/// - `The bookmark collection "%s" cannot be saved: %s`
/// - `The bookmark "%s" in collection "%s" cannot be saved: %s`
/// - `The value "%s" of bookmark "%s" in collection "%s" cannot be saved: %s`
/// A null collection or bookmark in a list raises EArgumentNilException with `collection` or `bookmark`.
///
/// Threads: as for bookmarks.
namespace Varnholt {

class VARNHOLT_EXPORT TUIBookmarkXMLDb : public TBaseUIBookmarkDb {
public:
    using TBaseUIBookmarkDb::Save;
    void Load(StringView loadPath) override;
    void Save(StringView savePath) override;
};

/// Makes an empty database without a file.
class VARNHOLT_EXPORT TUIBookmarkXMLDbFactory {
public:
    TUIBookmarkXMLDbFactory() = delete;
    [[nodiscard]] static std::shared_ptr<IUIBookmarkDb> GetObject();
};

/// Reads a file into a list of collections. Serves one file.
class VARNHOLT_EXPORT TUIBookmarkXMLDbLoader {
public:
    /// Reads the whole file; raises as Load of the database.
    explicit TUIBookmarkXMLDbLoader(StringView fileName);

    [[nodiscard]] const std::shared_ptr<IList<std::shared_ptr<IUIBookmarkCollection>>>& GetCollections()
        const noexcept {
        return FCollections;
    }
    /// The collection of an element `uibCollection`, without the bookmarks that are damaged. EXMLDocError if it has no
    /// name.
    [[nodiscard]] static std::shared_ptr<IUIBookmarkCollection> LoadCollection(
        const std::shared_ptr<IXMLNode>& node);
    /// The bookmark of an element `uibBookmark`. EXMLDocError if it is damaged.
    [[nodiscard]] static std::shared_ptr<IUIBookmark> LoadBookmark(const std::shared_ptr<IXMLNode>& node);

private:
    void Load(StringView fileName);

    const std::shared_ptr<IList<std::shared_ptr<IUIBookmarkCollection>>> FCollections;
};

/// Builds the document of a file, and writes it. Serves one file.
class VARNHOLT_EXPORT TUIBookmarkXMLDbSaver {
public:
    explicit TUIBookmarkXMLDbSaver(StringView fileName);

    /// Appends a collection to the document. Raises as Save of the database; the document is then unchanged.
    void Write(IUIBookmarkCollection& collection);
    /// Writes the file.
    void Save();
    /// The element of a collection, or of a bookmark in the collection of that name, not yet in the document.
    [[nodiscard]] std::shared_ptr<IXMLNode> CreateCollectionNode(IUIBookmarkCollection& collection);
    [[nodiscard]] std::shared_ptr<IXMLNode> CreateBookmarkNode(IUIBookmark& bookmark,
                                                               StringView collectionName);

private:
    const std::shared_ptr<IXMLDocument> FDoc;
    const std::shared_ptr<IXMLNode> FRoot;
    const String FFileName;
};

}  // namespace Varnholt
