#include "CorvelCore/Sheets/SheetOverrides.h"

#include "CorvelCore/Brand/Brand.h"

namespace corvel {

// The file type is named after the app that owns it.
static_assert(SheetOverrides::typeIdentifier.size() == Brand::bundleID.size() + 6 &&
              SheetOverrides::typeIdentifier.starts_with(Brand::bundleID) &&
              SheetOverrides::typeIdentifier.ends_with(".sheet"));

bool SheetOverrides::isEmpty() const {
  return renamed.empty() && hidden.empty() && added.empty() && unparsed.empty() && extras.empty();
}

}  // namespace corvel
