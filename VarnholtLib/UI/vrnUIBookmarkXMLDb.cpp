#include "VarnholtLib/UI/vrnUIBookmarkXMLDb.h"

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "VarnholtBaseLib/XmlUtils.h"

namespace Varnholt {
namespace {

using TNodePtr = std::shared_ptr<IXMLNode>;

constexpr StringView kRoot = u"uibCollections";
constexpr StringView kCollection = u"uibCollection";
constexpr StringView kBookmark = u"uibBookmark";
constexpr StringView kValues = u"values";
constexpr StringView kValue = u"value";
constexpr StringView kName = u"name";

/// Appends what `load` makes of each child element of that name. One that is damaged is left out; running out of
/// memory is no damage and ends the loading.
template <typename T>
void AddUndamaged(IList<T>& list, const TNodePtr& parent, StringView name, T (*load)(const TNodePtr&)) {
    for (const TNodePtr& child : TXmlUtils::GetChildNodes(parent, name)) {
        T item;
        try {
            item = load(child);
        } catch (const Exception&) {
            continue;
        }
        list.Add(std::move(item));
    }
}

/// Calls `write`; what the document refuses becomes the error of the entry with that description.
template <typename TWrite, typename TDescribe>
void WriteEntry(TWrite write, TDescribe describe) {
    try {
        write();
    } catch (const EXMLDocError& refusal) {
        throw EXMLDocError(Format(u"The %s cannot be saved: %s", {describe(), refusal.GetMessage()}));
    }
}

}  // namespace

// --- The database ---

void TUIBookmarkXMLDb::Load(StringView loadPath) {
    TBaseUIBookmarkDb::Load(loadPath);
    Clear();
    AddRange(*TUIBookmarkXMLDbLoader(FLoadPath).GetCollections());
}

void TUIBookmarkXMLDb::Save(StringView savePath) {
    TUIBookmarkXMLDbSaver saver(savePath);
    Each([&](const std::shared_ptr<IUIBookmarkCollection>& collection) {
        if (!collection) throw EArgumentNilException(u"collection");
        saver.Write(*collection);
    });
    saver.Save();
}

std::shared_ptr<IUIBookmarkDb> TUIBookmarkXMLDbFactory::GetObject() {
    return std::make_shared<TUIBookmarkXMLDb>();
}

// --- Loading ---

TUIBookmarkXMLDbLoader::TUIBookmarkXMLDbLoader(StringView fileName)
    : FCollections(std::make_shared<TInterfacedList<std::shared_ptr<IUIBookmarkCollection>>>()) {
    Load(fileName);
}

void TUIBookmarkXMLDbLoader::Load(StringView fileName) {
    if (!FileExists(fileName)) return;
    const TNodePtr root = TXmlUtils::GetRootNode(LoadXMLDocument(fileName), kRoot);
    AddUndamaged(*FCollections, root, kCollection, LoadCollection);
}

std::shared_ptr<IUIBookmarkCollection> TUIBookmarkXMLDbLoader::LoadCollection(const TNodePtr& node) {
    std::shared_ptr<IUIBookmarkCollection> collection = TUIBookmarkCollectionFactory::GetObject();
    collection->SetName(TXmlUtils::GetAttributeValue(node, kName));
    AddUndamaged(*collection, node, kBookmark, LoadBookmark);
    return collection;
}

std::shared_ptr<IUIBookmark> TUIBookmarkXMLDbLoader::LoadBookmark(const TNodePtr& node) {
    std::shared_ptr<IUIBookmark> bookmark = TUIBookmarkFactory::GetObject();
    bookmark->SetName(TXmlUtils::GetAttributeValue(node, kName));
    TUIBookmarkValues& values = bookmark->GetValues();
    for (const TNodePtr& value : TXmlUtils::GetChildNodes(TXmlUtils::GetChild(node, kValues), kValue))
        values.insert_or_assign(values.end(), TXmlUtils::GetAttributeValue(value, kName),
                                TXmlUtils::GetValue(value));
    return bookmark;
}

// --- Saving ---

TUIBookmarkXMLDbSaver::TUIBookmarkXMLDbSaver(StringView fileName)
    : FDoc(NewXMLDocument(u"1.0")), FRoot(FDoc->CreateElement(kRoot, u"")), FFileName(fileName) {
    FDoc->GetChildNodes()->Add(FRoot);
}

void TUIBookmarkXMLDbSaver::Write(IUIBookmarkCollection& collection) {
    FRoot->GetChildNodes()->Add(CreateCollectionNode(collection));
}

void TUIBookmarkXMLDbSaver::Save() {
    FDoc->SaveToFile(FFileName);
}

TNodePtr TUIBookmarkXMLDbSaver::CreateCollectionNode(IUIBookmarkCollection& collection) {
    TNodePtr node = FDoc->CreateElement(kCollection, u"");
    const String name = collection.GetName();
    WriteEntry([&] { node->SetAttribute(kName, name); },
               [&] { return Format(u"bookmark collection \"%s\"", {name}); });
    const std::shared_ptr<IXMLNodeList> children = node->GetChildNodes();
    collection.Each([&](const std::shared_ptr<IUIBookmark>& bookmark) {
        if (!bookmark) throw EArgumentNilException(u"bookmark");
        children->Add(CreateBookmarkNode(*bookmark, name));
    });
    return node;
}

TNodePtr TUIBookmarkXMLDbSaver::CreateBookmarkNode(IUIBookmark& bookmark, StringView collectionName) {
    TNodePtr node = FDoc->CreateElement(kBookmark, u"");
    const String name = bookmark.GetName();
    const auto describe = [&] {
        return Format(u"bookmark \"%s\" in collection \"%s\"", {name, collectionName});
    };
    WriteEntry([&] { node->SetAttribute(kName, name); }, describe);
    const TNodePtr values = node->AddChild(kValues);
    for (const auto& [key, text] : bookmark.GetValues()) {
        const TNodePtr value = values->AddChild(kValue);
        WriteEntry(
            [&, &key = key, &text = text] {
                value->SetAttribute(kName, key);
                value->SetText(text);
            },
            [&, &key = key] {
                return Format(u"value \"%s\" of %s", {key, describe()});
            });
    }
    return node;
}

}  // namespace Varnholt
