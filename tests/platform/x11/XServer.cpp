#include "XServer.h"

#include <QProcessEnvironment>

#include <sys/prctl.h>

#include <csignal>

namespace Orbita {

namespace {

/// Lets \a process end with the test program, however that ends.
void tieToUs(QProcess &process)
{
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

} // namespace

XServer::XServer()
{
    tieToUs(m_server);
    m_server.setStandardErrorFile(QProcess::nullDevice());
    m_server.start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                    QStringLiteral("1280x800x24"), QStringLiteral("-noreset"), QStringLiteral("-nolisten"),
                    QStringLiteral("tcp")});
    QByteArray number;
    while (!number.endsWith('\n')) {
        if (!m_server.waitForReadyRead(30'000))
            qFatal("Xvfb does not start");
        number += m_server.readAllStandardOutput();
    }
    m_display = ":" + number.trimmed();
}

XServer::~XServer()
{
    kill(m_windowManager);
    kill(m_server);
}

void XServer::startWindowManager()
{
    start(m_windowManager, {QStringLiteral("openbox"), QStringLiteral("--sm-disable")});
}

void XServer::start(QProcess &process, const QStringList &command) const
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(m_display));
    process.setProcessEnvironment(environment);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    tieToUs(process);
    process.start(command.first(), command.mid(1));
    if (!process.waitForStarted())
        qFatal("%s does not start", qUtf8Printable(command.first()));
}

void XServer::kill(QProcess &process)
{
    process.kill();
    process.waitForFinished();
}

} // namespace Orbita
