#include "app/OrbitaApplication.h"

#include <QKeyEvent>
#include <QMetaObject>
#include <QWidget>

namespace Orbita {

namespace {

/// Calls the slot \a operation of \a receiver; false when it has none.
bool perform(QObject *receiver, const char *operation)
{
    const QByteArray signature = QByteArray(operation) + "()";
    return receiver->metaObject()->indexOfSlot(signature.constData()) >= 0
        && QMetaObject::invokeMethod(receiver, operation, Qt::DirectConnection);
}

} // namespace

const char *editingOperation(Qt::KeyboardModifiers modifiers, int key)
{
    if (modifiers != Qt::ControlModifier)
        return nullptr;
    switch (key) {
    case Qt::Key_X:
        return "cut";
    case Qt::Key_C:
        return "copy";
    case Qt::Key_V:
        return "paste";
    case Qt::Key_A:
        return "selectAll";
    default:
        return nullptr;
    }
}

bool OrbitaApplication::notify(QObject *receiver, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && receiver == focusWidget()) {
        const auto *key = static_cast<QKeyEvent *>(event);
        const char *operation = editingOperation(key->modifiers(), key->key());
        if (operation && perform(receiver, operation))
            return true;
    }
    return QApplication::notify(receiver, event);
}

} // namespace Orbita
