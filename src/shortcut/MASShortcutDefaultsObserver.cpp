#include "shortcut/MASShortcutDefaultsObserver.h"

#include "platform/KeyedArchive.h"
#include "platform/UserDefaults.h"
#include "shortcut/MASShortcutUserDefaultsHotKey.h"

#include <QScopedValueRollback>

#include <utility>

namespace Orbita {

MASShortcutDefaultsObserver::MASShortcutDefaultsObserver(MASShortcutValue &shortcutView, UserDefaults &defaults,
                                                         const QString &userDefaultsKey, QObject *parent)
    : QObject(parent),
      m_shortcutView(&shortcutView),
      m_defaults(defaults),
      m_userDefaultsKey(userDefaultsKey),
      m_originalShortcut(shortcutView.shortcutValue())
{
    startObservingShortcutView();
}

MASShortcutDefaultsObserver::~MASShortcutDefaultsObserver()
{
    stopObservingShortcutView();
}

void MASShortcutDefaultsObserver::startObservingShortcutView()
{
    if (!m_shortcutView || std::exchange(m_isObserving, true))
        return;
    showStoredShortcut();
    connect(&m_defaults, &UserDefaults::changed, this, &MASShortcutDefaultsObserver::userDefaultsDidChange);
    connect(m_shortcutView, &MASShortcutValue::shortcutValueChanged, this,
            &MASShortcutDefaultsObserver::shortcutValueDidChange);
}

void MASShortcutDefaultsObserver::stopObservingShortcutView()
{
    if (!std::exchange(m_isObserving, false))
        return;
    disconnect(&m_defaults, nullptr, this, nullptr);
    if (!m_shortcutView)
        return;
    disconnect(m_shortcutView, nullptr, this, nullptr);
    m_shortcutView->setShortcutValue(m_originalShortcut);
}

void MASShortcutDefaultsObserver::userDefaultsDidChange(const QString &key)
{
    if (key != m_userDefaultsKey || m_internalPreferenceChange)
        return;
    const QScopedValueRollback internal(m_internalShortcutChange, true);
    showStoredShortcut();
}

void MASShortcutDefaultsObserver::shortcutValueDidChange()
{
    if (m_internalShortcutChange)
        return;
    const QScopedValueRollback internal(m_internalPreferenceChange, true);
    const auto &shortcut = m_shortcutView->shortcutValue();
    // A cleared shortcut is stored as such, not left out, so that it is not mistaken for one never chosen.
    m_defaults.setValue(m_userDefaultsKey, shortcut ? shortcut->data() : KeyedArchive::encodeNothing());
    m_defaults.synchronize();
}

void MASShortcutDefaultsObserver::showStoredShortcut()
{
    if (m_shortcutView)
        m_shortcutView->setShortcutValue(storedShortcut(m_defaults, m_userDefaultsKey));
}

} // namespace Orbita
