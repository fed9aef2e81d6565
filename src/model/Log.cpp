#include "model/Log.h"

namespace Orbita {

Q_LOGGING_CATEGORY(lcModel, "orbita.model")

} // namespace Orbita
