#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

namespace Orbita {

/// What is known of a process that is to quit.
struct QuitFacts {
    enum class Windows {
        None,
        Closable,      ///< at least one that takes part in being closed
        OfDesktopOnly, ///< panels and the desktop's background, and no other
        OutOfReach,    ///< it may have some, on a display that cannot be looked at
        OfAnother,     ///< some say that they are its, but are another process's: its number in a sandbox perhaps
    };

    qint64 processIdentifier = 0;
    bool exists = false;
    bool isOfThisUser = false;
    bool isAncestor = false;     ///< this very process, or one that it descends from
    bool carriesSession = false; ///< the window manager or the session bus, or one that has started them
    QString executableName;      ///< of its file; empty for one of the kernel's own, and where it may not be known
    QString processName;         ///< what it calls itself: for an interpreter's mostly the name of the script
    Windows windows = Windows::None;
};

enum class QuitStep { CloseWindows, Signal };

/// How to ask the process of \a facts to quit; otherwise one sentence that says why it is not asked.
[[nodiscard]] Result<QuitStep, QString> planQuit(const QuitFacts &facts);

/// The displays that a process was started for: its $DISPLAY and $WAYLAND_DISPLAY; empty for none.
struct DisplayNames {
    QByteArray x11;
    QByteArray wayland;
};

/// Whether a process with no windows on the X display \a seen may have some on another one; \a seen is empty where none
/// can be looked at.
[[nodiscard]] bool mayHaveWindowsBeyond(const QByteArray &seen, const DisplayNames &names);

/// Whether \a number can be that of a program's process: from 2 to what the kernel allows at most.
[[nodiscard]] bool isProcessIdentifier(qint64 number);

} // namespace Orbita
