#pragma once

#include <QObject>

#include <functional>

namespace Orbita {

class Scheduler;

/// Has what is being written saved one to two seconds after the last change, when saving does not hold up the next one,
/// and every ten seconds while changes go on.
class AutosaveTimer final : public QObject {
    Q_OBJECT
public:
    /// \a scheduler outlives the timer.
    AutosaveTimer(Scheduler &scheduler, std::function<void()> save);

    void noteChange();

private:
    void wait();
    void look();

    Scheduler &m_scheduler;
    const std::function<void()> m_save;
    bool m_isWaiting = false;
    bool m_hasChanged = false; ///< since the last look
    int m_looks = 0;           ///< since the first change that is not saved
};

} // namespace Orbita
