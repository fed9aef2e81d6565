#include "app/ReadySignal.h"

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
    if (const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC); nowhere >= 0) {
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            dup2(nowhere, standard);
        close(nowhere);
    }
    const char ready = '\n';
    [[maybe_unused]] const ssize_t written = write(descriptor, &ready, 1);
    close(descriptor);
}

} // namespace Orbita
