#pragma once

/// The state of dialogs and the helpers of windows and controls in one header.
///
/// For applications. Code of the library includes the headers that it uses.
#include "VarnholtLib/UI/vrnAppExceptionHandler.h"
#include "VarnholtLib/UI/vrnBrowseFileDialogs.h"
#include "VarnholtLib/UI/vrnBrowseFolderDialog.h"
#include "VarnholtLib/UI/vrnClipboardEnvelope.h"
#include "VarnholtLib/UI/vrnCommandableForm.h"
#include "VarnholtLib/UI/vrnCommonDialogFilters.h"
#include "VarnholtLib/UI/vrnCommonUIBookmarkValueAdapters.h"
#include "VarnholtLib/UI/vrnControlEnumerator.h"
#include "VarnholtLib/UI/vrnControlStringConversion.h"
#include "VarnholtLib/UI/vrnFavAdd.h"
#include "VarnholtLib/UI/vrnFavOrg.h"
#include "VarnholtLib/UI/vrnFavourites.h"
#include "VarnholtLib/UI/vrnHiDpi.h"
#include "VarnholtLib/UI/vrnKeyboard.h"
#include "VarnholtLib/UI/vrnListViewHelper.h"
#include "VarnholtLib/UI/vrnMenuHelpers.h"
#include "VarnholtLib/UI/vrnMessageBox.h"
#include "VarnholtLib/UI/vrnScaledImageListCollection.h"
#include "VarnholtLib/UI/vrnScrollBarAssist.h"
#include "VarnholtLib/UI/vrnUIBookmark.h"
#include "VarnholtLib/UI/vrnUIBookmarkBinder.h"
#include "VarnholtLib/UI/vrnUIBookmarkXMLDb.h"
#include "VarnholtLib/UI/vrnWaitCursor.h"
#include "VarnholtLib/UI/vrnWindowSwitchHelper.h"
