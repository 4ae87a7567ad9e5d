#pragma once

/// The HTTP client in one header.
///
/// For applications. Code of the library includes the headers that it uses.
#include "Platform/Http/IdHTTP.h"
