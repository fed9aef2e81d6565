// Measures how long windows take to appear after their trigger, and to go after their dismissal. With two windows,
// rounds alternate, so that whatever else the machine does hits both alike. For X11, with or without a window manager
// or a compositor. Times are milliseconds; see WindowWatch for what is watched for.

#include "Rounds.h"

#include "desktop/harness/Wait.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>

#include <cstdio>
#include <memory>

namespace {

using namespace Orbita;

const QStringList columns{QStringLiteral("map"), QStringLiteral("paint"), QStringLiteral("screen"),
                          QStringLiteral("gone")};

double median(const QJsonObject &result, const QString &column)
{
    return result[column].toObject()[QStringLiteral("median")].toDouble();
}

void printTable(const QJsonArray &results)
{
    std::printf("%-16s %-8s %9s %9s %9s\n", "window", "until", "min", "median", "max");
    for (const auto &value : results) {
        const QJsonObject result = value.toObject();
        for (const QString &column : columns) {
            const QJsonObject spread = result[column].toObject();
            if (spread.isEmpty())
                continue;
            std::printf("%-16s %-8s %9.2f %9.2f %9.2f\n", qUtf8Printable(result[QStringLiteral("class")].toString()),
                        qUtf8Printable(column), spread[QStringLiteral("min")].toDouble(), median(result, column),
                        spread[QStringLiteral("max")].toDouble());
        }
    }
}

/// The first window's medians against the second's.
QJsonObject comparison(const QJsonArray &results)
{
    QJsonObject comparison;
    const QJsonObject first = results[0].toObject();
    const QJsonObject second = results[1].toObject();
    for (const QString &column : columns) {
        const double reference = median(second, column);
        if (reference <= 0)
            continue;
        const double difference = median(first, column) - reference;
        const double ratio = median(first, column) / reference;
        comparison[column] = QJsonObject{{QStringLiteral("difference"), difference}, {QStringLiteral("ratio"), ratio}};
        std::printf("%-16s %-8s %+9.2f %8.2fx\n", "first to second", qUtf8Printable(column), difference, ratio);
    }
    return comparison;
}

int measure(const QStringList &arguments, const RoundOptions &options)
{
    const QByteArray display = qgetenv("DISPLAY");
    std::vector<std::unique_ptr<Rounds>> targets;
    for (qsizetype i = 0; i < arguments.size(); i += 3) {
        const Target target{arguments[i], arguments[i + 1], arguments[i + 2]};
        targets.push_back(std::make_unique<Rounds>(display, target, options));
    }
    const int all = options.warmUp + options.rounds;
    for (int round = 0; round < all; ++round) {
        for (const auto &target : targets)
            target->run(round >= options.warmUp, round + 1 == all);
    }

    QJsonArray results;
    int failures = 0;
    for (const auto &target : targets) {
        results += target->result();
        failures += target->failures();
    }
    printTable(results);
    QJsonObject summary{{QStringLiteral("windows"), results}};
    if (results.size() == 2)
        summary[QStringLiteral("comparison")] = comparison(results);
    if (failures > 0)
        std::printf("%d rounds failed\n", failures);
    std::puts(QJsonDocument(summary).toJson(QJsonDocument::Compact).constData());
    return failures > 0 ? 1 : 0;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Measures how long windows take to appear. SHOW and DISMISS are key:CHORD (key:Control+F12), "
                       "exec:COMMAND, or end, which ends the window's process. The last line is JSON."));
    parser.addHelpOption();
    parser.addOption({{QStringLiteral("n"), QStringLiteral("rounds")},
                      QStringLiteral("Rounds that count."),
                      QStringLiteral("number"),
                      QStringLiteral("20")});
    parser.addOption({QStringLiteral("warm-up"), QStringLiteral("Rounds before them that do not."),
                      QStringLiteral("number"), QStringLiteral("1")});
    parser.addOption({QStringLiteral("cold"), QStringLiteral("Wait after each round until the program has ended.")});
    parser.addOption({QStringLiteral("leave"), QStringLiteral("Leave the windows of the last round standing.")});
    parser.addPositionalArgument(QStringLiteral("CLASS SHOW DISMISS"),
                                 QStringLiteral("A window by its WM_CLASS; one or two of them."));
    parser.process(application);

    const QStringList arguments = parser.positionalArguments();
    if (arguments.size() != 3 && arguments.size() != 6)
        parser.showHelp(2);
    RoundOptions options;
    options.rounds = parser.value(QStringLiteral("rounds")).toInt();
    options.warmUp = parser.value(QStringLiteral("warm-up")).toInt();
    options.cold = parser.isSet(QStringLiteral("cold"));
    options.leave = parser.isSet(QStringLiteral("leave"));
    try {
        return measure(arguments, options);
    } catch (const DesktopFailure &failure) {
        std::fprintf(stderr, "showlatency: %s\n", failure.what());
        return 2;
    }
}
