#include "shortcut/Log.h"

namespace Orbita {

Q_LOGGING_CATEGORY(lcShortcut, "orbita.shortcut")

} // namespace Orbita
