// A database of 10,000 bookmarks in 10 collections with 6 values each: load and save, beside libxml2 used by hand for the
// same texts. And the binder: taking and restoring the state of a dialog, and binding its controls.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "Platform/Controls/Edits.h"
#include "Platform/Controls/Form.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Paths.h"
#include "VarnholtLib/UI/vrnUIBookmarkBinder.h"
#include "VarnholtLib/UI/vrnUIBookmarkXMLDb.h"

namespace Varnholt {
namespace {

// --- The database ---

/// A folder with a database; removed at the end of the program.
class TDbFile {
public:
    TDbFile() {
        std::filesystem::create_directory(FFolder);
        const auto db = TUIBookmarkXMLDbFactory::GetObject();
        for (int c = 0; c < 10; ++c) {
            const auto collection = db->GetCollection(u"Dialog " + IntToStr(c));
            for (int b = 0; b < 1000; ++b) collection->Add(NewBookmark(b));
        }
        db->Save(GetPath());
    }
    ~TDbFile() { std::filesystem::remove_all(FFolder); }
    [[nodiscard]] String GetPath() const { return FromNativePath(GetNativePath()); }
    [[nodiscard]] std::string GetNativePath() const { return FFolder + "/a.bookmarks"; }

private:
    static std::shared_ptr<IUIBookmark> NewBookmark(int number) {
        const auto bookmark = TUIBookmarkFactory::GetObject();
        bookmark->SetName(u"Bookmark " + IntToStr(number));
        bookmark->SetValue(u"chkMissing", number % 2 == 0 ? u"-1" : u"0");
        bookmark->SetValue(u"chkMonthly", u"0");
        bookmark->SetValue(u"edStation", u"Z\u00FCrich Fluntern " + IntToStr(number));
        bookmark->SetValue(u"edComment", u"the driest summer since 1901 & the years after");
        bookmark->SetValue(u"cbVariable", u"precipitation, mm");
        bookmark->SetValue(u"pcSettings", u"page:tsRange");
        return bookmark;
    }

    const std::string FFolder =
        std::filesystem::temp_directory_path() / ("varnholt-bookmarks-" + std::to_string(getpid()));
};

const TDbFile& DbFile() {
    static const TDbFile file;
    return file;
}

void Load(benchmark::State& state) {
    const String path = DbFile().GetPath();
    const auto db = TUIBookmarkXMLDbFactory::GetObject();
    for (auto _ : state) db->Load(path);
}
BENCHMARK(Load)->Unit(benchmark::kMillisecond);

void Save(benchmark::State& state) {
    const auto db = TUIBookmarkXMLDbFactory::GetObject();
    db->Load(DbFile().GetPath());
    for (auto _ : state) db->Save();
}
BENCHMARK(Save)->Unit(benchmark::kMillisecond);

// --- libxml2 by hand ---

struct THandBookmark {
    String Name;
    std::map<String, String> Values;
};

struct THandCollection {
    String Name;
    std::vector<THandBookmark> Bookmarks;
};

const xmlChar* Bytes(const char* text) {
    return reinterpret_cast<const xmlChar*>(text);
}

String TakeText(xmlChar* text) {
    String result = text == nullptr ? String() : FromUtf8(reinterpret_cast<const char*>(text));
    xmlFree(text);
    return result;
}

String NameOf(xmlNode* node) {
    return TakeText(xmlGetProp(node, Bytes("name")));
}

template <typename TCall>
void ForChildren(xmlNode* node, const char* name, TCall call) {
    for (xmlNode* child = node->children; child != nullptr; child = child->next)
        if (child->type == XML_ELEMENT_NODE && xmlStrEqual(child->name, Bytes(name))) call(child);
}

std::vector<THandCollection> LoadByHand(const std::string& path) {
    std::vector<THandCollection> db;
    xmlDoc* const document = xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET);
    ForChildren(xmlDocGetRootElement(document), "uibCollection", [&](xmlNode* collection) {
        db.push_back({NameOf(collection), {}});
        ForChildren(collection, "uibBookmark", [&](xmlNode* bookmark) {
            THandBookmark& added = db.back().Bookmarks.emplace_back(THandBookmark{NameOf(bookmark), {}});
            ForChildren(bookmark, "values", [&](xmlNode* values) {
                ForChildren(values, "value", [&](xmlNode* value) {
                    added.Values[NameOf(value)] = TakeText(xmlNodeGetContent(value));
                });
            });
        });
    });
    xmlFreeDoc(document);
    return db;
}

xmlNode* NewChild(xmlNode* parent, const char* name, const String& nameAttribute) {
    xmlNode* const child = xmlNewChild(parent, nullptr, Bytes(name), nullptr);
    xmlNewProp(child, Bytes("name"), Bytes(ToUtf8(nameAttribute).c_str()));
    return child;
}

/// As durable as Save: a temporary file is synchronised and replaces the file, and the folder is synchronised.
void SaveDurably(xmlDoc* document, const std::string& path) {
    const std::string draft = path + ".draft";
    const int folder = open(std::filesystem::path(path).parent_path().c_str(), O_RDONLY | O_DIRECTORY);
    xmlSaveFileEnc(draft.c_str(), document, "UTF-8");
    const int file = open(draft.c_str(), O_RDONLY);
    fsync(file);
    close(file);
    std::rename(draft.c_str(), path.c_str());
    fsync(folder);
    close(folder);
}

void SaveByHand(const std::vector<THandCollection>& db, const std::string& path) {
    xmlDoc* const document = xmlNewDoc(Bytes("1.0"));
    xmlNode* const root = xmlNewDocNode(document, nullptr, Bytes("uibCollections"), nullptr);
    xmlDocSetRootElement(document, root);
    for (const THandCollection& collection : db) {
        xmlNode* const node = NewChild(root, "uibCollection", collection.Name);
        for (const THandBookmark& bookmark : collection.Bookmarks) {
            xmlNode* const values =
                xmlNewChild(NewChild(node, "uibBookmark", bookmark.Name), nullptr, Bytes("values"), nullptr);
            for (const auto& [key, text] : bookmark.Values)
                xmlNodeAddContent(NewChild(values, "value", key), Bytes(ToUtf8(text).c_str()));
        }
    }
    SaveDurably(document, path);
    xmlFreeDoc(document);
}

void LoadXml2(benchmark::State& state) {
    const std::string path = DbFile().GetNativePath();
    for (auto _ : state) benchmark::DoNotOptimize(LoadByHand(path));
}
BENCHMARK(LoadXml2)->Unit(benchmark::kMillisecond);

void SaveXml2(benchmark::State& state) {
    const std::string path = DbFile().GetNativePath();
    const std::vector<THandCollection> db = LoadByHand(path);
    for (auto _ : state) SaveByHand(db, path);
}
BENCHMARK(SaveXml2)->Unit(benchmark::kMillisecond);

// --- The binder ---

/// A dialog with so many fields, bound if told to.
struct TFields {
    TFields(std::int64_t count, bool isBound) {
        Binder->SetAdapters(std::make_shared<TUIBookmarkValueAdapters>());
        for (std::int64_t i = 0; i < count; ++i) {
            TEdit& edit = Form.Add<TEdit>(u"edit" + IntToStr(i));
            edit.SetText(u"value");
            Edits.push_back(&edit);
        }
        if (isBound) Bind();
    }
    void Bind() {
        for (TEdit* const edit : Edits) Binder->Add(edit);
    }

    TForm Form;
    std::vector<TEdit*> Edits;
    std::shared_ptr<IUIBookmarkBinder> Binder = TUIBookmarkBinderFactory::GetObject();
};

void BindControls(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        TFields fields(state.range(0), false);
        state.ResumeTiming();
        fields.Bind();
        state.PauseTiming();
        fields.Binder.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(BindControls)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void UpdateBookmark(benchmark::State& state) {
    const TFields fields(state.range(0), true);
    const auto bookmark = TUIBookmarkFactory::GetObject();
    for (auto _ : state) fields.Binder->UpdateBookmark(*bookmark);
}
BENCHMARK(UpdateBookmark)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void UpdateControls(benchmark::State& state) {
    const TFields fields(state.range(0), true);
    const auto bookmark = TUIBookmarkFactory::GetObject();
    fields.Binder->UpdateBookmark(*bookmark);
    for (auto _ : state) fields.Binder->UpdateControls(*bookmark);
}
BENCHMARK(UpdateControls)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace Varnholt
