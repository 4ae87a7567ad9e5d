#pragma once

#include <map>
#include <memory>

#include "VarnholtLib/Data/vrnList.h"

/// Bookmarks: named snapshots of the state of a dialog, gathered in collections, and those in a database that is
/// kept in a file.
///
///     const auto db = TUIBookmarkXMLDbFactory::GetObject();        // vrnUIBookmarkXMLDb.h
///     db->Load(u"C:\\data\\station.bookmarks");
///     const auto collection = db->GetCollection(u"Station dialog");
///     const auto bookmark = TUIBookmarkFactory::GetObject();
///     bookmark->SetName(u"Summer");
///     bookmark->SetValue(u"edName", u"Graz");                       // or TUIBookmarkBinder, vrnUIBookmarkBinder.h
///     collection->Add(bookmark);
///     db->Save();
///
/// A bookmark holds texts only: one value for each key. Nothing here knows of controls. Names and keys compare exactly.
/// Collections and databases are lists (vrnList.h) in the order of their items; names may repeat, and bookmarks
/// are searched with the operations of the list.
///
/// The objects are counted by references and exist as long as one is held.
///
/// Threads: none inside; the objects serve the thread of the dialogs.
namespace Varnholt {

/// The values of a bookmark by their keys, in the order of the keys' code units. So the same bookmark always gives
/// the same file.
using TUIBookmarkValues = std::map<String, String, std::less<>>;

class VARNHOLT_EXPORT IUIBookmark {
public:
    virtual ~IUIBookmark() = default;
    [[nodiscard]] virtual String GetName() const = 0;
    virtual void SetName(StringView value) = 0;
    /// The values themselves, not a copy; valid as long as the bookmark.
    [[nodiscard]] virtual TUIBookmarkValues& GetValues() = 0;
    /// Sets the value of a key, which is added if the bookmark does not have it.
    virtual void SetValue(StringView name, StringView value) = 0;
};

/// Bookmarks with a common name.
class VARNHOLT_EXPORT IUIBookmarkCollection : public virtual IList<std::shared_ptr<IUIBookmark>> {
public:
    [[nodiscard]] virtual String GetName() const = 0;
    virtual void SetName(StringView value) = 0;
};

/// Collections with a file.
class VARNHOLT_EXPORT IUIBookmarkDb : public virtual IList<std::shared_ptr<IUIBookmarkCollection>> {
public:
    /// Replaces the collections by those of the file, which becomes the file of Save, whether it can be read or not. An
    /// empty path leaves the database without a file.
    virtual void Load(StringView loadPath) = 0;
    /// Writes all collections to a file. The file of the other Save stays the one of the last Load.
    virtual void Save(StringView savePath) = 0;
    /// Writes all collections to the file of the last Load. EInvalidOperation `Default Save Method not available when
    /// no file has been selected` if there is none.
    virtual void Save() = 0;
    /// The first collection of that name. If there is none, a new empty one, which is appended: a mere look-up makes
    /// the database larger.
    [[nodiscard]] virtual std::shared_ptr<IUIBookmarkCollection> GetCollection(StringView collectionName) = 0;
};

class VARNHOLT_EXPORT TUIBookmark : public IUIBookmark {
public:
    [[nodiscard]] String GetName() const override { return FName; }
    void SetName(StringView value) override { FName = value; }
    [[nodiscard]] TUIBookmarkValues& GetValues() override { return FValues; }
    void SetValue(StringView name, StringView value) override;

private:
    String FName;
    TUIBookmarkValues FValues;
};

class VARNHOLT_EXPORT TUIBookmarkCollection : public TInterfacedList<std::shared_ptr<IUIBookmark>>,
                                              public IUIBookmarkCollection {
public:
    [[nodiscard]] String GetName() const override { return FName; }
    void SetName(StringView value) override { FName = value; }

private:
    String FName;
};

/// What databases have in common; a descendant overrides Load and the Save with a path.
class VARNHOLT_EXPORT TBaseUIBookmarkDb : public TInterfacedList<std::shared_ptr<IUIBookmarkCollection>>,
                                          public IUIBookmarkDb {
public:
    /// Appends a new collection of that name, even if there is one already, and returns it.
    virtual std::shared_ptr<IUIBookmarkCollection> CreateCollection(StringView name);
    /// Stores the path in FLoadPath and does nothing else. Descendants call it first.
    void Load(StringView loadPath) override;
    void Save(StringView savePath) override = 0;
    void Save() override;
    [[nodiscard]] std::shared_ptr<IUIBookmarkCollection> GetCollection(StringView collectionName) override;

protected:
    String FLoadPath;
};

/// Makes an empty bookmark without a name.
class VARNHOLT_EXPORT TUIBookmarkFactory {
public:
    TUIBookmarkFactory() = delete;
    [[nodiscard]] static std::shared_ptr<IUIBookmark> GetObject();
};

/// Makes an empty collection without a name.
class VARNHOLT_EXPORT TUIBookmarkCollectionFactory {
public:
    TUIBookmarkCollectionFactory() = delete;
    [[nodiscard]] static std::shared_ptr<IUIBookmarkCollection> GetObject();
};

}  // namespace Varnholt
