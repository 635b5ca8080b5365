// A log that is larger than the memory, in the window on the offscreen platform: opened, paged,
// filtered, searched, expanded and listed. To be run in a process that may not take as much memory
// as the log is long. Usage: large_bench [benchmark options] LOG...
//
// Counters: records; MiB_kept of the file's bytes; in ms, each until it has ended and is painted:
// open, page (one of 50 from the first row to the last), filter, search (nothing is found), expand
// (all), line_page (one of 50 in the expanded lines, until their bytes are read), list; longest_ms,
// the longest time without an event in all of them; peak_MiB of the process, and
// collapsed_peak_B_per_record, what is above 256 MiB until records are expanded.

#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>

#include <sys/resource.h>

#include "app/zelqBrowser.h"
#include "app/zelqStartUp.h"
#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "ui/zelqRecordFinder.h"

#include "HalfFilter.h"
#include "LogArguments.h"
#include "LoopWatch.h"

namespace {

using Clock = LoopWatch::Clock;

constexpr int kPages = 50;

/// True if a line that is painted waits for its bytes.
bool hasPending(const QAbstractItemView& view, const QString& pending) {
    for (int y = 0; y < view.viewport()->height(); y += 4) {
        const QModelIndex line = view.indexAt({4, y});
        if (line.isValid() && line.data().toString() == pending) {
            return true;
        }
    }
    return false;
}

/// The peak so far of the whole process.
double peakBytes() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) * 1024;
}

void use(benchmark::State& state, const std::string& log) {
    zelqBrowser browser;
    zelqBWindow& window = browser.mainWindow();
    zelqRecordContainer& table = window.container();
    window.show();
    QCoreApplication::processEvents();
    double longest = 0;
    const auto measure = [&](const char* counter, int times, const auto& stage) {
        QTest::qWait(10);
        const LoopWatch watch;
        const Clock::time_point start = Clock::now();
        for (int i = 0; i < times; ++i) {
            stage(i);
            while (browser.isBusy()) {
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            }
            table.viewport()->repaint();
            QCoreApplication::processEvents();
        }
        state.counters[counter] = LoopWatch::milliseconds(Clock::now() - start) / times;
        QTest::qWait(10);  // for the watch to notice
        longest = std::max(longest, LoopWatch::milliseconds(watch.longest()));
    };
    const auto turn = [](QAbstractItemView& view, int page) {
        QScrollBar& bar = *view.verticalScrollBar();
        bar.setValue(static_cast<int>(static_cast<qint64>(bar.maximum()) * page / (kPages - 1)));
        view.viewport()->repaint();
    };
    for ([[maybe_unused]] auto iteration : state) {
        measure("open", 1, [&](int) { browser.load(log); });
        if (browser.session().logs().size() == 0) {
            state.SkipWithError(window.statusLine().outcome().toStdString().c_str());
            return;
        }
        state.counters["records"] = static_cast<double>(browser.session().logs().size());
        state.counters["MiB_kept"] =
            static_cast<double>(browser.session().logs().bytesKept()) / (1 << 20);
        measure("page", kPages, [&](int page) { turn(table, page); });
        std::unique_ptr<zelqFilterStage> filter =
            halfFilter(zelqFilterKind::Pid, browser.session().logs());
        measure("filter", 1, [&](int) { browser.applyFilter(std::move(filter)); });
        measure("remove_filters", 1, [&](int) { window.command(zelqId::kRemoveAllFilters); });

        zelqRecordFinder& finder = window.finder();
        finder.open();
        auto& field = *finder.bar().findChild<QLineEdit*>();
        measure("search", 1, [&](int) {
            field.setText(QStringLiteral("paper jam"));  // in no sample log
            QTest::keyClick(&field, Qt::Key_Return);
            do {
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 1);
            } while (finder.search().isRunning());
        });

        state.counters["collapsed_peak_B_per_record"] =
            (peakBytes() - (256 << 20)) / state.counters["records"];
        measure("expand", 1, [&](int) { window.command(zelqId::kExpandAll); });
        auto& lines = *browser.expansionWindow().findChild<QAbstractItemView*>();
        const QString pending = zelqResourceLibrary::text(zelqId::kDataPending);
        measure("line_page", kPages, [&](int page) {
            turn(lines, page);
            while (hasPending(lines, pending)) {
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 1);
            }
        });
        measure("list", 1, [&](int) { browser.writeLog("/dev/null"); });
    }
    state.counters["longest_ms"] = longest;
    state.counters["peak_MiB"] = peakBytes() / (1 << 20);
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    zelqStartUp::giveFreeMemoryBack();
    QApplication application(argc, argv);
    const zelqResourceLibrary library;
    return runForLogs(argc, argv, [](const std::string& log) {
        benchmark::RegisterBenchmark(("use:" + log).c_str(), use, log)
            ->Unit(benchmark::kMillisecond)
            ->Iterations(1);
    });
}
