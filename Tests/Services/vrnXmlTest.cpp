#include "Platform/System/Platform.h"

#include <gtest/gtest.h>
