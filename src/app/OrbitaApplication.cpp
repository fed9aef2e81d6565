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

const char *editingOperation(const QKeyEvent &event)
{
    constexpr quint32 capsLock = 2; // the lock bit of X11's modifier state
    if (event.modifiers() != Qt::ControlModifier || (event.nativeModifiers() & capsLock) != 0)
        return nullptr;
    switch (event.key()) {
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
        const char *operation = editingOperation(*static_cast<QKeyEvent *>(event));
        for (QWidget *widget = focusWidget(); operation && widget; widget = widget->parentWidget()) {
            if (perform(widget, operation))
                return true;
        }
    }
    return QApplication::notify(receiver, event);
}

} // namespace Orbita
