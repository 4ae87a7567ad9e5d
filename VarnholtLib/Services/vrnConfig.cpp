#include "VarnholtLib/Services/vrnConfig.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/Runtime/Text.h"
#include "VarnholtLib/Foundation/vrnPathText.h"
#include "VarnholtLib/Foundation/vrnString.h"
#include "VarnholtLib/Services/vrnLog.h"
#include "VarnholtLib/Services/vrnSpecialFolders.h"

namespace Varnholt {
namespace {

using TNodePtr = std::shared_ptr<IXMLNode>;

constexpr StringView kRootName = u"VrnConfig";
constexpr StringView kExtension = u".VrnConfig";
constexpr StringView kTypeAttribute = u"DataType";
constexpr std::array<StringView, 5> kTypeWords = {u"General", u"String", u"Integer", u"Float", u"Boolean"};

Exception OpenFailure(StringView detail) {
    return Exception(Format(u"Unable to create or open configuration file - %s", {detail}));
}

/// With the exception that is being handled as the nested one.
[[noreturn]] void NestedOpenError(StringView detail) {
    std::throw_with_nested(OpenFailure(detail));
}

StringView ErrorText(TCfgError error) {
    switch (error) {
        case eSuccess:
            return u"Operation was successful";
        case ePathDoesntExist:
            return u"Path does not exist";
        case eValueDoesntExist:
            return u"Value does not exist";
        case eTypeMismatch:
            return u"Type mismatch";
        case eInvalidData:
            return u"Value data is not the correct type";
    }
    return u"Unknown error";
}

StringView VisibilityText(TCfgVisibility visibility) {
    switch (visibility) {
        case vPublic:
            return u"Public";
        case vPrivate:
            return u"Private";
    }
    return u"Unknown Visibility";
}

std::vector<String> StepsOf(const String& path) {
    if (path.empty()) throw EArgumentException(u"The configuration path is empty");
    std::vector<String> steps = SplitString(path, u'.', true);
    if (std::ranges::any_of(steps, [](const String& step) { return step.empty(); }))
        throw EArgumentException(Format(u"Configuration path \"%s\" has an empty step", {path}));
    return steps;
}

/// The path as FKnown has it: absolute, without white space. Names of elements contain none.
String KnownPath(StringView path) {
    String known;
    if (path.starts_with(u'.')) return known;
    std::ranges::copy_if(path, std::back_inserter(known), [](Char c) { return c > u' '; });
    return known;
}

/// Holds the error action of a configuration at eaDefault.
class TErrorPass {
public:
    explicit TErrorPass(TVarnConfig& config) : FConfig(config) { config.EnableErrorPass(); }
    ~TErrorPass() { FConfig.RestoreErrorAction(); }
    TErrorPass(const TErrorPass&) = delete;
    TErrorPass& operator=(const TErrorPass&) = delete;

private:
    TVarnConfig& FConfig;
};

}  // namespace

EVarnConfig::EVarnConfig(TCfgError error, StringView data)
    : Exception(Format(u"VARN configuration error: %s - %s", {ErrorText(error), data})),
      FError(error),
      FData(data) {}

// --- Files ---

String TVarnConfig::GenFileName(TCfgVisibility visibility, StringView product, StringView name) {
    const std::shared_ptr<ILog> log = EnabledDefaultLog();
    if (log)
        log->Method(u"TVarnConfig.GenFileName",
                    {String(VisibilityText(visibility)), String(product), String(name)});
    const String folder =
        visibility == vPublic ? TSpecialFolders::GetCommonAppData() : TSpecialFolders::GetLocalAppData();
    if (folder.empty()) throw OpenFailure(u"unable to get folder");
    String path = PathBelow(folder, Format(u"Varnholt\\%s\\%s%s", {product, name, kExtension}));
    if (log) log->Log(u"Config file: %s", {path});
    return path;
}

bool TVarnConfig::ConfigFileExists(TCfgVisibility visibility, StringView product, StringView name) {
    return FileExists(GenFileName(visibility, product, name));
}

namespace {

String NameInNewFolder(TCfgVisibility visibility, StringView product, StringView name) {
    String path = TVarnConfig::GenFileName(visibility, product, name);
    try {
        ForceDirectories(ExcludeTrailingPathDelimiter(ExtractFilePath(path)));
    } catch (const Exception&) {
        NestedOpenError(u"unable to create configuration directory");
    }
    return path;
}

}  // namespace

TVarnConfig::TVarnConfig(TCfgVisibility visibility, StringView product, StringView name)
    : TVarnConfig(NameInNewFolder(visibility, product, name)) {}

TVarnConfig::TVarnConfig(StringView filename) : FFilename(filename), FIsNewDocument(!FileExists(filename)) {
    if (FIsNewDocument) CreateBasicFile();
    try {
        FDocument = LoadXMLDocument(FFilename);
    } catch (const Exception&) {
        NestedOpenError(u"unable to load configuration file");
    }
    FCfgNode = FDocument->GetDocumentElement();
    if (FCfgNode->GetNodeName() != kRootName)
        throw OpenFailure(u"configuration file is not in the correct format");
}

void TVarnConfig::CreateBasicFile() const {
    try {
        const std::shared_ptr<IXMLDocument> document = NewXMLDocument(u"1.0");
        document->GetChildNodes()->Add(document->CreateElement(kRootName, u""));
        document->SaveToFile(FFilename);
    } catch (const Exception&) {
        NestedOpenError(u"can not create base configuration file");
    }
}

void TVarnConfig::Save() {
    if (const std::shared_ptr<ILog> log = EnabledDefaultLog()) {
        log->Method(u"TVarnConfig.Save");
        log->Log(u"Saving config file to: %s", {FFilename});
    }
    FDocument->SaveToFile(FFilename);
}

void TVarnConfig::SaveCopy(StringView filename) {
    FDocument->SaveToFile(filename);
}

// --- Paths ---

/// The element of a path. One that was created is not attached until the caller has filled it, so that a
/// write that fails leaves nothing.
struct TVarnConfig::TResolved {
    TNodePtr Node;    // null if it is missing
    TNodePtr Parent;  // where to attach the new elements; null if there are none
    TNodePtr New;     // the topmost of the new elements

    void Attach() const {
        if (New) Parent->GetChildNodes()->Add(New);
    }
};

String TVarnConfig::FullPath(StringView path) const {
    return path.starts_with(u'.') ? FCurrentPath + String(path) : String(path);
}

TVarnConfig::TResolved TVarnConfig::Resolve(const String& fullPath, bool readOnly) {
    const std::vector<String> steps = StepsOf(fullPath);
    TResolved resolved{.Node = FCfgNode, .Parent = nullptr, .New = nullptr};
    std::size_t step = 0;
    for (; step < steps.size(); ++step) {
        TNodePtr child = resolved.Node->GetChildNodes()->FindNode(steps[step]);
        if (!child) break;
        resolved.Node = std::move(child);
    }
    if (step == steps.size()) return resolved;
    if (readOnly) {
        PerformError(step + 1 == steps.size() ? eValueDoesntExist : ePathDoesntExist, fullPath);
        return {};
    }
    resolved.Parent = resolved.Node;
    resolved.Node = resolved.New = FDocument->CreateElement(steps[step], u"");
    while (++step < steps.size()) resolved.Node = resolved.Node->AddChild(steps[step]);
    return resolved;
}

bool TVarnConfig::GetNode(StringView path, bool readOnly, std::shared_ptr<IXMLNode>& node) {
    const TResolved resolved = Resolve(FullPath(path), readOnly);
    if (!resolved.Node) return false;
    resolved.Attach();
    ShareNodes();
    node = resolved.Node;
    return true;
}

std::shared_ptr<IXMLNode> TVarnConfig::GetRootNode() {
    ShareNodes();
    return FCfgNode;
}

void TVarnConfig::ShareNodes() noexcept {
    FAreNodesShared = true;
    FKnown.clear();
}

// --- Reading ---

/// The setting, in FKnown or in the storage; null, with the error performed, if it is missing.
const TCfgValue* TVarnConfig::Find(StringView path, TCfgValue& storage) {
    const auto known = FKnown.find(path);
    if (known != FKnown.end()) return &known->second;
    const TNodePtr node = Resolve(FullPath(path), true).Node;
    if (!node) return nullptr;
    storage = {node->GetNodeName(), node->GetText(),
               StringToDataType(node->GetAttribute(kTypeAttribute).ToText())};
    if (FAreNodesShared || path != KnownPath(path)) return &storage;
    return &(FKnown[String(path)] = storage);
}

const TCfgValue* TVarnConfig::Find(StringView path, TCfgDataType expectedType, TCfgValue& storage) {
    String kept;
    path = KeptOverReset(path, kept);
    const TCfgValue* const found = Find(path, storage);
    return found && IsOfType(*found, path, expectedType) ? found : nullptr;
}

bool TVarnConfig::IsOfType(const TCfgValue& value, StringView path, TCfgDataType expectedType) {
    if (value.DataType != expectedType && expectedType != dtGeneral) {
        PerformError(eTypeMismatch, path);
        return false;
    }
    return TypeCheck(value.Data, expectedType);
}

const TCfgValue* TVarnConfig::FindQuietly(StringView path, TCfgDataType expectedType, TCfgValue& storage) {
    const TErrorPass pass(*this);
    return Find(path, expectedType, storage);
}

bool TVarnConfig::Read(StringView path, TCfgValue& data, TCfgDataType expectedType) {
    const String asked(path);  // it may be a text of data
    ResetError();
    TCfgValue storage;
    const TCfgValue* const found = Find(asked, storage);
    data = found ? *found : TCfgValue();
    return found && IsOfType(data, asked, expectedType);
}

bool TVarnConfig::TypeCheck(const String& value, TCfgDataType dataType) {
    static constexpr StringView kBooleans[] = {u"true", u"false", u"0", u"1", u"-1"};
    const auto fits = [&] {
        switch (dataType) {
            case dtInteger:
                return IsIntNumber(value);
            case dtFloat:
                return IsNumber(value);
            case dtBoolean:
                return std::ranges::find(kBooleans, LowerCase(value)) != std::end(kBooleans);
            case dtGeneral:
            case dtString:
                break;
        }
        return true;
    };
    if (fits()) return true;
    PerformError(eInvalidData, value);
    return false;
}

String TVarnConfig::ReadString(StringView path) {
    TCfgValue storage;
    const TCfgValue* const found = Find(path, dtString, storage);
    return found ? found->Data : String();
}

std::int32_t TVarnConfig::ReadInteger(StringView path) {
    TCfgValue storage;
    const TCfgValue* const found = Find(path, dtInteger, storage);
    return found ? StrToInt(found->Data) : 0;
}

double TVarnConfig::ReadFloat(StringView path) {
    TCfgValue storage;
    const TCfgValue* const found = Find(path, dtFloat, storage);
    return found ? static_cast<double>(StrToFloat(found->Data)) : 0;
}

bool TVarnConfig::ReadBoolean(StringView path) {
    TCfgValue storage;
    const TCfgValue* const found = Find(path, dtBoolean, storage);
    return found && StringToBoolean(found->Data);
}

// The path and the default are copied, because they may be the detail of the last error, which the search changes.

String TVarnConfig::ReadString(StringView path, StringView defaultVal) {
    const String asked(path);
    String instead(defaultVal);
    TCfgValue storage;
    if (const TCfgValue* const found = FindQuietly(asked, dtString, storage)) return found->Data;
    WriteString(asked, instead);
    return instead;
}

std::int32_t TVarnConfig::ReadInteger(StringView path, std::int32_t defaultVal) {
    const String asked(path);
    TCfgValue storage;
    if (const TCfgValue* const found = FindQuietly(asked, dtInteger, storage)) return StrToInt(found->Data);
    WriteInteger(asked, defaultVal);
    return defaultVal;
}

double TVarnConfig::ReadFloat(StringView path, double defaultVal) {
    const String asked(path);
    TCfgValue storage;
    if (const TCfgValue* const found = FindQuietly(asked, dtFloat, storage))
        return static_cast<double>(StrToFloat(found->Data));
    WriteFloat(asked, defaultVal);
    return defaultVal;
}

bool TVarnConfig::ReadBoolean(StringView path, bool defaultVal) {
    const String asked(path);
    TCfgValue storage;
    if (const TCfgValue* const found = FindQuietly(asked, dtBoolean, storage))
        return StringToBoolean(found->Data);
    WriteBoolean(asked, defaultVal);
    return defaultVal;
}

bool TVarnConfig::ValueExists(StringView path) {
    return VerifyValue(path, dtGeneral);
}

bool TVarnConfig::VerifyValue(StringView path, TCfgDataType dataType) {
    struct TActionScope {
        TCfgErrorAction& Action;
        const TCfgErrorAction Former;
        ~TActionScope() { Action = Former; }
    };
    const TActionScope scope{FErrorAction, std::exchange(FErrorAction, eaDefault)};
    TCfgValue value;
    return Read(path, value, dataType);
}

// --- Writing ---

bool TVarnConfig::Write(StringView path, StringView data, TCfgDataType dataType) {
    const String full = FullPath(path), text(data);
    ResetError();
    const TResolved resolved = Resolve(full, false);
    resolved.Node->SetText(text);
    resolved.Node->SetAttribute(kTypeAttribute, DataTypeToString(dataType));
    resolved.Attach();
    // A first child changes the text of its parent if that is white space.
    if (resolved.New)
        FKnown.clear();
    else
        FKnown.erase(KnownPath(full));
    return true;
}

void TVarnConfig::WriteInteger(StringView path, std::int32_t data) {
    Write(path, IntToStr(data), dtInteger);
}

void TVarnConfig::WriteFloat(StringView path, double data) {
    Write(path, FloatToStr(data), dtFloat);
}

// --- Errors and words ---

void TVarnConfig::PerformError(TCfgError error, StringView data) {
    FLastError = error;
    FLastErrorData = data;
    bool raiseError = FErrorAction == eaExcept;
    // The callback may replace the event or start another operation on this object.
    const String detail(data);
    if (FErrorAction == eaEvent)
        if (const TCfgErrorEvent event = FErrorEvent) event(*this, detail, error, raiseError);
    if (raiseError) throw EVarnConfig(error, detail);
}

/// Resets the error. Returns the text, which is kept first if it could be the detail of the last error.
StringView TVarnConfig::KeptOverReset(StringView text, String& kept) {
    if (!FLastErrorData.empty()) text = kept = text;
    ResetError();
    return text;
}

void TVarnConfig::EnableErrorPass() noexcept {
    FOldErrorAction = FErrorAction;
    FErrorAction = eaDefault;
}

void TVarnConfig::ResetError() noexcept {
    FLastError = eSuccess;
    FLastErrorData.clear();
}

bool TVarnConfig::StringToBoolean(StringView text) {
    return SameText(text, u"true") || text == u"-1" || text == u"1";
}

StringView TVarnConfig::DataTypeToString(TCfgDataType dataType) noexcept {
    const auto index = static_cast<std::size_t>(dataType);
    return index < kTypeWords.size() ? kTypeWords[index] : u"Unknown";
}

TCfgDataType TVarnConfig::StringToDataType(StringView text) {
    for (std::size_t i = 0; i < kTypeWords.size(); ++i)
        if (SameText(text, kTypeWords[i])) return static_cast<TCfgDataType>(i);
    return dtGeneral;
}

}  // namespace Varnholt
