#pragma once

#include "platform/RunningApplications.h"
#include "platform/desktop/DesktopCatalog.h"
#include "platform/desktop/ProcessFacts.h"

#include <functional>
#include <map>
#include <set>

namespace Orbita {

/// One top-level window of any program.
struct ApplicationWindow {
    quint32 window = 0;
    WindowIdentity identity;
    QString title;
    ProcessFacts process;     ///< of no process when unknown or on another machine
    bool isListed = false;    ///< a task list would show it
    bool isTransient = false; ///< belongs to another window
    Image icon;               ///< the window's own; null when it has none or was not asked
};

/// Groups windows and processes into applications. Knows no window system: it is told what there is.
///
/// The windows of one application are those with the same desktop file, else with the same window class, else of the
/// same process. An application lives until its last window has gone and its watched processes have ended.
class ApplicationTable {
public:
    using IconForBundle = std::function<Image(const QString &bundlePath)>;

    /// The applications of \a ownProcess are never Regular. \a iconForBundle may be empty.
    ApplicationTable(qint64 ownProcess, IconForBundle iconForBundle);

    /// Adds a window, or replaces what was known of it.
    void setWindow(const ApplicationWindow &window, const DesktopCatalog &catalog);
    void removeWindow(quint32 window);
    /// From now on an application that has had windows of one of \a processes lives until that has ended.
    void holdProcesses(std::set<qint64> processes);
    void removeProcess(qint64 process);
    /// Finds the desktop files of all windows anew. An application keeps its serial where that is possible.
    void regroup(const DesktopCatalog &catalog);
    /// Ends all applications.
    void clear();

    /// In the order in which they appeared.
    [[nodiscard]] std::vector<RunningApplication> applications() const;
    [[nodiscard]] const RunningApplication *find(quint64 serial) const;
    /// The application of \a window; null for a window that is unknown or this program's.
    [[nodiscard]] const RunningApplication *ownerOf(quint32 window) const;
    /// The windows of an application that can be brought to the front, in no particular order: those that a task list
    /// shows and what belongs to them, or all when there are none.
    [[nodiscard]] std::vector<quint32> windowsToActivate(quint64 serial) const;
    [[nodiscard]] const std::map<quint32, ApplicationWindow> &windows() const { return m_windows; }
    /// The processes that applications have.
    [[nodiscard]] std::set<qint64> processes() const;
    /// Whether the icon of \a window is of use: it is not known and its application is not an installed one.
    [[nodiscard]] bool wantsIcon(quint32 window) const;

private:
    struct Group {
        QString key;
        std::optional<DesktopEntry> entry;
        RunningApplication record;
        std::set<quint32> windows;
        std::map<qint64, ProcessFacts> processes; ///< of its windows, those that have gone included
    };
    using Groups = std::vector<Group>;

    [[nodiscard]] QString keyOf(const ApplicationWindow &window, const DesktopEntry *entry) const;
    [[nodiscard]] Groups::iterator groupWithKey(const QString &key);
    [[nodiscard]] Groups::iterator groupOf(quint32 window);
    [[nodiscard]] Groups::const_iterator groupOf(quint32 window) const;
    [[nodiscard]] bool hasWindowOf(const Group &group, qint64 process) const;
    void place(const ApplicationWindow &window, const DesktopCatalog &catalog);
    void setEntry(Group &group, const DesktopEntry *entry);
    void moveAway(Group &group, const ApplicationWindow &window);
    void forgetEnded();
    void refresh(Group &group);
    [[nodiscard]] QString nameOf(const Group &group) const;

    qint64 m_ownProcess;
    IconForBundle m_iconForBundle;
    quint64 m_nextSerial = 1;
    std::map<quint32, ApplicationWindow> m_windows;
    Groups m_groups; ///< in the order in which they appeared
    std::set<qint64> m_held;
};

} // namespace Orbita
