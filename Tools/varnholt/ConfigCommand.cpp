#include "Tools/varnholt/ConfigCommand.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Streams.h"
#include "Platform/Runtime/Text.h"
#include "Tools/varnholt/Output.h"
#include "VarnholtLib/Services/vrnConfig.h"

namespace Varnholt::Tool {
namespace {

struct TConfigOptions {
    std::string File;
    std::string Path;
    std::string Value;
    std::optional<std::string> Type;
};

/// A configuration that exists. The library would create it, and gives no reason.
std::unique_ptr<TVarnConfig> OpenExisting(const std::string& file) {
    const String path = FromUtf8(file);
    const TFileStream existing(path, fmOpenRead);
    return std::make_unique<TVarnConfig>(path);
}

void RunGet(const TConfigOptions& options) {
    TCfgValue value;
    OpenExisting(options.File)->Read(FromUtf8(options.Path), value, dtGeneral);
    PrintLine(value.Data);
}

/// Reads the setting as an application would. Raises if it does not fit its type.
void CheckValue(TVarnConfig& config, StringView path, TCfgDataType type) {
    switch (type) {
        case dtInteger:
            static_cast<void>(config.ReadInteger(path));
            break;
        case dtFloat:
            static_cast<void>(config.ReadFloat(path));
            break;
        case dtBoolean:
            static_cast<void>(config.ReadBoolean(path));
            break;
        case dtGeneral:
        case dtString:
            break;
    }
}

TCfgDataType ReadType(const std::string& text) {
    for (const TCfgDataType type : {dtGeneral, dtString, dtInteger, dtFloat, dtBoolean})
        if (SameText(FromUtf8(text), TVarnConfig::DataTypeToString(type))) return type;
    throw CLI::ValidationError("--type",
                               "\"" + text + "\" is not general, string, integer, float or boolean");
}

void RunSet(const TConfigOptions& options) {
    const auto asked = options.Type ? std::optional(ReadType(*options.Type)) : std::nullopt;
    const String file = FromUtf8(options.File), path = FromUtf8(options.Path);
    TVarnConfig config(file);
    try {
        TCfgValue former;
        config.EnableErrorPass();
        config.Read(path, former, dtGeneral);
        config.RestoreErrorAction();
        const TCfgDataType type = asked.value_or(former.DataType);
        config.Write(path, FromUtf8(options.Value), type);
        CheckValue(config, path, type);
        config.Save();
    } catch (...) {
        if (config.GetIsNewDocument()) DeleteFile(file);
        throw;
    }
}

/// The value in one line: line ends, tabs and backslashes as in C, other control characters as blanks.
String ListedValue(StringView value) {
    String listed;
    for (const Char c : value) {
        switch (c) {
            case u'\\':
                listed += u"\\\\";
                break;
            case u'\t':
                listed += u"\\t";
                break;
            case u'\n':
                listed += u"\\n";
                break;
            case u'\r':
                listed += u"\\r";
                break;
            default:
                listed += c;
        }
    }
    return OnOneLine(listed);
}

/// Lists the settings below an element in document order: all but elements that only lead to others. Elements that no
/// path reaches are left out: later ones of a name, and those whose name has a full stop.
void ListSettings(IXMLNode& parent, const String& prefix) {
    const std::shared_ptr<IXMLNodeList> siblings = parent.GetChildNodes();
    for (auto node = siblings->First(); node; node = node->NextSibling()) {
        const String name = node->GetNodeName();
        if (name.find(u'.') != String::npos || siblings->FindNode(name) != node) continue;
        const Variant type = node->GetAttribute(u"DataType");
        const String text = node->GetText();
        const bool leadsOnly = type.IsEmpty() && text.empty() && node->GetChildNodes()->GetCount() > 0;
        const StringView typeWord =
            TVarnConfig::DataTypeToString(TVarnConfig::StringToDataType(type.ToText()));
        if (!leadsOnly) PrintLine(Format(u"%s\t%s\t%s", {prefix + name, typeWord, ListedValue(text)}));
        ListSettings(*node, prefix + name + u".");
    }
}

void RunList(const TConfigOptions& options) {
    ListSettings(*OpenExisting(options.File)->GetRootNode(), u"");
}

}  // namespace

void AddConfigCommand(CLI::App& app) {
    const auto options = std::make_shared<TConfigOptions>();
    CLI::App* config = app.add_subcommand("config", "Print or change the settings in a configuration file");
    config->add_option("file", options->File, "Configuration file")->required()->type_name("");
    config->require_subcommand(1);

    const auto addPath = [&](CLI::App& action) {
        action
            .add_option("path", options->Path,
                        "Names of elements separated by full stops, such as main.width")
            ->required()
            ->type_name("");
    };
    CLI::App* get = config->add_subcommand("get", "Print the value of a setting");
    addPath(*get);
    get->callback([options] { RunGet(*options); });

    CLI::App* set = config->add_subcommand("set", "Set a value; a missing file is created");
    addPath(*set);
    set->add_option("value", options->Value, "The value")->required()->type_name("");
    set->add_option("--type", options->Type,
                    "general, string, integer, float or boolean; by default the type that the setting has, "
                    "and general for a new one")
        ->type_name("TYPE");
    set->callback([options] { RunSet(*options); });

    CLI::App* list = config->add_subcommand("list", "Print path, type and value of each setting");
    list->callback([options] { RunList(*options); });
}

}  // namespace Varnholt::Tool
