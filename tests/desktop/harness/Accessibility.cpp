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
    const QVariantList answer = bus.call(service, path, accessible, QStringLiteral("GetChildren"));
    QList<Reference> children;
    const auto argument = answer.value(0).value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        Reference child;
        argument >> child;
        children += child;
    }
    argument.endArray();
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
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    const auto argument = answer.value(0).value<QDBusArgument>();
    argument.beginStructure();
    argument >> x >> y >> width >> height;
    argument.endStructure();
    return {x, y, width, height};
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
    const auto text
        = [&](const QString &property) { return m_bus.property(service, path, accessible, property).toString(); };
    AccessibleItem item;
    item.service = service;
    item.path = path;
    item.role = m_bus.call(service, path, accessible, QStringLiteral("GetRoleName")).value(0).toString();
    item.name = text(QStringLiteral("Name"));
    item.description = text(QStringLiteral("Description"));
    item.states = statesOf(m_bus, service, path);
    // An application itself stands nowhere.
    if (path != rootPath)
        item.extents = extentsOf(m_bus, service, path);
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

AccessibleItem Accessibility::refreshed(const AccessibleItem &item) const
{
    return read(item.service, item.path, 0);
}

QStringList Accessibility::actions(const AccessibleItem &item) const
{
    const int count = m_bus.property(item.service, item.path, action, QStringLiteral("NActions")).toInt();
    QStringList names;
    for (int index = 0; index < count; ++index)
        names += m_bus.call(item.service, item.path, action, QStringLiteral("GetName"), {index}).value(0).toString();
    return names;
}

void Accessibility::doAction(const AccessibleItem &item, const QString &wanted) const
{
    const QStringList names = actions(item);
    const auto index = static_cast<int>(names.indexOf(wanted));
    if (index < 0)
        throw DesktopFailure(QStringLiteral("\"%1\" offers only: %2").arg(item.name, names.join(QLatin1Char(' '))));
    m_bus.call(item.service, item.path, action, QStringLiteral("DoAction"), {index});
}

} // namespace Orbita
