#include "desktop/harness/Accessibility.h"
#include "desktop/harness/Wait.h"

#include <QDBusArgument>
#include <QDBusObjectPath>

namespace Orbita {

namespace {

const auto launcher = QStringLiteral("org.a11y.Bus");
const auto launcherPath = QStringLiteral("/org/a11y/bus");
const auto registry = QStringLiteral("org.a11y.atspi.Registry");
const auto rootPath = QStringLiteral("/org/a11y/atspi/accessible/root");
const auto accessible = QStringLiteral("org.a11y.atspi.Accessible");
const auto component = QStringLiteral("org.a11y.atspi.Component");
const auto action = QStringLiteral("org.a11y.atspi.Action");

// Deeper trees than this are circles.
constexpr int deepest = 64;

struct Reference {
    QString service;
    QDBusObjectPath path;
};

const QDBusArgument &operator>>(const QDBusArgument &argument, Reference &reference)
{
    argument.beginStructure();
    argument >> reference.service >> reference.path;
    argument.endStructure();
    return argument;
}

QList<Reference> childrenOf(const Bus &bus, const QString &service, const QString &path)
{
    QList<Reference> children;
    bus.call(service, path, accessible, QStringLiteral("GetChildren")).value(0).value<QDBusArgument>() >> children;
    return children;
}

quint64 statesOf(const Bus &bus, const QString &service, const QString &path)
{
    const QVariantList answer = bus.call(service, path, accessible, QStringLiteral("GetState"));
    const auto words = qdbus_cast<QList<uint>>(answer.value(0));
    return words.value(0) | (quint64(words.value(1)) << 32);
}

QRect extentsOf(const Bus &bus, const QString &service, const QString &path)
{
    constexpr uint ofScreen = 0;
    const QVariantList answer = bus.call(service, path, component, QStringLiteral("GetExtents"), {ofScreen});
    QRect extents;
    answer.value(0).value<QDBusArgument>() >> extents;
    return extents;
}

QString accessibilityAddress(const Bus &session)
{
    session.setProperty(launcher, launcherPath, QStringLiteral("org.a11y.Status"), QStringLiteral("IsEnabled"), true);
    return session.call(launcher, launcherPath, launcher, QStringLiteral("GetAddress")).value(0).toString();
}

} // namespace

QList<AccessibleItem> AccessibleItem::withRole(const QString &wanted) const
{
    QList<AccessibleItem> found;
    if (wanted.isEmpty() || role == wanted)
        found += *this;
    for (const AccessibleItem &child : children)
        found += child.withRole(wanted);
    return found;
}

std::optional<AccessibleItem> AccessibleItem::find(const QString &wantedRole, const QString &wantedName) const
{
    for (const AccessibleItem &item : withRole(wantedRole)) {
        if (item.name == wantedName)
            return item;
    }
    return std::nullopt;
}

Accessibility::Accessibility(const Bus &session) : m_bus(accessibilityAddress(session))
{
    // Programs register with the registry, which the bus starts when it is first asked for.
    m_bus.call(registry, rootPath, accessible, QStringLiteral("GetChildren"));
}

AccessibleItem Accessibility::read(const QString &service, const QString &path, int depth) const
{
    AccessibleItem item{.service = service,
                        .path = path,
                        .role
                        = m_bus.call(service, path, accessible, QStringLiteral("GetRoleName")).value(0).toString(),
                        .name = m_bus.property(service, path, accessible, QStringLiteral("Name")).toString(),
                        // An application itself stands nowhere.
                        .extents = path != rootPath ? extentsOf(m_bus, service, path) : QRect(),
                        .states = statesOf(m_bus, service, path),
                        .children = {}};
    for (const Reference &child : childrenOf(m_bus, service, path)) {
        if (depth < deepest)
            item.children += read(child.service, child.path.path(), depth + 1);
    }
    return item;
}

std::optional<AccessibleItem> Accessibility::tree(const QString &application) const
{
    for (const Reference &program : childrenOf(m_bus, registry, rootPath)) {
        try {
            const AccessibleItem item = read(program.service, program.path.path(), 0);
            if (item.name == application)
                return item;
        } catch (const DesktopFailure &) {
            // It changed or ended while it was read: whoever waits asks again.
            continue;
        }
    }
    return std::nullopt;
}

AccessibleItem Accessibility::waitFor(const QString &application, const QString &role, const QString &name) const
{
    std::optional<AccessibleItem> item;
    const auto found = [&] {
        const auto root = tree(application);
        item = root ? root->find(role, name) : std::nullopt;
        return item.has_value();
    };
    waitUntil(found, QStringLiteral("%1 had an accessible %2 called \"%3\"").arg(application, role, name));
    return *item;
}

void Accessibility::doAction(const AccessibleItem &item, const QString &wanted) const
{
    const int count = m_bus.property(item.service, item.path, action, QStringLiteral("NActions")).toInt();
    for (int index = 0; index < count; ++index) {
        if (m_bus.call(item.service, item.path, action, QStringLiteral("GetName"), {index}).value(0) == wanted) {
            m_bus.call(item.service, item.path, action, QStringLiteral("DoAction"), {index});
            return;
        }
    }
    throw DesktopFailure(QStringLiteral("\"%1\" does not offer %2").arg(item.name, wanted));
}

} // namespace Orbita
