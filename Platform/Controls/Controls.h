#pragma once

/// Controls, forms, the application and its dialogs in one header.
///
/// For applications. Code of the library includes the headers that it uses.
#include "Platform/Controls/Application.h"
#include "Platform/Controls/Component.h"
#include "Platform/Controls/Control.h"
#include "Platform/Controls/ControlBackend.h"
#include "Platform/Controls/Form.h"
#include "Platform/Controls/MessageDialog.h"
#include "Platform/Controls/StringGrid.h"
#include "Platform/Controls/Timer.h"
