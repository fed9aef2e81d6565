// One keystroke in a script of 2,000 lines: colouring it, showing the colours, and all that typing costs.

#include "editors/DocumentColoring.h"
#include "editors/ScriptEditorViewController.h"
#include "editors/ScriptTextView.h"
#include "platform/memory/MemoryDialogs.h"
#include "platform/memory/MemoryScheduler.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTextDocument>

#include <benchmark/benchmark.h>

namespace {

using namespace Orbita;

constexpr int lines = 2000;

QString longScript()
{
    const QString part = QStringLiteral("tell application \"Finder\" to activate\n"
                                        "# How to open a new window\n"
                                        "if counter is greater than 5 then set counter to counter + 1\n"
                                        "\tdisplay dialog \"Hello \" & name with title \"Greeting\"\n");
    return part.repeated(lines / 4);
}

void coloring(benchmark::State &state)
{
    const QString script = longScript();
    for (auto _ : state)
        benchmark::DoNotOptimize(scriptColoring(script));
}

/// What is done for a keystroke that changes no colours.
void coloringAndApplying(benchmark::State &state)
{
    ScriptTextView view;
    view.setScript(longScript());
    applyColoring(*view.document(), scriptColoring(view.script()));
    for (auto _ : state)
        benchmark::DoNotOptimize(applyColoring(*view.document(), scriptColoring(view.script())));
}

/// Types and deletes \a key at the start of the script in an editor that is shown, painting each time.
void typing(benchmark::State &state, Qt::Key key)
{
    MemoryDialogs dialogs;
    MemoryScheduler scheduler;
    ScriptEditorViewController editor(longScript(), QStringLiteral("Apple Script - Long"), {}, dialogs, scheduler);
    editor.resize(700, 450);
    editor.show();
    const auto press = [&editor](Qt::Key pressed, const QString &text) {
        QKeyEvent event(QEvent::KeyPress, pressed, Qt::NoModifier, text);
        QApplication::sendEvent(&editor.textView(), &event);
        QApplication::processEvents();
    };
    QApplication::processEvents();
    for (auto _ : state) {
        press(key, QString(QChar(int(key))));
        press(Qt::Key_Backspace, {});
    }
    state.SetItemsProcessed(state.iterations() * 2);
}

void opening(benchmark::State &state)
{
    MemoryDialogs dialogs;
    MemoryScheduler scheduler;
    const QString script = longScript();
    for (auto _ : state) {
        ScriptEditorViewController editor(script, QStringLiteral("Apple Script - Long"), {}, dialogs, scheduler);
        editor.resize(700, 450);
        editor.show();
        QApplication::processEvents();
    }
}

BENCHMARK(coloring)->Unit(benchmark::kMicrosecond);
BENCHMARK(coloringAndApplying)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(typing, letter, Qt::Key_X)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(typing, quoteThatTurnsAllLines, Qt::Key_QuoteDbl)->Unit(benchmark::kMicrosecond);
BENCHMARK(opening)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
