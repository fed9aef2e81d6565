#include "app/ReadySignal.h"

#include "app/LogFile.h"

#include <QByteArray>

#include <fcntl.h>
#include <unistd.h>

namespace Orbita {

void signalReady()
{
    bool isNumber = false;
    const int descriptor = qgetenv("ORBITA_READY_FD").toInt(&isNumber);
    if (!isNumber || descriptor <= STDERR_FILENO)
        return;
    qunsetenv("ORBITA_READY_FD");
    // Whoever waits for the end of the starting command's output would wait for this program's end.
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    const int log = openLogFile();
    dup2(nowhere, STDIN_FILENO);
    for (const int standard : {STDOUT_FILENO, STDERR_FILENO})
        dup2(log >= 0 ? log : nowhere, standard);
    for (const int opened : {nowhere, log}) {
        if (opened >= 0)
            close(opened);
    }
    const char ready = '\n';
    [[maybe_unused]] const ssize_t written = write(descriptor, &ready, 1);
    close(descriptor);
}

} // namespace Orbita
