#pragma once

/// The machine and the process in one header: known folders, clock, process, services of the desktop, files.
///
/// For applications. Code of the library includes the headers that it uses.
#include "Platform/System/Desktop.h"
#include "Platform/System/FileVersion.h"
#include "Platform/System/LocalTime.h"
#include "Platform/System/Platform.h"
#include "Platform/System/PrivateFile.h"
#include "Platform/System/Shell.h"
