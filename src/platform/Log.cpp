#include "platform/Log.h"

namespace Orbita {

Q_LOGGING_CATEGORY(lcPlatform, "orbita.platform")

} // namespace Orbita
