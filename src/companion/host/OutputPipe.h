#pragma once

#include <QByteArray>

#include <array>

namespace Orbita {

/// A pipe that a child writes to and this program reads. Both ends are closed with it, and at an exec.
class OutputPipe {
public:
    OutputPipe();
    ~OutputPipe();
    Q_DISABLE_COPY_MOVE(OutputPipe)

    [[nodiscard]] bool isOpen() const { return readEnd() >= 0; }
    [[nodiscard]] int readEnd() const { return m_ends[0]; }
    [[nodiscard]] int writeEnd() const { return m_ends[1]; }
    void closeWriteEnd();

    /// What has been written so far, at most 1 MiB, the largest that a pipe can be; empty where there is nothing.
    [[nodiscard]] QByteArray read() const;
    /// Whether nobody can write any more, once the write end here is closed.
    [[nodiscard]] bool isAbandoned() const;

private:
    std::array<int, 2> m_ends{-1, -1};
};

/// Starts a process in a session of its own that reads \a output and \a errors, and forgets what it reads, until nobody
/// can write to them any more: who writes to a pipe that nobody reads is killed.
void leaveToDrain(const OutputPipe &output, const OutputPipe &errors);

} // namespace Orbita
