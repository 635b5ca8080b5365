// Start-up, from the start of the process to the painted window, on the X display or else the
// offscreen platform; beside it, as a yardstick, an empty Qt main window. Usage: startup_bench
// [benchmark options]

#include <QApplication>
#include <QMainWindow>
#include <QTimer>
#include <array>
#include <cstdlib>
#include <string>

#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "app/zelqStartUp.h"

namespace {

const std::string kEmpty = "empty-window";
const std::string kProgram = "program";

/// Ends the process when a main window has been painted.
class EndAfterPaint : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && qobject_cast<QMainWindow*>(watched) != nullptr) {
            QTimer::singleShot(0, [] { std::_Exit(0); });
        }
        return false;
    }
};

void watchPainting() {
    qApp->installEventFilter(new EndAfterPaint(qApp));
}
Q_COREAPP_STARTUP_FUNCTION(watchPainting)

int showEmptyWindow(int argc, char** argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.show();
    return QApplication::exec();
}

/// Starts this program once more, as one of the two, and waits until it has painted its window.
void start(benchmark::State& state, const std::string& what) {
    std::string self = "/proc/self/exe";
    std::string argument = what;
    std::array<char*, 3> arguments{self.data(), argument.data(), nullptr};
    for ([[maybe_unused]] auto iteration : state) {
        pid_t child = 0;
        int status = 1;
        if (::posix_spawn(&child, self.c_str(), nullptr, nullptr, arguments.data(), environ) != 0 ||
            ::waitpid(child, &status, 0) != child || status != 0) {
            state.SkipWithError("no window was painted");
            return;
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("DISPLAY")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    if (argc == 2 && argv[1] == kEmpty) {
        return showEmptyWindow(argc, argv);
    }
    if (argc == 2 && argv[1] == kProgram) {
        return zelqStartUp::run(1, argv);
    }
    benchmark::Initialize(&argc, argv);
    for (const std::string& what : {kEmpty, kProgram}) {
        benchmark::RegisterBenchmark(("start-up:" + what).c_str(), start, what)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    }
    return benchmark::RunSpecifiedBenchmarks() > 0 ? 0 : 1;
}
