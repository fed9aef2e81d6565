#include "ring/DragOperation.h"

#include <array>

namespace Orbita {

Qt::DropAction dropActionFor(DragOperation operation, Qt::DropActions offered)
{
    const bool prefersLink = operation == DragOperation::Generic;
    const std::array candidates{prefersLink ? Qt::LinkAction : Qt::CopyAction,
                                prefersLink ? Qt::CopyAction : Qt::LinkAction};
    for (const Qt::DropAction candidate : candidates) {
        if (offered & candidate)
            return candidate;
    }
    return Qt::IgnoreAction;
}

} // namespace Orbita
