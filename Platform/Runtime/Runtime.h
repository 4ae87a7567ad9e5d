#pragma once

/// The runtime of the platform layer in one header: text, numbers, formatter, variants, dates, streams,
/// encodings, files.
///
/// For applications. Code of the library includes the headers that it uses.
#include "Platform/Runtime/Characters.h"
#include "Platform/Runtime/DateTime.h"
#include "Platform/Runtime/DraftFile.h"
#include "Platform/Runtime/Encoding.h"
#include "Platform/Runtime/EnumSet.h"
#include "Platform/Runtime/Event.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Export.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/FlagScope.h"
#include "Platform/Runtime/FloatMath.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/FormatSettings.h"
#include "Platform/Runtime/Guid.h"
#include "Platform/Runtime/Immortal.h"
#include "Platform/Runtime/Indexes.h"
#include "Platform/Runtime/MainThread.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/Runtime/Random.h"
#include "Platform/Runtime/Streams.h"
#include "Platform/Runtime/StringList.h"
#include "Platform/Runtime/Text.h"
#include "Platform/Runtime/TextStreams.h"
#include "Platform/Runtime/Types.h"
#include "Platform/Runtime/Variant.h"
