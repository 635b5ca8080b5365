// Finding records in the window by its find bar, on the offscreen platform.
// Usage: find_bench [benchmark options] LOG...
//
// Counters: records; hits; first_hit_ms, from the key that begins the search to the current row;
// whole_ms, until all rows are searched; block_ms, the longest time without an event meanwhile;
// typing_block_ms, the same while one search after another is begun and given up; select_ms, for
// "Select All Matches", painted.

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include "app/zelqBrowser.h"
#include "app/zelqStartUp.h"
#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "ui/zelqRecordFinder.h"

#include "LogArguments.h"
#include "LoopWatch.h"

namespace {

using Clock = LoopWatch::Clock;

template <typename Condition>
double millisecondsUntil(const Condition& condition) {
    const Clock::time_point start = Clock::now();
    while (!condition()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 1);
    }
    return LoopWatch::milliseconds(Clock::now() - start);
}

void find(benchmark::State& state, const std::string& log) {
    zelqBrowser browser;
    zelqBWindow& window = browser.mainWindow();
    window.show();
    browser.setFileName(log);
    browser.loadLog();
    millisecondsUntil([&browser] { return !browser.isBusy(); });
    const zelqRecordFinder& finder = window.finder();
    window.finder().open();
    auto& field = *finder.bar().findChild<QLineEdit*>();
    for ([[maybe_unused]] auto iteration : state) {
        window.container().goTo(std::size_t{0});
        {
            const LoopWatch watch;
            field.setText(QStringLiteral("out of paper"));
            QTest::keyClick(&field, Qt::Key_Return);
            state.counters["first_hit_ms"] = millisecondsUntil(
                [&window] { return window.container().currentIndex().row() != 0; });
            state.counters["whole_ms"] =
                millisecondsUntil([&finder] { return !finder.search().isRunning(); });
            QTest::qWait(20);  // for the watch to notice
            state.counters["block_ms"] = LoopWatch::milliseconds(watch.longest());
        }
        state.counters["hits"] = static_cast<double>(finder.search().matches());
        for (auto* const button : finder.bar().findChildren<QAbstractButton*>()) {
            if (button->text() == zelqResourceLibrary::text(zelqId::kFindSelectAll)) {
                const Clock::time_point start = Clock::now();
                button->click();
                window.container().viewport()->repaint();
                state.counters["select_ms"] = LoopWatch::milliseconds(Clock::now() - start);
            }
        }
        const LoopWatch watch;
        for (const QString text : {"p", "pa", "pap", "pape", "paper", "paper ", "paper j"}) {
            field.setText(text);
            QTest::keyClick(&field, Qt::Key_Return);
            QTest::qWait(30);
        }
        state.counters["typing_block_ms"] = LoopWatch::milliseconds(watch.longest());
    }
    state.counters["records"] = static_cast<double>(browser.session().shown().size());
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    zelqStartUp::giveFreeMemoryBack();
    QApplication application(argc, argv);
    const zelqResourceLibrary library;
    return runForLogs(argc, argv, [](const std::string& log) {
        benchmark::RegisterBenchmark(("find:" + log).c_str(), find, log)
            ->Unit(benchmark::kMillisecond)
            ->Iterations(1);
    });
}
