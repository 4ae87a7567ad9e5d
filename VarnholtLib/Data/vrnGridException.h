#pragma once

#include "Platform/Runtime/Exceptions.h"

namespace Varnholt {

/// Raised by the arrays and grids for an index outside its range or a size that is not possible. The message
/// of an index error has two lines, separated by a carriage return: the operation, then the index.
class VARNHOLT_EXPORT EGridException : public Exception {
public:
    using Exception::Exception;
};

}  // namespace Varnholt
