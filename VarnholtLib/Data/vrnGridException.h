#pragma once

#include "Platform/Runtime/Exceptions.h"

namespace Varnholt {

/// What the arrays and grids raise: an index outside its range, or a size that they can not take.
/// The message of an index error has two lines, parted by a carriage return: the operation, then the index.
class VARNHOLT_EXPORT EGridException : public Exception {
public:
    using Exception::Exception;
};

}  // namespace Varnholt
