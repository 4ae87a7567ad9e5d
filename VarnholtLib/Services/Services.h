#pragma once

/// The application services in one header: XML, configuration, log, folders, versions, dates.
///
/// For applications. Code of the library includes the headers that it uses.
#include "VarnholtLib/Services/vrnConfig.h"
#include "VarnholtLib/Services/vrnDateTime.h"
#include "VarnholtLib/Services/vrnDateUtils.h"
#include "VarnholtLib/Services/vrnFileTypeAssociation.h"
#include "VarnholtLib/Services/vrnHttpRequest.h"
#include "VarnholtLib/Services/vrnIndyHttpRequest.h"
#include "VarnholtLib/Services/vrnLog.h"
#include "VarnholtLib/Services/vrnLogCleaner.h"
#include "VarnholtLib/Services/vrnProxy.h"
#include "VarnholtLib/Services/vrnRandomBytesFactory.h"
#include "VarnholtLib/Services/vrnRandomBytesIntf.h"
#include "VarnholtLib/Services/vrnRegistryUtils.h"
#include "VarnholtLib/Services/vrnSimpleHttpRequest.h"
#include "VarnholtLib/Services/vrnSpecialFolders.h"
#include "VarnholtLib/Services/vrnSystemInfo.h"
#include "VarnholtLib/Services/vrnSystemRandomBytes.h"
#include "VarnholtLib/Services/vrnVersionNumber.h"
#include "VarnholtLib/Services/vrnWindowUtils.h"
#include "VarnholtLib/Services/vrnWindows.h"
#include "VarnholtLib/Services/vrnXml.h"
