#include "settings/AppSettings.h"

#include "platform/ColorArchive.h"
#include "platform/UserDefaults.h"

#include <utility>

namespace Orbita {

namespace {

const QString gestureKey = QStringLiteral("gestureSettings");
const QString magnifyKey = QStringLiteral("magnifySettings");
const QString tintKey = QStringLiteral("windowTintColor");
const QString styleKey = QStringLiteral("runningAppsStyle");
const QString showRunningAppsKey = QStringLiteral("showRunningApps"); // of an earlier version
const QString sizeKey = QStringLiteral("menuSizeSettings");
const QString positionKey = QStringLiteral("menuPositionSettings");
const QString swiftModeKey = QStringLiteral("swiftMode");
const QString titleDisplayKey = QStringLiteral("titleDisplay");
const QString showFinderKey = QStringLiteral("showFinder");
const QString launchAtLoginKey = QStringLiteral("launchAtLogin");
const QString launchedBeforeKey = QStringLiteral("launchedBefore");
const QString blacklistKey = QStringLiteral("blacklistedApps");

/// The truth under \a key; true where nothing is stored, or something that is neither true nor false.
bool trueByDefault(const UserDefaults &defaults, const QString &key)
{
    switch (defaults.value(key).typeId()) {
    case QMetaType::Bool:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::QString:
        return defaults.boolean(key);
    default:
        return true;
    }
}

} // namespace

AppSettings::AppSettings(UserDefaults &defaults, const TriggerSources &sources, QObject *parent)
    : QObject(parent),
      m_defaults(defaults),
      m_handlers(sources, [this] { return gestureSettings(); }),
      m_announced(current())
{
    connect(&m_handlers, &TriggerHandlers::shouldShow, this, &AppSettings::shouldShow);
    connect(&m_handlers, &TriggerHandlers::shouldHide, this, &AppSettings::shouldHide);
    connect(&m_defaults, &UserDefaults::changedExternally, this, &AppSettings::announceChanges);
}

GestureTrigger AppSettings::gestureSettings() const
{
    return gestureTriggerFromStored(m_defaults.integer(gestureKey));
}

void AppSettings::setGestureSettings(GestureTrigger trigger)
{
    m_defaults.setValue(gestureKey, int(trigger));
    m_announced.trigger = gestureSettings();
    startHandlers();
}

bool AppSettings::magnifySettings() const
{
    return trueByDefault(m_defaults, magnifyKey);
}

void AppSettings::setMagnifySettings(bool magnify)
{
    m_defaults.setValue(magnifyKey, magnify);
    m_announced.magnify = magnifySettings();
    Q_EMIT magnifySettingsChanged();
}

QColor AppSettings::windowTintColor() const
{
    const QVariant stored = m_defaults.value(tintKey);
    if (stored.typeId() != QMetaType::QByteArray)
        return Qt::white;
    return ColorArchive::decode(stored.toByteArray()).value_or(Qt::white);
}

void AppSettings::setWindowTintColor(const QColor &color)
{
    m_defaults.setValue(tintKey, ColorArchive::encode(color));
    m_announced.tint = windowTintColor();
    Q_EMIT windowTintSettingsChanged();
}

RunningAppsStyle AppSettings::effectiveRunningAppsStyle() const
{
    if (m_defaults.contains(styleKey))
        return runningAppsStyleFromStored(m_defaults.integer(styleKey));
    return trueByDefault(m_defaults, showRunningAppsKey) ? RunningAppsStyle::Normal : RunningAppsStyle::Hidden;
}

RunningAppsStyle AppSettings::runningAppsStyle()
{
    const RunningAppsStyle style = effectiveRunningAppsStyle();
    if (!m_defaults.contains(styleKey))
        m_defaults.setValue(styleKey, int(style));
    return style;
}

void AppSettings::setRunningAppsStyle(RunningAppsStyle style)
{
    m_defaults.setValue(styleKey, int(style));
    m_announced.style = effectiveRunningAppsStyle();
    Q_EMIT runningAppsStyleChanged();
}

MenuSize AppSettings::menuSizeSettings() const
{
    return menuSizeFromStored(m_defaults.integer(sizeKey));
}

void AppSettings::setMenuSizeSettings(MenuSize size)
{
    m_defaults.setValue(sizeKey, int(size));
    m_announced.size = menuSizeSettings();
    Q_EMIT menuSizeSettingsChanged();
}

MenuPosition AppSettings::menuPositionSettings() const
{
    return menuPositionFromStored(m_defaults.integer(positionKey));
}

void AppSettings::setMenuPositionSettings(MenuPosition position)
{
    m_defaults.setValue(positionKey, int(position));
}

SwiftMode AppSettings::swiftMode() const
{
    return swiftModeFromStored(m_defaults.integer(swiftModeKey));
}

void AppSettings::setSwiftMode(SwiftMode mode)
{
    m_defaults.setValue(swiftModeKey, int(mode));
}

TitleDisplay AppSettings::titleDisplay() const
{
    return titleDisplayFromStored(m_defaults.integer(titleDisplayKey));
}

void AppSettings::setTitleDisplay(TitleDisplay display)
{
    m_defaults.setValue(titleDisplayKey, int(display));
}

bool AppSettings::showFinder() const
{
    return trueByDefault(m_defaults, showFinderKey);
}

void AppSettings::setShowFinder(bool show)
{
    m_defaults.setValue(showFinderKey, show);
    m_announced.showFinder = showFinder();
    Q_EMIT showFinderChanged();
}

bool AppSettings::launchAtLogin() const
{
    return m_defaults.boolean(launchAtLoginKey);
}

void AppSettings::setLaunchAtLogin(bool launch)
{
    m_defaults.setValue(launchAtLoginKey, launch);
}

bool AppSettings::launchedBefore() const
{
    return m_defaults.boolean(launchedBeforeKey);
}

void AppSettings::setLaunchedBefore(bool launched)
{
    m_defaults.setValue(launchedBeforeKey, launched);
}

QStringList AppSettings::blacklistedApplications() const
{
    const QVariant stored = m_defaults.value(blacklistKey);
    if (stored.typeId() != QMetaType::QVariantList)
        return {};
    QStringList paths;
    for (const QVariant &path : stored.toList()) {
        if (path.typeId() != QMetaType::QString)
            return {};
        paths.append(path.toString());
    }
    return paths;
}

void AppSettings::addBlacklistedApplication(const QString &path)
{
    QStringList paths = blacklistedApplications();
    if (!paths.contains(path))
        paths.append(path);
    setBlacklistedApplications(paths);
}

void AppSettings::removeBlacklistedApplication(const QString &path)
{
    QStringList paths = blacklistedApplications();
    paths.removeAll(path);
    setBlacklistedApplications(paths);
}

void AppSettings::setBlacklistedApplications(const QStringList &paths)
{
    m_defaults.setValue(blacklistKey, paths);
    m_announced.blacklist = paths;
    Q_EMIT blacklistedApplicationsChanged();
}

void AppSettings::reset()
{
    m_defaults.setValue(gestureKey, int(GestureTriggerThreeFingerRest));
    m_defaults.setValue(magnifyKey, true);
    m_announced.trigger = gestureSettings();
    m_announced.magnify = magnifySettings();
}

void AppSettings::startHandlers()
{
    Q_EMIT handlersStarting();
    m_handlers.start();
}

AppSettings::Announced AppSettings::current() const
{
    return {gestureSettings(),  magnifySettings(), windowTintColor(),        effectiveRunningAppsStyle(),
            menuSizeSettings(), showFinder(),      blacklistedApplications()};
}

void AppSettings::announceChanges()
{
    const Announced now = current();
    const Announced before = std::exchange(m_announced, now);
    if (now.trigger != before.trigger && m_handlers.isStarted())
        startHandlers();
    if (now.magnify != before.magnify)
        Q_EMIT magnifySettingsChanged();
    if (now.tint != before.tint)
        Q_EMIT windowTintSettingsChanged();
    if (now.style != before.style)
        Q_EMIT runningAppsStyleChanged();
    if (now.size != before.size)
        Q_EMIT menuSizeSettingsChanged();
    if (now.showFinder != before.showFinder)
        Q_EMIT showFinderChanged();
    if (now.blacklist != before.blacklist)
        Q_EMIT blacklistedApplicationsChanged();
}

} // namespace Orbita
