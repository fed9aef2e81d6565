#include "app/Log.h"

namespace Orbita {

Q_LOGGING_CATEGORY(lcApp, "orbita.app")

} // namespace Orbita
