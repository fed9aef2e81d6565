#include "toolkit/RemoteActionSender.h"

#include "toolkit/Log.h"

namespace Orbita {

void UnreachableRecipient::sendAction(const VXRemoteAction &action)
{
    qCWarning(lcToolkit, "The action \"%s\" was not sent: no companion program is reachable.",
              qPrintable(action.name()));
}

} // namespace Orbita
