// Moves the pointer to and fro, as a mouse does that reports so often.

#include "desktop/harness/Input.h"
#include "desktop/harness/Wait.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <chrono>
#include <cstdio>
#include <thread>

int main(int argc, char **argv)
{
    using namespace Orbita;
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Moves the pointer to and fro, as a mouse does."));
    parser.addHelpOption();
    parser.addOption({QStringLiteral("rate"), QStringLiteral("Movements in a second."), QStringLiteral("number"),
                      QStringLiteral("1000")});
    parser.addOption(
        {QStringLiteral("seconds"), QStringLiteral("For how long."), QStringLiteral("number"), QStringLiteral("10")});
    parser.process(application);
    const int rate = parser.value(QStringLiteral("rate")).toInt();
    const int movements = rate * parser.value(QStringLiteral("seconds")).toInt();
    if (movements <= 0)
        parser.showHelp(2);
    try {
        const XConnection connection(qgetenv("DISPLAY"));
        const Input input(connection);
        input.moveTo({640, 400});
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < movements; ++i) {
            std::this_thread::sleep_until(start + std::chrono::nanoseconds(std::chrono::seconds(1)) * i / rate);
            input.moveBy({i / 100 % 2 == 0 ? 1 : -1, 0});
        }
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        std::printf("%d movements in %.2f s\n", movements, taken.count());
    } catch (const DesktopFailure &failure) {
        std::fprintf(stderr, "move-pointer: %s\n", failure.what());
        return 2;
    }
    return 0;
}
