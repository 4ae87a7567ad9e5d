#pragma once

/// The whole library in one header: the frame, the subsystems, the base library and the platform layer.
///
/// For applications. Code of the library includes the headers that it uses.
#include "Platform/Controls/Controls.h"
#include "Platform/Drawing/Drawing.h"
#include "Platform/Http/Http.h"
#include "Platform/Registry/Registry.h"
#include "Platform/Runtime/Runtime.h"
#include "Platform/System/System.h"
#include "Platform/Xml/Xml.h"
#include "Platform/Zip/Zip.h"
#include "VarnholtBaseLib/VarnholtBaseLib.h"
#include "VarnholtLib/Data/Data.h"
#include "VarnholtLib/Files/Files.h"
#include "VarnholtLib/Foundation/Foundation.h"
#include "VarnholtLib/Numerics/Numerics.h"
#include "VarnholtLib/Services/Services.h"
#include "VarnholtLib/UI/UI.h"
#include "VarnholtLib/vrnPackage.h"
