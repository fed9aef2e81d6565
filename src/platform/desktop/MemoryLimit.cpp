#include "platform/desktop/MemoryLimit.h"

#include <QFile>

#include <algorithm>
#include <optional>

#include <sys/resource.h>
#include <unistd.h>

namespace Orbita {

namespace {

std::optional<rlimit> limitBefore; ///< set once there is one of our own

/// The address space of this program in bytes; 0 where the system does not tell.
rlim_t addressSpace()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readLine().split(' ').value(0).toULongLong() * rlim_t(::sysconf(_SC_PAGESIZE));
}

} // namespace

void limitMemory(size_t more)
{
    rlimit limit;
    const rlim_t present = addressSpace();
    if (present == 0 || ::getrlimit(RLIMIT_AS, &limit) != 0)
        return;
    const rlimit before = limit;
    limit.rlim_cur = std::min(limit.rlim_cur, present + rlim_t(more));
    if (::setrlimit(RLIMIT_AS, &limit) == 0)
        limitBefore = before;
}

void restoreMemoryLimit()
{
    if (limitBefore)
        ::setrlimit(RLIMIT_AS, &*limitBefore);
}

} // namespace Orbita
