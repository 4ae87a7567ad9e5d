#pragma once

/// The foundation in one header: text helpers, escaping, path text, exceptions, debug output.
///
/// For applications. Code of the library includes the headers that it uses.
#include "VarnholtLib/Foundation/vrnDebugUtils.h"
#include "VarnholtLib/Foundation/vrnEscape.h"
#include "VarnholtLib/Foundation/vrnExceptions.h"
#include "VarnholtLib/Foundation/vrnModuleState.h"
#include "VarnholtLib/Foundation/vrnPathText.h"
#include "VarnholtLib/Foundation/vrnSemicolonValueReader.h"
#include "VarnholtLib/Foundation/vrnString.h"
