#include "VarnholtLib/UI/vrnUIBookmark.h"

namespace Varnholt {

void TUIBookmark::SetValue(StringView name, StringView value) {
    const auto found = FValues.find(name);
    if (found != FValues.end())
        found->second = value;
    else
        FValues.emplace(name, value);
}

std::shared_ptr<IUIBookmarkCollection> TBaseUIBookmarkDb::CreateCollection(StringView name) {
    std::shared_ptr<IUIBookmarkCollection> collection = TUIBookmarkCollectionFactory::GetObject();
    collection->SetName(name);
    Add(collection);
    return collection;
}

void TBaseUIBookmarkDb::Load(StringView loadPath) {
    FLoadPath = loadPath;
}

void TBaseUIBookmarkDb::Save() {
    if (FLoadPath.empty())
        throw EInvalidOperation(u"Default Save Method not available when no file has been selected");
    Save(FLoadPath);
}

std::shared_ptr<IUIBookmarkCollection> TBaseUIBookmarkDb::GetCollection(StringView collectionName) {
    std::shared_ptr<IUIBookmarkCollection> found = FirstOrDefault(
        [&](const auto& collection) { return collection && collection->GetName() == collectionName; },
        nullptr);
    return found ? found : CreateCollection(collectionName);
}

std::shared_ptr<IUIBookmark> TUIBookmarkFactory::GetObject() {
    return std::make_shared<TUIBookmark>();
}

std::shared_ptr<IUIBookmarkCollection> TUIBookmarkCollectionFactory::GetObject() {
    return std::make_shared<TUIBookmarkCollection>();
}

}  // namespace Varnholt
