#pragma once

#include "base/Result.h"

#include <QString>

namespace Orbita {

/// What is known of a process that is to quit.
struct QuitFacts {
    enum class Windows {
        None,
        Closable,      ///< at least one that takes part in being closed
        OfDesktopOnly, ///< panels and the desktop's background, and no other
        OutOfReach,    ///< it may have some, on a display that cannot be looked at
    };

    qint64 processIdentifier = 0;
    bool exists = false;
    bool isOfThisUser = false;
    bool isAncestor = false; ///< this very process, or one that it descends from
    bool isWindowManager = false;
    QString executableName; ///< of its file; empty for one of the kernel's own, and where it may not be known
    QString processName;    ///< what it calls itself: for an interpreter's mostly the name of the script
    Windows windows = Windows::None;
};

enum class QuitStep { CloseWindows, Signal };

/// How to ask the process of \a facts to quit; otherwise one sentence that says why it is not asked.
[[nodiscard]] Result<QuitStep, QString> planQuit(const QuitFacts &facts);

/// Whether \a number can be that of a program's process: from 2 to what the kernel allows at most.
[[nodiscard]] bool isProcessIdentifier(qint64 number);

} // namespace Orbita
