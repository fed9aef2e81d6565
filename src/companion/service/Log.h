#pragma once

#include <QLoggingCategory>

namespace Orbita {

Q_DECLARE_LOGGING_CATEGORY(lcCompanion)

} // namespace Orbita
