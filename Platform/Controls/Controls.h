#pragma once

/// Controls, forms, the application and its dialogs in one header.
///
/// For applications. Code of the library includes the headers that it uses.
#include "Platform/Controls/Application.h"
#include "Platform/Controls/Buttons.h"
#include "Platform/Controls/Clipboard.h"
#include "Platform/Controls/Component.h"
#include "Platform/Controls/Control.h"
#include "Platform/Controls/ControlBackend.h"
#include "Platform/Controls/DrawGrid.h"
#include "Platform/Controls/Edits.h"
#include "Platform/Controls/FileDialogs.h"
#include "Platform/Controls/Form.h"
#include "Platform/Controls/ImageList.h"
#include "Platform/Controls/Labels.h"
#include "Platform/Controls/ListView.h"
#include "Platform/Controls/Lists.h"
#include "Platform/Controls/Menus.h"
#include "Platform/Controls/MessageDialog.h"
#include "Platform/Controls/PageControl.h"
#include "Platform/Controls/StringGrid.h"
#include "Platform/Controls/Timer.h"
#include "Platform/Controls/TreeView.h"
