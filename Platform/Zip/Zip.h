#pragma once

/// Zip files in one header.
///
/// For applications. Code of the library includes the headers that it uses.
#include "Platform/Zip/ZipFile.h"
