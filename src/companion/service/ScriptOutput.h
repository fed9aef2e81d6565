#pragma once

#include <QByteArray>
#include <QObject>

#include <array>
#include <memory>

class QSocketNotifier;

namespace Orbita {

/// Two pipes for what a script writes, which passes on to this program's standard error.
///
/// They are read until the last writer has gone, which may be a program that the script has left running: it would be
/// ended by writing into a closed pipe. So where this object ends first, a process that throws everything away reads
/// on.
class ScriptOutput final : public QObject {
    Q_OBJECT
public:
    /// What is passed on, of both streams together; then one line says that the rest is left out.
    static constexpr qsizetype maximumSize = 1024 * 1024;

    enum Stream { Output, Error };

    explicit ScriptOutput(QObject *parent = nullptr);
    ~ScriptOutput() override;

    /// Where the script writes; -1 when there was no descriptor left. It does not pass to other programs by itself.
    [[nodiscard]] int writeEnd(Stream stream) const { return m_pipes[stream].writeEnd; }
    /// To be called once the script has its own: until then there is always a writer.
    void closeWriteEnds();

    /// The last line that is not blank of what has been written as errors, on one line and of a bounded length.
    [[nodiscard]] QString lastErrorLine();

    /// Deletes this object once nobody can write any more.
    void deleteWhenFinished();

private:
    struct Pipe {
        int readEnd = -1;
        int writeEnd = -1;
        std::unique_ptr<QSocketNotifier> notifier;
    };
    /// Takes what is there.
    void read(Stream stream);
    void passOn(const QByteArray &bytes);
    void close(Pipe &pipe);
    void deleteIfFinished();

    std::array<Pipe, 2> m_pipes;
    bool m_isForgotten = false; ///< nobody else deletes it
    qsizetype m_passedOn = 0;
    QByteArray m_lastErrors; ///< the end of what has been written as errors
};

} // namespace Orbita
