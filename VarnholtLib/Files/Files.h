#pragma once

/// Files in one header: archives, text files, paths, file helpers, named points.
///
/// For applications. Code of the library includes the headers that it uses.
#include "VarnholtLib/Files/vrnCompress.h"
#include "VarnholtLib/Files/vrnFileIO.h"
#include "VarnholtLib/Files/vrnIO.h"
#include "VarnholtLib/Files/vrnNamedPoint.h"
#include "VarnholtLib/Files/vrnPathArray.h"
#include "VarnholtLib/Files/vrnPathBreadcrumb.h"
#include "VarnholtLib/Files/vrnPathElements.h"
#include "VarnholtLib/Files/vrnTextFile.h"
#include "VarnholtLib/Files/vrnTextFileParser.h"
#include "VarnholtLib/Files/vrnUACHelper.h"
#include "VarnholtLib/Files/vrnZipUtils.h"
