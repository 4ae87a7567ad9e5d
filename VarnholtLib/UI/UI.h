#pragma once

/// The state of dialogs and the helpers of windows and controls in one header.
///
/// For applications. Code of the library includes the headers that it uses.
#include "VarnholtLib/UI/vrnCommonDialogFilters.h"
#include "VarnholtLib/UI/vrnFavourites.h"
#include "VarnholtLib/UI/vrnUIBookmark.h"
#include "VarnholtLib/UI/vrnUIBookmarkXMLDb.h"
