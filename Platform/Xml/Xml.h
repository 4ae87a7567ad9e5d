#pragma once

/// The XML document service in one header.
///
/// For applications. Code of the library includes the headers that it uses.
#include "Platform/Xml/XmlDocument.h"
