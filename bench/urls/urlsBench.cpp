// What it costs to ask whether a program is registered for a scheme, as every right click does, among as many other
// applications as a well-filled desktop has.

#include "platform/Scheduler.h"
#include "platform/desktop/GioUrlHandler.h"
#include "platform/desktop/StartupNotifier.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

using namespace Orbita;

constexpr int applications = 500;

void write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(path));
}

/// Makes \a folder the one from which GIO reads the applications, and "x-bench" the scheme of one of them.
void installApplications(const QString &folder)
{
    QDir(folder).mkpath(QStringLiteral("applications"));
    for (int i = 0; i < applications; ++i) {
        write(QStringLiteral("%1/applications/app%2.desktop").arg(folder).arg(i),
              "[Desktop Entry]\nType=Application\nName=App\nExec=/bin/true %u\nMimeType=text/plain;image/png;\n");
    }
    write(folder + QStringLiteral("/mimeapps.list"),
          "[Default Applications]\nx-scheme-handler/x-bench=app7.desktop;\n");
    for (const char *variable : {"XDG_DATA_HOME", "XDG_CONFIG_HOME"})
        qputenv(variable, QFile::encodeName(folder));
}

void ask(benchmark::State &state, const QString &scheme)
{
    TimerScheduler scheduler;
    const GioUrlHandler handler(QDBusConnection::sessionBus(), scheduler, std::make_unique<NoStartupNotifier>(),
                                {{QStringLiteral("app9"), QStringLiteral("x-own")},
                                 {QStringLiteral("org.example.Nobody"), QStringLiteral("x-nobody")}});
    for (auto _ : state)
        benchmark::DoNotOptimize(handler.isSchemeHandled(scheme));
}

BENCHMARK_CAPTURE(ask, registered, QStringLiteral("x-bench"))->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(ask, unknown, QStringLiteral("x-unknown"))->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(ask, ownWithAnEntry, QStringLiteral("x-own"))->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(ask, ownThatIsNotThere, QStringLiteral("x-nobody"))->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    installApplications(folder.path());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
