#pragma once

#include "shortcut/MASShortcutValue.h"

#include <QPointer>

namespace Orbita {

class UserDefaults;

/// Keeps what a recorder shows and the shortcut that is stored the same, for as long as the object lives.
class MASShortcutDefaultsObserver : public QObject {
    Q_OBJECT
public:
    /// \a shortcutView and \a defaults are borrowed; the former may go first. Shows the stored shortcut at once.
    MASShortcutDefaultsObserver(MASShortcutValue &shortcutView, UserDefaults &defaults, const QString &userDefaultsKey,
                                QObject *parent = nullptr);
    ~MASShortcutDefaultsObserver() override;

    /// Shows the stored shortcut and follows both sides. Nothing happens when it does so already.
    void startObservingShortcutView();
    /// Lets go of both and shows again what was shown at construction, which is not stored. Nothing happens when it
    /// does not follow.
    void stopObservingShortcutView();

private:
    void userDefaultsDidChange(const QString &key);
    void shortcutValueDidChange();
    void showStoredShortcut();

    QPointer<MASShortcutValue> m_shortcutView;
    UserDefaults &m_defaults;
    QString m_userDefaultsKey;
    std::optional<MASShortcut> m_originalShortcut;
    bool m_internalPreferenceChange = false; ///< what is stored follows what is shown
    bool m_internalShortcutChange = false;   ///< what is shown follows what is stored
    bool m_isObserving = false;
};

} // namespace Orbita
