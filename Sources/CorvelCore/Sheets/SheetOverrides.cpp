#include "CorvelCore/Sheets/SheetOverrides.h"

namespace corvel {

bool SheetOverrides::isEmpty() const {
  return renamed.empty() && hidden.empty() && added.empty() && unparsed.empty() && extras.empty();
}

}  // namespace corvel
