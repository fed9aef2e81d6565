#pragma once

#include <QtCore/qnamespace.h>

namespace Orbita {

/// What a drag from another program would do here.
enum class DragOperation {
    Copy,    ///< it becomes an entry of the ring
    Generic, ///< it is handed to an item
};

/// How the other program is told of \a operation, of the \a offered actions; IgnoreAction refuses the drag.
///
/// A copy is a copy, and handing it to an item makes a link where that is offered, else a copy. Never a move, after
/// which the other program might delete what was dragged.
[[nodiscard]] Qt::DropAction dropActionFor(DragOperation operation, Qt::DropActions offered);

} // namespace Orbita
