#include "Platform/Xml/XmlDocument.h"
