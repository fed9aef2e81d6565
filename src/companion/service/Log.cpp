#include "companion/service/Log.h"

namespace Orbita {

Q_LOGGING_CATEGORY(lcCompanion, "orbita.companion")

} // namespace Orbita
