#include "toolkit/Log.h"

namespace Orbita {

Q_LOGGING_CATEGORY(lcToolkit, "orbita.toolkit")

} // namespace Orbita
