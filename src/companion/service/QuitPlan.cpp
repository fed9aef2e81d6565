#include "companion/service/QuitPlan.h"

#include "companion/service/SessionPrograms.h"

#include <algorithm>

namespace Orbita {

namespace {

/// Why the process must go on running; null where it need not.
const char *obstacle(const QuitFacts &facts)
{
    if (!isProcessIdentifier(facts.processIdentifier))
        return "%1 is not the number of a program's process.";
    if (!facts.exists)
        return "There is no process %1.";
    if (!facts.isOfThisUser)
        return "The process %1 belongs to another user.";
    if (facts.isAncestor)
        return "The process %1 is this program itself or one that runs it.";
    if (facts.executableName.isEmpty())
        return "It cannot be told which program the process %1 runs.";
    const bool isSessions = isSessionProgram(facts.executableName, facts.processName);
    if (isSessions || facts.carriesSession || facts.windows == QuitFacts::Windows::OfDesktopOnly)
        return "The session needs the process %1.";
    if (facts.windows == QuitFacts::Windows::OutOfReach)
        return "The display that the windows of the process %1 are on cannot be reached.";
    if (facts.windows == QuitFacts::Windows::OfAnother)
        return "The windows that name the process %1 are another's.";
    return nullptr;
}

/// \a name without its screen, and without what merely says that the display is on this machine.
QByteArray plainDisplay(QByteArray name)
{
    const qsizetype colon = name.lastIndexOf(':');
    const qsizetype point = name.indexOf('.', std::max<qsizetype>(colon, 0));
    if (point >= 0)
        name.truncate(point);
    return name.startsWith("unix:") ? name.mid(4) : name;
}

} // namespace

bool mayHaveWindowsBeyond(const QByteArray &seen, const DisplayNames &names)
{
    return !names.wayland.isEmpty() || (!names.x11.isEmpty() && plainDisplay(names.x11) != plainDisplay(seen));
}

bool isProcessIdentifier(qint64 number)
{
    constexpr qint64 maximum = 4 * 1024 * 1024; // PID_MAX_LIMIT of the kernel, which gives numbers below it
    return number > 1 && number < maximum;
}

Result<QuitStep, QString> planQuit(const QuitFacts &facts)
{
    if (const char *why = obstacle(facts))
        return Failure(QString::fromLatin1(why).arg(facts.processIdentifier));
    return facts.windows == QuitFacts::Windows::Closable ? QuitStep::CloseWindows : QuitStep::Signal;
}

} // namespace Orbita
