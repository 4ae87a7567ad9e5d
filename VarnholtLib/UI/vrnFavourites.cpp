#include "VarnholtLib/UI/vrnFavourites.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Indexes.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Text.h"
#include "VarnholtLib/Foundation/vrnPathText.h"
#include "VarnholtLib/Services/vrnSpecialFolders.h"

namespace Varnholt {
namespace {

constexpr StringView kName = u"name";

/// The file of that name in the folder of favourites, which is created. Where it cannot be, the folder itself with a
/// separator at its end, which can be neither loaded nor saved.
String FileOf(StringView name) {
    const String appData = TSpecialFolders::GetAppData();
    String folder = PathBelow(appData, u"Varnholt\\Ombrix\\Favourites");
    try {
        if (!appData.empty()) {
            ForceDirectories(folder);
            return PathBelow(folder, String(name) + u".xml");
        }
    } catch (const Exception&) {
        // Save reports it.
    }
    return PathBelow(folder, u"");
}

TFavouriteClass Checked(TFavouriteClass favouriteClass) {
    if (!favouriteClass.Create) throw EArgumentNilException(u"favouriteClass");
    return favouriteClass;
}

}  // namespace

// --- A favourite ---

void TBaseFavourite::SaveToNode(const std::shared_ptr<IXMLNode>& node) {
    node->SetAttribute(kName, FName);
}

void TBaseFavourite::LoadFromNode(const std::shared_ptr<IXMLNode>& node) {
    FName = node->GetAttribute(kName).ToText();
}

void TBaseFavourite::Delete() {
    TBaseFavouriteList& items = FFavData->FItems;
    const std::int32_t index = items.IndexOf(this);
    if (index >= 0) items.Delete(index);
}

bool TBaseFavourite::SafeStrToBool(StringView value, bool defaultValue) {
    try {
        return Variant(value).ToBoolean();
    } catch (const EConvertError&) {
        return defaultValue;
    }
}

std::int32_t TBaseFavourite::SafeStrToInt(StringView value, std::int32_t defaultValue) {
    return StrToIntDef(value, defaultValue);
}

float TBaseFavourite::SafeStrToFloat(StringView value, float defaultValue) {
    double number = 0;
    const bool isNumber = TryStrToFloat(value, number);
    constexpr double kLimit = 0x1.ffffffp127;  // from here on the nearest float is infinity
    const bool fits = std::fabs(number) < kLimit;
    return isNumber && fits ? static_cast<float>(number) : defaultValue;
}

// --- The list ---

void TBaseFavouriteList::Add(std::unique_ptr<TBaseFavourite> favourite) {
    if (!favourite) throw EArgumentNilException(u"favourite");
    FItems.push_back(std::move(favourite));
}

TBaseFavourite& TBaseFavouriteList::GetItem(std::int64_t index) const {
    return *FItems[ListIndex(index, FItems.size())];
}

std::int32_t TBaseFavouriteList::IndexOf(const TBaseFavourite* favourite) const noexcept {
    const auto found = std::ranges::find(FItems, favourite, &std::unique_ptr<TBaseFavourite>::get);
    return found == FItems.end() ? -1 : static_cast<std::int32_t>(found - FItems.begin());
}

void TBaseFavouriteList::Delete(std::int64_t index) {
    const auto position = static_cast<std::ptrdiff_t>(ListIndex(index, FItems.size()));
    // Destroyed when the list is whole again: the destructor may look at it.
    const std::unique_ptr<TBaseFavourite> removed = std::move(FItems[static_cast<std::size_t>(position)]);
    FItems.erase(FItems.begin() + position);
}

void TBaseFavouriteList::Clear() noexcept {
    const std::vector<std::unique_ptr<TBaseFavourite>> removed = std::exchange(FItems, {});
}

// --- All favourites of a kind ---

TFavouriteData::TFavouriteData(TFavouriteClass favouriteClass)
    : FFavClass(Checked(std::move(favouriteClass))), FFilename(FileOf(FFavClass.FileName)) {
    Load();
}

void TFavouriteData::Load() {
    if (!FileExists(FFilename)) return;
    try {
        const std::shared_ptr<IXMLNode> root = LoadXMLDocument(FFilename)->GetDocumentElement();
        for (auto node = root->GetChildNodes()->First(); node; node = node->NextSibling())
            if (node->GetNodeName() == FFavClass.NodeName) LoadItem(node);
    } catch (...) {
        FItems.Clear();
        FIsDamaged = true;
    }
}

void TFavouriteData::LoadItem(const std::shared_ptr<IXMLNode>& node) {
    std::unique_ptr<TBaseFavourite> favourite = CreateNewFavourite();
    try {
        favourite->LoadFromNode(node);
        FItems.Add(std::move(favourite));
    } catch (...) {
        FIsDamaged = true;
    }
}

void TFavouriteData::Save() {
    const std::shared_ptr<IXMLDocument> document = NewXMLDocument(u"1.0");
    const std::shared_ptr<IXMLNode> root = document->AddChild(u"favourites");
    for (std::int32_t i = 0; i < GetCount(); ++i) GetFav(i).SaveToNode(root->AddChild(FFavClass.NodeName));
    const String kept = KeepDamagedFile();
    try {
        document->SaveToFile(FFilename);
    } catch (...) {
        TakeBack(kept);
        throw;
    }
    FIsDamaged = false;
}

/// Renames a damaged file and returns its new name; empty if there is none.
String TFavouriteData::KeepDamagedFile() {
    if (!FIsDamaged || !FileExists(FFilename)) return {};
    const String first = FFilename + u".damaged";
    String kept = first;
    for (int i = 2; FileExists(kept) || DirectoryExists(kept); ++i) kept = first + IntToStr(i);
    RenameFile(FFilename, kept);
    return kept;
}

/// Gives a kept file its former name back.
void TFavouriteData::TakeBack(const String& kept) noexcept try {
    if (!kept.empty()) RenameFile(kept, FFilename);
} catch (...) {
    // It stays under the other name.
}

std::unique_ptr<TBaseFavourite> TFavouriteData::CreateNewFavourite() {
    std::unique_ptr<TBaseFavourite> favourite = FFavClass.Create(*this);
    if (!favourite) throw EInvalidOperation(u"The favourite class has made no favourite");
    return favourite;
}

void TFavouriteData::Add(std::unique_ptr<TBaseFavourite> fav) {
    if (!fav) throw EArgumentNilException(u"fav");
    if (&fav->GetFavData() != this) throw EArgumentException(u"The favourite belongs to another list");
    FItems.Add(std::move(fav));
}

std::vector<TBaseFavourite*> TFavouriteData::FindItems(StringView name) const {
    std::vector<TBaseFavourite*> found;
    for (std::int32_t i = 0; i < GetCount(); ++i)
        if (SameText(GetFav(i).GetName(), name)) found.push_back(&GetFav(i));
    return found;
}

}  // namespace Varnholt
