#include "Platform/Xml/XmlDocument.h"

#include <gtest/gtest.h>
