#pragma once

/// The controls of the platform layer in one header: string grid, message dialog.
///
/// For applications. Code of the library includes the headers that it uses.
#include "Platform/Controls/MessageDialog.h"
#include "Platform/Controls/StringGrid.h"
