// Opening a log in the window, from the request to the painted table, then what commands
// do to its rows, on the offscreen platform.
// Usage: gui_bench [benchmark options] [--on-demand] LOG...
//
// Counters: records; longest_block_ms, the longest time in which no event was answered; empty_MiB,
// the process's memory with the empty window; peak_B_per_record, its peak less that and less the
// file's size. Counters in ms are of stages, each until the table is painted.

#include <QAbstractItemView>
#include <QApplication>
#include <QDialog>
#include <QFileInfo>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <fstream>

#include <sys/resource.h>
#include <unistd.h>

#include "app/zelqBrowser.h"
#include "app/zelqStartUp.h"
#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "ui/zelqOverview.h"
#include "widgets/zelqRowSelection.h"

#include "HalfFilter.h"
#include "LogArguments.h"
#include "LoopWatch.h"

namespace {

using Clock = LoopWatch::Clock;

/// The peak so far of the whole process: benchmarks of memory need a process each.
double peakBytes() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) * 1024;
}

void waitUntilIdle(const zelqBrowser& browser) {
    while (browser.isBusy()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void open(benchmark::State& state, const std::string& log) {
    zelqBrowser browser;
    browser.mainWindow().show();
    QCoreApplication::processEvents();
    browser.mainWindow().container().viewport()->repaint();
    static const double emptyPeak = peakBytes();  // before the first of the repetitions
    for ([[maybe_unused]] auto iteration : state) {
        browser.unloadLog(zelqLogCollection::kAllLogs);
        waitUntilIdle(browser);
        LoopWatch watch;
        const Clock::time_point start = Clock::now();
        browser.setFileName(log);
        browser.loadLog();
        waitUntilIdle(browser);
        browser.mainWindow().container().viewport()->repaint();
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
        QCoreApplication::processEvents();
        state.counters["longest_block_ms"] = LoopWatch::milliseconds(watch.longest());
    }
    const auto records = static_cast<double>(browser.session().logs().size());
    const auto file = static_cast<double>(QFileInfo(QString::fromStdString(log)).size());
    state.counters["records"] = records;
    state.counters["empty_MiB"] = emptyPeak / (1 << 20);
    state.counters["peak_B_per_record"] = (peakBytes() - emptyPeak - file) / records;
}

void showLoaded(zelqBrowser& browser, const std::string& log) {
    browser.mainWindow().show();
    browser.setMostKept(mostKept());
    browser.setFileName(log);
    browser.loadLog();
    waitUntilIdle(browser);
}

/// What the process has in memory now.
double residentBytes() {
    std::ifstream file("/proc/self/statm");
    double pages = 0;
    file >> pages >> pages;
    return pages * static_cast<double>(::sysconf(_SC_PAGESIZE));
}

/// Merging all logs one after another, then unloading the last one, then all. Counters: the longest
/// times without an event, and the memory afterwards less that of the empty window.
void mergeAll(benchmark::State& state, const std::vector<std::string>& logs) {
    zelqBrowser browser;
    browser.mainWindow().show();
    QCoreApplication::processEvents();
    const double empty = residentBytes();
    const auto measure = [&](const char* counter, const auto& operation) {
        LoopWatch watch;
        operation();
        waitUntilIdle(browser);
        QTest::qWait(10);  // for the window to paint and the watch to notice
        state.counters[counter] =
            std::max<double>(state.counters[counter], LoopWatch::milliseconds(watch.longest()));
    };
    for ([[maybe_unused]] auto iteration : state) {
        for (const std::string& log : logs) {
            browser.setFileName(log);
            measure("merge_block_ms", [&browser] { browser.mergeLog(); });
            browser.mainWindow().command(zelqId::kReverseSelections);
        }
        state.counters["records"] = static_cast<double>(browser.session().logs().size());
        measure("unload_block_ms", [&] { browser.unloadLog(static_cast<int>(logs.size()) - 1); });
        browser.unloadLog(zelqLogCollection::kAllLogs);
        waitUntilIdle(browser);
        QTest::qWait(1000);  // the memory is freed in the background
        state.counters["left_MiB"] = (residentBytes() - empty) / (1 << 20);
    }
}

void selectAlternate(zelqRecordContainer& table) {
    zelqRowSelection::Rows alternate(table.rowsSelected().size());
    for (std::size_t row = 0; row < alternate.size(); row += 2) {
        alternate.set(row);
    }
    table.selectRows(std::move(alternate));
}

/// Expanding everything and scrolling in it.
void expandAll(benchmark::State& state, const std::string& log) {
    zelqBrowser browser;
    showLoaded(browser, log);
    const double loadedPeak = peakBytes();
    for ([[maybe_unused]] auto iteration : state) {
        Clock::time_point start = Clock::now();
        browser.mainWindow().command(zelqId::kExpandAll);
        waitUntilIdle(browser);
        zelqBExpansionWindow& window = browser.expansionWindow();
        QCoreApplication::processEvents();  // before it is exposed nothing is painted
        window.findChild<QAbstractItemView*>()->viewport()->repaint();
        browser.mainWindow().container().viewport()->repaint();
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
        state.counters["lines"] = static_cast<double>(window.lines().records().lineCount());
        state.counters["B_per_record"] =
            (peakBytes() - loadedPeak) / static_cast<double>(browser.session().logs().size());

        auto* const view = window.findChild<QAbstractItemView*>();
        constexpr int kPages = 50;
        start = Clock::now();
        for (int page = 0; page < kPages; ++page) {
            view->verticalScrollBar()->setValue(view->verticalScrollBar()->maximum() / kPages *
                                                page);
            view->viewport()->repaint();
        }
        state.counters["page_ms"] = LoopWatch::milliseconds(Clock::now() - start) / kPages;

        start = Clock::now();
        browser.mainWindow().command(zelqId::kUnexpand);
        browser.mainWindow().command(zelqId::kExpand);
        view->viewport()->repaint();
        state.counters["one_more_ms"] = LoopWatch::milliseconds(Clock::now() - start);

        start = Clock::now();
        browser.mainWindow().command(zelqId::kUnexpandAll);
        waitUntilIdle(browser);
        state.counters["unexpand_all_ms"] = LoopWatch::milliseconds(Clock::now() - start);
    }
}

/// What commands and keys do to the rows, each until the table is painted.
void rows(benchmark::State& state, const std::string& log) {
    zelqBrowser browser;
    showLoaded(browser, log);
    zelqBWindow& window = browser.mainWindow();
    zelqRecordContainer& table = window.container();
    auto& selection = *qobject_cast<zelqRowSelection*>(table.selectionModel());
    const auto measure = [&state, &table, &browser](const char* counter, int times,
                                                    const auto& stage) {
        const Clock::time_point start = Clock::now();
        for (int i = 0; i < times; ++i) {
            stage(i);
            waitUntilIdle(browser);
            table.viewport()->repaint();
        }
        state.counters[counter] = LoopWatch::milliseconds(Clock::now() - start) / times;
    };
    const auto press = [&table](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QCoreApplication::sendEvent(&table, &event);
    };
    constexpr int kPages = 50;
    for ([[maybe_unused]] auto iteration : state) {
        state.counters["records"] = static_cast<double>(selection.rows().size());
        measure("show_ms", 1, [&table](int) {
            table.rowsAboutToChange();
            table.rowsChanged({});
        });
        measure("overview_ms", 1, [&window](int) { window.overview().grab(); });  // from samples
        while (!window.overview().isExact()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        measure("overview_counted_ms", kPages, [&window](int) { window.overview().grab(); });
        measure("step_ms", kPages, [&press](int) { press(Qt::Key_Down, Qt::NoModifier); });
        measure("page_ms", kPages, [&table](int page) {
            QScrollBar& bar = *table.verticalScrollBar();
            bar.setValue(bar.maximum() / kPages * page);
        });
        measure("select_all_ms", 1, [&window](int) { window.command(zelqId::kSelectAll); });
        press(Qt::Key_Home, Qt::ControlModifier);
        measure("extend_to_end_ms", 1,
                [&press](int) { press(Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier); });
        measure("extend_up_ms", kPages, [&press](int) { press(Qt::Key_Up, Qt::ShiftModifier); });
        selectAlternate(table);
        measure("reverse_ms", 1, [&window](int) { window.command(zelqId::kReverseSelections); });
        measure("page_of_alternate_ms", kPages, [&table](int page) {
            QScrollBar& bar = *table.verticalScrollBar();
            bar.setValue(bar.maximum() / kPages * page);
        });
        measure("display_only_ms", 1,
                [&window](int) { window.command(zelqId::kDisplayOnlySelected); });
        measure("display_all_ms", 1, [&window](int) { window.command(zelqId::kDisplayAll); });
        window.command(zelqId::kDeselectAll);
        std::unique_ptr<zelqFilterStage> filter =
            halfFilter(zelqFilterKind::Pid, browser.session().logs());
        measure("filter_ms", 1, [&](int) { browser.applyFilter(std::move(filter)); });
        measure("remove_filters_ms", 1,
                [&window](int) { window.command(zelqId::kRemoveAllFilters); });
        selectAlternate(table);
        measure("expand_selected_ms", 1,
                [&window](int) { window.command(zelqId::kExpandSelected); });
    }
}

/// The longest time without an event in each of the commands, on the logs all together. Counters:
/// that time in ms for each, and the longest of all; with "_done" what it took to its end.
void commands(benchmark::State& state, const std::vector<std::string>& logs) {
    zelqBrowser browser;
    zelqBWindow& window = browser.mainWindow();
    window.show();
    QCoreApplication::processEvents();
    double longest = 0;
    const auto measure = [&](const std::string& name, const auto& operation) {
        QTest::qWait(10);
        LoopWatch watch;
        const Clock::time_point start = Clock::now();
        operation();
        waitUntilIdle(browser);
        window.container().viewport()->repaint();
        state.counters[name + "_done"] = LoopWatch::milliseconds(Clock::now() - start);
        QTest::qWait(10);  // for the watch to notice
        state.counters[name] = LoopWatch::milliseconds(watch.longest());
        longest = std::max<double>(longest, state.counters[name]);
    };
    const auto command = [&](const std::string& name, int id) {
        measure(name, [&window, id] { window.command(id); });
    };
    int dialogs = 0;
    QTimer cancel;  // ends each dialog when it is there
    cancel.callOnTimeout([&dialogs] {
        if (auto* const open = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            open->reject();
            ++dialogs;
        }
    });
    cancel.start(20);
    const auto dialog = [&](const std::string& name, int id) {
        measure(name, [&] {
            const int before = dialogs;
            window.command(id);
            while (dialogs == before) {
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            }
        });
    };
    for ([[maybe_unused]] auto iteration : state) {
        for (const std::string& log : logs) {
            measure(&log == &logs.front() ? "load" : "merge", [&] { browser.merge(log); });
        }
        state.counters["records"] = static_cast<double>(browser.session().logs().size());
        command("select_all", zelqId::kSelectAll);
        command("display_selected_all", zelqId::kDisplayOnlySelected);
        command("deselect_all", zelqId::kDeselectAll);
        for (const auto& [name, kind] : {std::pair{"filter", zelqFilterKind::Pid},
                                         std::pair{"filter_function", zelqFilterKind::Function}}) {
            std::unique_ptr<zelqFilterStage> filter = halfFilter(kind, browser.session().logs());
            measure(name, [&] { browser.applyFilter(std::move(filter)); });
        }
        command("remove_filters", zelqId::kRemoveAllFilters);
        dialog("value_list", zelqId::kPidFilter);
        dialog("name_list", zelqId::kFunctionFilter);
        selectAlternate(window.container());
        command("display_selected", zelqId::kDisplayOnlySelected);
        command("display_all", zelqId::kDisplayAll);
        command("reverse", zelqId::kReverseSelections);
        command("expand_selected", zelqId::kExpandSelected);
        command("unexpand_selected", zelqId::kUnexpandSelected);
        command("expand_all", zelqId::kExpandAll);
        command("display_expanded", zelqId::kDisplayOnlyExpanded);
        command("display_non_expanded", zelqId::kDisplayOnlyNonExpanded);
        command("display_all_parked", zelqId::kDisplayAll);
        command("select_all_again", zelqId::kSelectAll);
        command("copy", zelqId::kCopy);
        command("deselect_all_again", zelqId::kDeselectAll);
        command("expand_non_selected", zelqId::kExpandNonSelected);
        command("unexpand_non_selected", zelqId::kUnexpandNonSelected);
        command("display_non_selected", zelqId::kDisplayOnlyNonSelected);
        measure("write", [&] { browser.writeLog("/dev/null"); });
        command("expand_all_again", zelqId::kExpandAll);
        command("unexpand_all", zelqId::kUnexpandAll);
        measure("unload", [&] { browser.unloadLog(static_cast<int>(logs.size()) - 1); });
        measure("unload_all", [&] { browser.unloadLog(zelqLogCollection::kAllLogs); });
    }
    state.counters["longest_ms"] = longest;
}

void registerFor(const std::string& log) {
    benchmark::RegisterBenchmark(("open:" + log).c_str(), open, log)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1)
        ->Repetitions(5)
        ->UseManualTime();
    benchmark::RegisterBenchmark(("expand-all:" + log).c_str(), expandAll, log)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1)
        ->UseManualTime();
    benchmark::RegisterBenchmark(("rows:" + log).c_str(), rows, log)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1);
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    zelqStartUp::giveFreeMemoryBack();
    QApplication application(argc, argv);
    const zelqResourceLibrary library;
    std::vector<std::string> logs;
    benchmark::RegisterBenchmark("merge-all",
                                 [&logs](benchmark::State& state) { mergeAll(state, logs); })
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1);
    benchmark::RegisterBenchmark("commands",
                                 [&logs](benchmark::State& state) { commands(state, logs); })
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1);
    return runForLogs(argc, argv, [&logs](const std::string& log) {
        logs.push_back(log);
        registerFor(log);
    });
}
