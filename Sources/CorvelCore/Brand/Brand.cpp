#include "CorvelCore/Brand/Brand.h"

namespace corvel {
static_assert(!Brand::bundleID.empty());
}  // namespace corvel
