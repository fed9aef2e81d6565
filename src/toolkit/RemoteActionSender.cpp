#include "toolkit/RemoteActionSender.h"

#include <QLoggingCategory>

namespace Orbita {

Q_LOGGING_CATEGORY(lcToolkit, "orbita.toolkit")

void UnreachableRecipient::sendAction(const VXRemoteAction &action)
{
    qCWarning(lcToolkit, "The action \"%s\" was not sent: no companion program is reachable.",
              qPrintable(action.name()));
}

} // namespace Orbita
