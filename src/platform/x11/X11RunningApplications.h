#pragma once

#include "platform/RunningApplications.h"
#include "platform/desktop/ApplicationTable.h"
#include "platform/desktop/ProcessWatch.h"
#include "platform/x11/X11Connection.h"

#include <set>

namespace Orbita {

class ApplicationIndex;
class X11WindowManager;

/// Applications by the windows that the window manager lists.
///
/// Nothing is read before the event loop runs, so that start-up does not wait for it. The list is empty until the
/// index was read once: before that, an installed application could not be told from any other.
/// While a window of this program has the keyboard no application is frontmost.
class X11RunningApplications final : public RunningApplications {
    Q_OBJECT
public:
    /// \a iconForBundle gives the icon of a desktop file; it may be empty. Has \a index read.
    X11RunningApplications(X11Connection &connection, X11WindowManager &windowManager, ApplicationIndex &index,
                           ApplicationTable::IconForBundle iconForBundle, QObject *parent = nullptr);

    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override;
    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override;
    bool activate(const RunningApplication &application) override;
    [[nodiscard]] bool isTerminated(const RunningApplication &application) const override;

private:
    void noteProperty(xcb_window_t window, xcb_atom_t property);
    void noteUnmapping(xcb_window_t window);
    void noteDestruction(xcb_window_t window);
    void handleChanges();
    void readRoot();
    void readNewAndChanged();
    void readIcons(const std::vector<xcb_window_t> &windows);
    void dropWithdrawn();
    void adoptCatalog();
    void clear();
    void report();

    X11Connection &m_connection;
    X11WindowManager &m_windowManager;
    ApplicationIndex &m_index;
    ApplicationTable m_table;
    ProcessWatch m_processWatch;

    bool m_rootChanged = true;
    bool m_isReportDue = false;          ///< something happened that may have changed a record or the frontmost
    std::vector<xcb_window_t> m_changed; ///< windows to be read anew, in the order in which they appeared
    std::set<xcb_window_t> m_doubtful;   ///< known windows that may have been closed
    std::vector<xcb_window_t> m_recent;  ///< windows by when they were last active, the latest last
    xcb_window_t m_activeWindow = XCB_NONE;
    std::vector<RunningApplication> m_reported;
    quint64 m_reportedFrontmost = 0;
};

} // namespace Orbita
