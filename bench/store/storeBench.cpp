// Loading and saving the item file with 10, 1,000 and 10,000 entries: applications and core entries in turn.

#include "model/AppMenuItem.h"
#include "model/CoreMenuItem.h"
#include "model/MenuItemArray.h"
#include "support/MemoryDesktop.h"

#include <QGuiApplication>

#include <benchmark/benchmark.h>

namespace {

using namespace Orbita;

struct Store {
    explicit Store(std::int64_t entries) :
        items(desktop.container.directories().container, desktop.defaults, desktop.settings, desktop.services)
    {
        while (!items.isEmpty())
            items.removeObjectAt(0);
        for (std::int64_t i = 0; i < entries; i += 2) {
            const QString path = desktop.plantApplication(QStringLiteral("applications/app%1.desktop").arg(i));
            items.addObject(AppMenuItem::fromPath(path, desktop.services));
            items.addObject(std::make_shared<CoreMenuItem>(QStringLiteral("Core %1").arg(i), desktop.services));
        }
        benchmark::DoNotOptimize(items.persist());
    }

    MemoryDesktop desktop;
    MenuItemArray items;
};

void load(benchmark::State &state)
{
    Store store(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(store.items.refresh());
}

void save(benchmark::State &state)
{
    Store store(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(store.items.persist());
}

BENCHMARK(load)->Arg(10)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(save)->Arg(10)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
