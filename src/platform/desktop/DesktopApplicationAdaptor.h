#pragma once

#include "platform/desktop/DesktopApplication.h"

#include <QDBusAbstractAdaptor>
#include <QVariantMap>

namespace Orbita {

/// The interface "org.freedesktop.Application" of a DesktopApplication.
class DesktopApplicationAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    explicit DesktopApplicationAdaptor(DesktopApplication &application)
        : QDBusAbstractAdaptor(&application), m_application(application)
    {
    }

public Q_SLOTS:
    void Activate(const QVariantMap &) { Q_EMIT m_application.activated(); }
    void Open(const QStringList &urls, const QVariantMap &) { m_application.open(urls); }
    void ActivateAction(const QString &name, const QVariantList &, const QVariantMap &)
    {
        m_application.activateAction(name);
    }

private:
    DesktopApplication &m_application;
};

} // namespace Orbita
