#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "Platform/Xml/XmlDocument.h"

/// Favourites: named items that a user keeps for later, in one file of the user for each kind.
///
///     class TStationFavourite : public TBaseFavourite {
///     public:
///         using TBaseFavourite::TBaseFavourite;
///         static String GetFilename() { return u"Stations"; }
///         static String GetNodeName() { return u"station"; }
///         void SaveToNode(const std::shared_ptr<IXMLNode>& node) override {
///             TBaseFavourite::SaveToNode(node);
///             node->SetAttribute(u"height", Height);
///         }
///         void LoadFromNode(const std::shared_ptr<IXMLNode>& node) override {
///             TBaseFavourite::LoadFromNode(node);
///             Height = SafeStrToInt(node->GetAttribute(u"height").ToText(), 0);
///         }
///         std::int32_t Height = 0;
///     };
///
///     TFavouriteData favourites(TFavouriteClass::Of<TStationFavourite>());   // loads the user's file
///     auto graz = favourites.CreateNewFavourite();
///     graz->SetName(u"Graz");
///     favourites.Add(std::move(graz));
///     favourites.Save();
///
/// File. `Varnholt\Ombrix\Favourites\FILENAME.xml` in the folder of TSpecialFolders::GetAppData: an XML document with a
/// root element, written as `favourites` and read whatever its name, and in it an element for each favourite in list
/// order. Its name is that of the kind, and its attribute `name` that of the favourite; a descendant adds attributes
/// and elements. Elements of other names are not read, so the next Save drops them.
///
/// Loading reports nothing. A missing file is an empty list. A favourite whose LoadFromNode raises is left out; a file
/// that cannot be read as XML, or a favourite that cannot be made, gives an empty list. In all these cases the file is
/// not lost: before the first Save replaces it, it is renamed to `FILENAME.xml.damaged` beside it. If that exists, from
/// an earlier time, it stays, and the name is `FILENAME.xml.damaged2`, `FILENAME.xml.damaged3` and so on, the first
/// that is free.
///
/// Threads: none inside; the objects serve the thread of the dialogs. Of two processes that save the same favourites,
/// the later one wins.
namespace Varnholt {

class TFavouriteData;

/// A favourite; applications derive their own. Made by TFavouriteClass only, owned by the list that it is added to.
class VARNHOLT_EXPORT TBaseFavourite {
public:
    /// A favourite without a name. The owner must outlive it. Descendants keep this signature.
    explicit TBaseFavourite(TFavouriteData& favData) noexcept : FFavData(&favData) {}
    virtual ~TBaseFavourite() = default;
    TBaseFavourite(const TBaseFavourite&) = delete;
    TBaseFavourite& operator=(const TBaseFavourite&) = delete;

    /// Writes the name into the attribute `name`. Descendants call it first, then write what they add.
    virtual void SaveToNode(const std::shared_ptr<IXMLNode>& node);
    /// Reads the name, which is empty if the attribute is missing. Descendants call it first, then read what they add.
    virtual void LoadFromNode(const std::shared_ptr<IXMLNode>& node);

    [[nodiscard]] const String& GetName() const noexcept { return FName; }
    void SetName(StringView name) { FName = name; }
    [[nodiscard]] TFavouriteData& GetFavData() const noexcept { return *FFavData; }

    /// Removes the favourite from the owner's list, which destroys it; nothing happens if it was not added. Does not
    /// save.
    void Delete();

    /// The value of a text as Variant::ToBoolean, StrToInt and StrToFloat read it, or the default if it has none.
    [[nodiscard]] static bool SafeStrToBool(StringView value, bool defaultValue);
    [[nodiscard]] static std::int32_t SafeStrToInt(StringView value, std::int32_t defaultValue);
    /// A number too large for 32 bits costs the default too.
    [[nodiscard]] static float SafeStrToFloat(StringView value, float defaultValue);

private:
    TFavouriteData* FFavData;
    String FName;
};

/// A kind of favourite.
struct VARNHOLT_EXPORT TFavouriteClass {
    String FileName;  ///< of the file, without folder and extension
    String NodeName;  ///< of the element of a favourite
    std::function<std::unique_ptr<TBaseFavourite>(TFavouriteData&)> Create;

    /// The kind of a descendant with class-level operations GetFilename and GetNodeName.
    template <typename T>
    [[nodiscard]] static TFavouriteClass Of() {
        return {String(T::GetFilename()), String(T::GetNodeName()),
                [](TFavouriteData& favData) { return std::make_unique<T>(favData); }};
    }
};

/// Favourites in order, which it owns. Indexes count from 0; EListError `List index out of bounds (%d)`.
class VARNHOLT_EXPORT TBaseFavouriteList {
public:
    TBaseFavouriteList() = default;
    ~TBaseFavouriteList() { Clear(); }
    TBaseFavouriteList(const TBaseFavouriteList&) = delete;
    TBaseFavouriteList& operator=(const TBaseFavouriteList&) = delete;

    /// EArgumentNilException for null.
    void Add(std::unique_ptr<TBaseFavourite> favourite);
    [[nodiscard]] TBaseFavourite& GetItem(std::int64_t index) const;
    [[nodiscard]] std::int32_t GetCount() const noexcept { return static_cast<std::int32_t>(FItems.size()); }
    /// The index of a favourite, -1 if it is not in the list.
    [[nodiscard]] std::int32_t IndexOf(const TBaseFavourite* favourite) const noexcept;
    /// Removes and destroys.
    void Delete(std::int64_t index);
    void Clear() noexcept;

private:
    std::vector<std::unique_ptr<TBaseFavourite>> FItems;
};

/// All favourites of one kind.
class VARNHOLT_EXPORT TFavouriteData {
public:
    /// Loads the file; creates its folder if it is missing. Raises EArgumentNilException (`favouriteClass`) for a kind
    /// without Create, and what the search for the user's folder raises. If the folder cannot be created, or the user
    /// has none for application data, the list is empty, and FileName is the folder, so that Save fails.
    explicit TFavouriteData(TFavouriteClass favouriteClass);
    TFavouriteData(const TFavouriteData&) = delete;
    TFavouriteData& operator=(const TFavouriteData&) = delete;

    /// Writes all favourites, replacing the file as a whole or not at all. A favourite that raises in SaveToNode ends
    /// it before any file is touched. Raises as IXMLDocument::SaveToFile, EXMLDocError for a name that XML cannot
    /// hold, and EInOutError if a damaged file cannot be renamed; it then stands.
    void Save();
    /// A new favourite of the kind, not in the list. EInvalidOperation `The favourite class has made no favourite` if
    /// Create returns null.
    [[nodiscard]] std::unique_ptr<TBaseFavourite> CreateNewFavourite();
    /// Appends a favourite that this object made; the list owns it. Names may repeat. EArgumentNilException (`fav`) for
    /// null, EArgumentException `The favourite belongs to another list` for one that another object made.
    void Add(std::unique_ptr<TBaseFavourite> fav);
    /// The favourites of that name in list order; ASCII letters match without regard to case. They stay owned by
    /// the list.
    [[nodiscard]] std::vector<TBaseFavourite*> FindItems(StringView name) const;
    /// EListError as the list.
    [[nodiscard]] TBaseFavourite& GetFav(std::int32_t index) const { return FItems.GetItem(index); }
    [[nodiscard]] TBaseFavourite& operator[](std::int32_t index) const { return GetFav(index); }
    [[nodiscard]] std::int32_t GetCount() const noexcept { return FItems.GetCount(); }
    [[nodiscard]] const String& GetFileName() const noexcept { return FFilename; }

private:
    friend class TBaseFavourite;

    void Load();
    void LoadItem(const std::shared_ptr<IXMLNode>& node);
    String KeepDamagedFile();
    void TakeBack(const String& kept) noexcept;

    const TFavouriteClass FFavClass;
    const String FFilename;
    TBaseFavouriteList FItems;
    bool FIsDamaged = false;  // the file holds what was not loaded
};

}  // namespace Varnholt
