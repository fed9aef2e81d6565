#include "settings/Log.h"

namespace Orbita {

Q_LOGGING_CATEGORY(lcSettings, "orbita.settings")

} // namespace Orbita
