#pragma once

#include <functional>
#include <memory>
#include <unordered_map>

#include "Platform/Xml/XmlDocument.h"

/// An application's settings in one XML file. A setting is addressed by a path, and has a type beside its text.
///
///     TVarnConfig config(vPrivate, u"Station", u"Window");
///     const std::int32_t width = config.ReadInteger(u"main.size.width", 800);  // 800, and written as the default
///     config.WriteString(u"main.title", u"Graz");
///     config.Save();
///
/// The whole file is held in memory. Only the constructors, Save and SaveCopy access the disk; what is not saved
/// is lost. Saving replaces the file as a whole or not at all. If two processes save one file, the content of the
/// later one stands, whole.
///
/// Paths. A path is one or more names of elements, separated by full stops; white space around a name is ignored. A
/// path that begins with a full stop is appended to the current path; any other starts at the root. Names compare
/// exactly, and of several elements of one name only the first is reached. A path that is empty or has an
/// empty step raises EArgumentException (`The configuration path is empty`, `Configuration path "%s" has an empty
/// step`) and changes nothing. A write that fails, for example because a step is not an XML name, changes nothing
/// either: EXMLDocError as XmlDocument.h says.
///
/// Values. Writing to an element that has child elements replaces its own text and keeps the children. Floats are
/// written as FloatToStr does and read as StrToFloat does, in the process's format settings; reading also requires
/// IsNumber, so the decimal separator must be a full stop, and an infinity or a NaN cannot be read back. What is
/// written has 15 significant digits.
///
/// Errors. "Reports" means: the error and its detail become LastError and LastErrorData, and then, by
/// ErrorAction: eaDefault does nothing more; eaEvent calls the event, which may request EVarnConfig; eaExcept, the
/// action after construction, raises EVarnConfig.
///
/// File. An XML document with the root element VrnConfig. Each step of a path is a child element; the element of a
/// setting has the value as its text and its type in the attribute DataType: General, String, Integer, Float
/// or Boolean.
///
/// Values that were read are remembered, so reading them again is fast, until a node is handed out by GetNode or
/// GetRootNode.
///
/// With an enabled default log (vrnLog.h), file names and savings are logged.
///
/// Threads: none inside; an object serves one thread at a time.
namespace Varnholt {

enum TCfgVisibility : std::uint8_t { vPublic, vPrivate };
enum TCfgErrorAction : std::uint8_t { eaDefault, eaEvent, eaExcept };
enum TCfgError : std::uint8_t { eSuccess, ePathDoesntExist, eValueDoesntExist, eTypeMismatch, eInvalidData };
enum TCfgDataType : std::uint8_t { dtGeneral, dtString, dtInteger, dtFloat, dtBoolean };

struct TCfgValue {
    String Name;  ///< of the element
    String Data;  ///< its text
    TCfgDataType DataType = dtGeneral;
};

class TVarnConfig;

/// Called at eaEvent with the detail of the error, a path or a value. EVarnConfig is raised after the call if the
/// last argument was set.
using TCfgErrorEvent =
    std::function<void(TVarnConfig& sender, const String& path, TCfgError error, bool& raiseError)>;

/// A reported error. The message is `VARN configuration error: `, the text of the error, ` - ` and the detail. The
/// texts are "Operation was successful", "Path does not exist", "Value does not exist", "Type mismatch",
/// "Value data is not the correct type", and "Unknown error" for any other code.
class VARNHOLT_EXPORT EVarnConfig : public Exception {
public:
    EVarnConfig(TCfgError error, StringView data);
    [[nodiscard]] TCfgError GetError() const noexcept { return FError; }
    [[nodiscard]] const String& GetData() const noexcept { return FData; }

private:
    TCfgError FError;
    String FData;
};

class VARNHOLT_EXPORT TVarnConfig {
public:
    /// The path of a named configuration: FOLDER\Varnholt\PRODUCT\NAME.VrnConfig, below the machine-wide folder for
    /// application data if it is public, and the user's local one if it is private. Raises as the constructors
    /// do, with the detail `unable to get folder`.
    [[nodiscard]] static String GenFileName(TCfgVisibility visibility, StringView product, StringView name);
    /// Whether that file exists, following links.
    [[nodiscard]] static bool ConfigFileExists(TCfgVisibility visibility, StringView product,
                                               StringView name);

    /// Opens a named configuration, and creates its folder if it is missing. Raises as the other constructor, and
    /// with the detail `unable to create configuration directory`.
    TVarnConfig(TCfgVisibility visibility, StringView product, StringView name);
    /// Opens a file, and creates one without settings if it is missing. Raises Exception
    /// `Unable to create or open configuration file - %s` with the detail `can not create base configuration
    /// file`, `unable to load configuration file` or `configuration file is not in the correct format`. The cause
    /// is the nested exception (std::rethrow_if_nested), if there is one.
    explicit TVarnConfig(StringView filename);
    TVarnConfig(const TVarnConfig&) = delete;
    TVarnConfig& operator=(const TVarnConfig&) = delete;

    [[nodiscard]] const String& GetFilename() const noexcept { return FFilename; }
    /// The error of the last operation, and its detail.
    [[nodiscard]] TCfgError GetLastError() const noexcept { return FLastError; }
    [[nodiscard]] const String& GetLastErrorData() const noexcept { return FLastErrorData; }
    /// Whether the constructor found no file and created it.
    [[nodiscard]] bool GetIsNewDocument() const noexcept { return FIsNewDocument; }
    [[nodiscard]] TCfgErrorAction GetErrorAction() const noexcept { return FErrorAction; }
    void SetErrorAction(TCfgErrorAction action) noexcept { FErrorAction = action; }
    [[nodiscard]] const TCfgErrorEvent& GetErrorEvent() const noexcept { return FErrorEvent; }
    void SetErrorEvent(TCfgErrorEvent event) { FErrorEvent = std::move(event); }
    /// The text in front of relative paths, such as `main.size`.
    [[nodiscard]] const String& GetCurrentPath() const noexcept { return FCurrentPath; }
    void SetCurrentPath(StringView path) { FCurrentPath = path; }

    // --- Reading ---

    /// Reads a setting of the expected type; dtGeneral expects none. Returns whether it exists, has the type and
    /// a text that fits the type. Reports, with the full path as the detail: eValueDoesntExist if only the
    /// last step is missing, ePathDoesntExist if an earlier one is; data is then empty. Reports eTypeMismatch with
    /// the path as given, eInvalidData with the value. A setting without a type, and one that was written as
    /// general, matches only dtGeneral.
    bool Read(StringView path, TCfgValue& data, TCfgDataType expectedType);
    /// The setting, or an empty text, 0 or false where Read returns false. An integer or a float that the
    /// runtime cannot convert, such as one out of range, raises EConvertError.
    [[nodiscard]] String ReadString(StringView path);
    [[nodiscard]] std::int32_t ReadInteger(StringView path);
    [[nodiscard]] double ReadFloat(StringView path);
    [[nodiscard]] bool ReadBoolean(StringView path);
    /// The setting. Where Read returns false, nothing is reported: the default is written in place of what is there,
    /// with the type, and returned.
    String ReadString(StringView path, StringView defaultVal);
    std::int32_t ReadInteger(StringView path, std::int32_t defaultVal);
    double ReadFloat(StringView path, double defaultVal);
    bool ReadBoolean(StringView path, bool defaultVal);
    /// Whether Read with dtGeneral returns true. Nothing is raised; LastError is set.
    [[nodiscard]] bool ValueExists(StringView path);
    /// The same with a type.
    [[nodiscard]] bool VerifyValue(StringView path, TCfgDataType dataType);
    /// The element of a path. If it is missing: with readOnly, reports as Read and returns false; otherwise it
    /// is created.
    bool GetNode(StringView path, bool readOnly, std::shared_ptr<IXMLNode>& node);
    /// The root element of the document.
    [[nodiscard]] std::shared_ptr<IXMLNode> GetRootNode();

    // --- Writing ---

    /// Sets the text and the type of a setting, which is created if it is missing. The text is not checked against
    /// the type. Returns true.
    bool Write(StringView path, StringView data, TCfgDataType dataType = dtGeneral);
    void WriteString(StringView path, StringView data) { Write(path, data, dtString); }
    void WriteInteger(StringView path, std::int32_t data);
    void WriteFloat(StringView path, double data);
    void WriteBoolean(StringView path, bool data) { Write(path, BooleanToString(data), dtBoolean); }
    /// Writes the document to its file. Raises as IXMLDocument::SaveToFile.
    void Save();
    /// Writes the document to another file; Filename stays.
    void SaveCopy(StringView filename);

    // --- Helpers ---

    /// Keeps the error action and sets eaDefault. Does not nest.
    void EnableErrorPass() noexcept;
    void RestoreErrorAction() noexcept { FErrorAction = FOldErrorAction; }
    void ResetError() noexcept;
    /// "true" or "false".
    [[nodiscard]] static StringView BooleanToString(bool value) noexcept {
        return value ? u"true" : u"false";
    }
    /// True for "true" in letters of either case, "-1" and "1".
    [[nodiscard]] static bool StringToBoolean(StringView text);
    /// The word in the file; "Unknown" for a value outside the enumeration.
    [[nodiscard]] static StringView DataTypeToString(TCfgDataType dataType) noexcept;
    /// The type of a word, in letters of either case; dtGeneral for any other.
    [[nodiscard]] static TCfgDataType StringToDataType(StringView text);

private:
    struct TResolved;
    struct TPathHash {
        using is_transparent = void;
        std::size_t operator()(StringView path) const noexcept { return std::hash<StringView>()(path); }
    };

    [[nodiscard]] String FullPath(StringView path) const;
    TResolved Resolve(const String& fullPath, bool readOnly);
    const TCfgValue* Find(StringView path, TCfgValue& storage);
    const TCfgValue* Find(StringView path, TCfgDataType expectedType, TCfgValue& storage);
    const TCfgValue* FindQuietly(StringView path, TCfgDataType expectedType, TCfgValue& storage);
    bool IsOfType(const TCfgValue& value, StringView path, TCfgDataType expectedType);
    bool TypeCheck(const String& value, TCfgDataType dataType);
    void PerformError(TCfgError error, StringView data);
    StringView KeptOverReset(StringView text, String& kept);
    void ShareNodes() noexcept;
    void CreateBasicFile() const;

    String FFilename;
    TCfgError FLastError = eSuccess;
    String FLastErrorData;
    TCfgErrorAction FErrorAction = eaExcept;
    TCfgErrorAction FOldErrorAction = eaExcept;
    std::shared_ptr<IXMLDocument> FDocument;
    std::shared_ptr<IXMLNode> FCfgNode;
    TCfgErrorEvent FErrorEvent;
    String FCurrentPath;
    bool FIsNewDocument = false;
    // What was read, by path. Used only until a caller gets a node, through which the document could change.
    std::unordered_map<String, TCfgValue, TPathHash, std::equal_to<>> FKnown;
    bool FAreNodesShared = false;
};

}  // namespace Varnholt
