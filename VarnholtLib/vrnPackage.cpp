#include "VarnholtLib/vrnPackage.h"

#include "VarnholtLib/LoadTablePrivate.h"
#include "VarnholtLib/Numerics/vrnCurveFitLoadPrivate.h"
#include "VarnholtLib/Services/vrnLogLoadPrivate.h"
#include "VarnholtLib/Services/vrnSystemRandomBytesLoadPrivate.h"

namespace Varnholt {
namespace {

/// All modules, in the order in which they initialise, with their work at load and at unload.
constexpr std::array kModules = {
    TModule{u"vrnXml", {}},
    TModule{u"vrnStatistics", {}},
    TModule{u"vrnComplex", {}},
    TModule{u"vrnClimatePhysics", {}},
    TModule{u"vrnFavAdd", {}},
    TModule{u"vrnFavOrg", {}},
    TModule{u"vrnMath", {}},
    TModule{u"vrnRegression", {}},
    TModule{u"vrnWindowSwitchHelper", {}},
    TModule{u"vrnStringParse", {}},
    TModule{u"vrnRez", {}},
    TModule{u"vrnHttpRequest", {}},
    TModule{u"vrnIndyHttpRequest", {}},
    TModule{u"vrnRandomBytesIntf", {}},
    TModule{u"vrnSystemRandomBytes",
            {.ConstructClass = &CreateSystemRandomBytes, .DestructClass = &ReleaseSystemRandomBytes}},
    TModule{u"vrnRandomBytesFactory", {}},
    TModule{u"vrnRegistryUtils", {}},
    TModule{u"vrnFileTypeAssociation", {}},
    TModule{u"vrnSystemInfo", {}},
    TModule{u"vrnTrendline", {}},
    TModule{u"vrnNumberGrid", {}},
    TModule{u"vrnControlEnumerator", {}},
    TModule{u"vrnPageControlManager", {}},
    TModule{u"vrnMonthlyData", {}},
    TModule{u"vrnKeyboard", {}},
    TModule{u"vrnColorDistributor", {}},
    TModule{u"vrnSemicolonValueReader", {}},
    TModule{u"vrnCommonUIBookmarkValueAdapters", {}},
    TModule{u"vrnUIBookmark", {}},
    TModule{u"vrnUIBookmarkXMLDb", {}},
    TModule{u"vrnDateTime", {}},
    TModule{u"vrnRangeParser", {}},
    TModule{u"vrnListViewHelper", {}},
    TModule{u"vrnCompress", {}},
    TModule{u"vrnConfig", {}},
    TModule{u"vrnDateUtils", {}},
    TModule{u"vrnBrowseFolderDialog", {}},
    TModule{u"vrnBrowseFileDialogs", {}},
    TModule{u"vrnFavourites", {}},
    TModule{u"vrnGraphicPrims", {}},
    TModule{u"vrnGraphics", {}},
    TModule{u"vrnGrid", {}},
    TModule{u"vrnTextFileParser", {}},
    TModule{u"vrnPathArray", {}},
    TModule{u"vrnPathBreadcrumb", {}},
    TModule{u"vrnPathElements", {}},
    TModule{u"vrnScrollBarAssist", {}},
    TModule{u"vrnSmartArray", {}},
    TModule{u"vrnTableData", {}},
    TModule{u"vrnStringGridInfo", {}},
    TModule{u"vrnTextFile", {}},
    TModule{u"vrnIO", {}},
    TModule{u"vrnUACHelper", {}},
    TModule{u"vrnFileIO", {}},
    TModule{u"vrnVersionNumber", {}},
    TModule{u"vrnWindows", {}},
    TModule{u"vrnClipboardEnvelope", {}},
    TModule{u"vrnEscape", {}},
    TModule{u"vrnLog", {.Initialize = &CreateNullLog, .Finalize = &ReleaseNullLog}},
    TModule{u"vrnLogCleaner", {}},
    TModule{u"vrnMessageBox", {}},
    TModule{u"vrnAppExceptionHandler", {}},
    TModule{u"vrnExceptions", {}},
    TModule{u"vrnDoubleArrayUtils", {}},
    TModule{u"vrnString", {}},
    TModule{u"vrnWindowUtils", {}},
    TModule{u"vrnSpecialFolders", {}},
    TModule{u"vrnProxy", {}},
    TModule{u"vrnSimpleHttpRequest", {}},
    TModule{u"vrnCommandableForm", {}},
    TModule{u"vrnCommonDialogFilters", {}},
    TModule{u"vrnControlStringConversion", {}},
    TModule{u"vrnZipUtils", {}},
    TModule{u"vrnNotifyEventList", {}},
    TModule{u"vrnNamedPoint", {}},
    TModule{u"vrnMenuHelpers", {}},
    TModule{u"vrnCurveFit",
            {.Initialize = &CreateFits, .Finalize = &FreeFits, .DestructClass = &ReleaseFits}},
    TModule{u"vrnScaledImageListCollection", {}},
    TModule{u"vrnHiDpi", {}},
    TModule{u"vrnDebugUtils", {}},
    TModule{u"vrnWaitCursor", {}},
};

using TTable = TLoadTable<kModules>;

// See LoadTablePrivate.h for the priority.
[[gnu::constructor(101)]] void Load() noexcept {
    TTable::Initialize();
}

[[gnu::destructor(101)]] void Unload() noexcept {
    TTable::Finalize();
}

}  // namespace

TPackageInfoTable GetPackageInfoTable() noexcept {
    const std::span<const TPackageInfoRow> rows = TTable::GetRows();
    return {static_cast<std::int32_t>(rows.size()), rows};
}

void Initialize() noexcept {
    TTable::Initialize();
}

void Finalize() noexcept {
    TTable::Finalize();
}

}  // namespace Varnholt
