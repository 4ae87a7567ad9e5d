#include "Platform/Controls/ImageList.h"

namespace Varnholt {

TImageList::TImageList(TSize size) : FSize(size) {}

TImageList::~TImageList() = default;

}  // namespace Varnholt
