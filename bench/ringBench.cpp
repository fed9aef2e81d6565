#include "base/Angle.h"
#include "platform/memory/MemoryStage.h"
#include "ring/RenderedPictures.h"
#include "ring/RingView.h"
#include "ring/RingWindow.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

#include <benchmark/benchmark.h>

namespace Orbita {
namespace {

/// A clock that shows the next frame when it is told to.
struct PlantedAppearance {
    MemoryDesktopAppearance appearance;
};

class SteppedClock final : public PlantedAppearance, public AnimationClock {
public:
    SteppedClock() : AnimationClock(appearance) {}
    [[nodiscard]] Time now() const override { return m_now; }
    void step()
    {
        m_now += Time(1.0 / 60);
        tick();
    }

protected:
    void setTicking(bool) override {}

private:
    Time m_now{0.0};
};

class Content final : public RingViewDataSource {
public:
    explicit Content(qint64 count) : m_count(count)
    {
        for (qint64 i = 0; i < count; ++i) {
            QImage pixels(320, 320, QImage::Format_ARGB32_Premultiplied);
            pixels.fill(Qt::transparent);
            QPainter painter(&pixels);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setBrush(QColor::fromHsvF(float(i) / float(count), 0.7F, 0.9F));
            painter.drawRoundedRect(10, 10, 300, 300, 70, 70);
            m_images.push_back(Image::fromPixels(pixels));
        }
    }
    qint64 ringViewNumberOfSections(RingView &) override { return 1; }
    qint64 ringViewNumberOfItemsInSection(RingView &, qint64) override { return m_count; }
    std::unique_ptr<RingItem> ringViewItemFor(RingView &, ItemAddress address) override
    {
        auto item = std::make_unique<RingItem>(m_images[size_t(address.position)], QStringLiteral("An application"));
        item->setAlwaysShowTitle(true);
        return item;
    }
    bool ringViewSectionSupportsDrop(RingView &, qint64) override { return true; }
    bool ringViewShouldDisplayTitleOfItem(RingView &, ItemAddress) override { return false; }

private:
    qint64 m_count;
    std::vector<Image> m_images;
};

void layoutOfItems(benchmark::State &state)
{
    RingLayout layout;
    layout.size = {800, 800};
    layout.relativeSizes.emplace_back(size_t(state.range(0)), 1.0);
    layout.totalNumberOfItems = state.range(0);
    qint64 hovered = 0;
    for (auto _ : state) {
        layout.magnify(hovered++ % layout.totalNumberOfItems, Magnification::On);
        benchmark::DoNotOptimize(layout.frames());
    }
}
BENCHMARK(layoutOfItems)->Arg(8)->Arg(40)->Arg(10000);

/// The pointer comes over the next item: sizes, first frame of the movement and its repaint, down to the pixels.
void hoverStep(benchmark::State &state)
{
    MemoryStage stage;
    MemoryBlurBehind blur;
    SteppedClock clock;
    RenderedPictures pictures;
    Content content(state.range(0));
    RingWindow window(stage, blur);
    window.resize(800, 800);
    auto *view = new RingView({stage, clock, pictures});
    view->setDataSource(&content);
    view->setMagnifyItemsOnMouseOver(true);
    window.addFillingView(view);
    window.show();
    view->reloadData();
    const auto step = [&](qint64 index) {
        const QPointF offset = pointAtAngle(272.0, view->ringLayout().sectorCenter(index % state.range(0)));
        const QPointF point(400 + offset.x(), 400 - offset.y());
        QMouseEvent event(QEvent::MouseMove, point, view->mapToGlobal(point), Qt::NoButton, Qt::NoButton,
                          Qt::NoModifier);
        QApplication::sendEvent(view, &event);
        clock.step();
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    };
    for (qint64 index = 0; index < state.range(0); ++index)
        step(index);
    pictures.waitUntilIdle();
    qint64 rendered = 0;
    QObject::connect(&pictures, &RenderedPictures::rendered, view, [&rendered] { ++rendered; });
    qint64 index = 0;
    for (auto _ : state)
        step(index++);
    state.counters["rendered"] = benchmark::Counter(double(rendered), benchmark::Counter::kAvgIterations);
    state.counters["ratio"] = view->devicePixelRatioF();
}
BENCHMARK(hoverStep)->Arg(8)->Arg(12)->Arg(40)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace Orbita

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
