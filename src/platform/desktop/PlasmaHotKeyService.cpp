#include "platform/desktop/PlasmaHotKeyService.h"

#include "platform/KeyboardLayout.h"
#include "platform/Log.h"
#include "platform/desktop/PlasmaKey.h"

#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusReply>

#include <algorithm>

namespace Orbita {

namespace {

const auto serviceName = QStringLiteral("org.kde.kglobalaccel");
const auto component = QStringLiteral("orbita");

/// The action that stands for \a combination. Named after it, so that what a crash left in the service's settings is
/// taken over and never in the way.
QString actionFor(KeyCombination combination)
{
    return QStringLiteral("hotkey-%1-%2").arg(combination.keyCode).arg(combination.modifiers);
}

/// Names of the action for the service, then names of both for people, who see them in Plasma's settings.
QStringList describe(const QString &action)
{
    return {component, action, QStringLiteral("Orbita"), QStringLiteral("Orbita")};
}

} // namespace

PlasmaHotKeyService::PlasmaHotKeyService(const QDBusConnection &bus, const KeyboardLayout &layout, QObject *parent)
    : HotKeyService(parent), m_bus(bus), m_layout(layout)
{
    qDBusRegisterMetaType<QList<int>>();
    connect(&layout, &KeyboardLayout::changed, this, &PlasmaHotKeyService::followLayout);
}

PlasmaHotKeyService::~PlasmaHotKeyService()
{
    for (const HotKey &hotKey : m_hotKeys)
        giveBack(hotKey.combination);
}

Result<void, GrabError> PlasmaHotKeyService::grab(HotKeyId id, KeyCombination combination)
{
    if (isOurs(combination))
        return Failure(GrabError::TakenByOther);
    const auto key = plasmaKey(combination, m_layout);
    if (!key)
        return Failure(GrabError::NoSuchKey);
    const auto taken = take(combination, *key);
    if (taken)
        m_hotKeys.push_back({id, combination, *key});
    return taken;
}

void PlasmaHotKeyService::release(HotKeyId id)
{
    const auto found
        = std::find_if(m_hotKeys.begin(), m_hotKeys.end(), [id](const HotKey &one) { return one.id == id; });
    if (found == m_hotKeys.end())
        return;
    giveBack(found->combination);
    m_hotKeys.erase(found);
}

bool PlasmaHotKeyService::isTakenByOther(KeyCombination combination)
{
    const auto key = plasmaKey(combination, m_layout);
    if (!key || isOurs(combination))
        return false;
    const QDBusReply<bool> available = ask(QStringLiteral("isGlobalShortcutAvailable"), {*key, component});
    return available.isValid() && !available.value();
}

bool PlasmaHotKeyService::isKeptForUs(KeyCombination combination) const
{
    const auto key = plasmaKey(combination, m_layout);
    if (!key)
        return false;
    const QDBusReply<QStringList> action = ask(QStringLiteral("action"), {*key});
    return action.isValid() && action.value().value(0) == component;
}

bool PlasmaHotKeyService::isOurs(KeyCombination combination) const
{
    return std::any_of(m_hotKeys.begin(), m_hotKeys.end(),
                       [&](const HotKey &hotKey) { return hotKey.combination == combination; });
}

Result<void, GrabError> PlasmaHotKeyService::take(KeyCombination combination, int key)
{
    // Marks the key as wanted by a program that runs, and sets aside what the service remembers from before.
    constexpr uint presentWithoutAutoloading = 2 | 4;
    const QStringList action = describe(actionFor(combination));
    if (ask(QStringLiteral("doRegister"), {action}).type() != QDBusMessage::ReplyMessage || !listen())
        return Failure(GrabError::NotSupported);
    const QDBusReply<QList<int>> given
        = ask(QStringLiteral("setShortcut"), {action, QVariant::fromValue(QList<int>{key}), presentWithoutAutoloading});
    if (given.isValid() && given.value() == QList<int>{key})
        return {};
    giveBack(combination);
    return Failure(given.isValid() ? GrabError::TakenByOther : GrabError::NotSupported);
}

void PlasmaHotKeyService::giveBack(KeyCombination combination)
{
    (void)ask(QStringLiteral("unregister"), {component, actionFor(combination)});
}

QDBusMessage PlasmaHotKeyService::ask(const QString &method, const QVariantList &arguments) const
{
    constexpr int longestWait = 1000; // milliseconds
    auto question = QDBusMessage::createMethodCall(serviceName, QStringLiteral("/kglobalaccel"),
                                                   QStringLiteral("org.kde.KGlobalAccel"), method);
    question.setArguments(arguments);
    question.setAutoStartService(false);
    return m_bus.call(question, QDBus::Block, longestWait);
}

bool PlasmaHotKeyService::listen()
{
    if (m_watcher)
        return true;
    const QDBusReply<QDBusObjectPath> path = ask(QStringLiteral("getComponent"), {component});
    if (!path.isValid()
        || !m_bus.connect(serviceName, path.value().path(), QStringLiteral("org.kde.kglobalaccel.Component"),
                          QStringLiteral("globalShortcutPressed"), this, SLOT(hear(QString, QString, qlonglong))))
        return false;
    m_watcher = std::make_unique<QDBusServiceWatcher>(serviceName, m_bus, QDBusServiceWatcher::WatchForRegistration);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceRegistered, this, &PlasmaHotKeyService::takeAllAnew);
    return true;
}

void PlasmaHotKeyService::followLayout()
{
    const bool moved = std::any_of(m_hotKeys.begin(), m_hotKeys.end(), [this](const HotKey &hotKey) {
        return plasmaKey(hotKey.combination, m_layout).value_or(0) != hotKey.key;
    });
    if (moved)
        takeAllAnew();
}

void PlasmaHotKeyService::takeAllAnew()
{
    // All are given back before one is taken: one may move to where another one was.
    for (const HotKey &hotKey : m_hotKeys)
        giveBack(hotKey.combination);
    for (HotKey &hotKey : m_hotKeys) {
        const auto key = plasmaKey(hotKey.combination, m_layout);
        hotKey.key = key && take(hotKey.combination, *key) ? *key : 0;
        if (hotKey.key == 0)
            qCWarning(lcPlatform, "Plasma no longer gives the hot key with key %u and modifiers 0x%x",
                      hotKey.combination.keyCode, hotKey.combination.modifiers);
    }
}

void PlasmaHotKeyService::hear(const QString &from, const QString &action, qlonglong)
{
    const auto found = std::find_if(m_hotKeys.begin(), m_hotKeys.end(), [&](const HotKey &hotKey) {
        return from == component && action == actionFor(hotKey.combination);
    });
    if (found != m_hotKeys.end())
        Q_EMIT pressed(HotKeyId(found->id)); // who hears it may release it
}

} // namespace Orbita
