// What the browser does about data that are read on demand: copies them on the worker's thread, and
// shows what comes of reading in the background.

#include <QClipboard>
#include <QGuiApplication>
#include <utility>

#include "app/zelqBrowser.h"
#include "app/zelqFindingReport.h"
#include "resources/zelqResourceLibrary.h"
#include "widgets/zelqPlainText.h"

void zelqBrowser::setUpNews() {
    QObject::connect(
        &worker_, &zelqLogWorker::dataArrived, mainWindow_.get(), [this] { showNews(); },
        Qt::QueuedConnection);
    // Comes from any thread, and as often as once a piece.
    session_.logs().dataSources().cache()->setNews([this] {
        if (!hasNews_.exchange(true)) {
            emit worker_.dataArrived();
        }
    });
}

void zelqBrowser::showNews() {
    hasNews_ = false;
    if (expansionWindow_ != nullptr) {
        expansionWindow_->lines().showNews();
    }
    mainWindow_->attempt([this] {
        for (const auto& [slot, log] : session_.logs().logs()) {
            if (const auto change = log->noteChange()) {
                const std::string& name = session_.logs().logName(slot);
                zelqFindingReport::write(name, change->text());
                mainWindow_->statusLine().showOutcome(zelqResourceLibrary::text(zelqId::kLogChanged)
                                                          .arg(zelqPlainText::ofFileName(name)));
                mainWindow_->refresh();
            }
        }
    });
}

void zelqBrowser::copy(Copy copy) {
    const std::uint64_t logs = session_.logs().dataSources().version();
    start({.start = [this, copy = std::move(copy), logs] {
        if (session_.logs().dataSources().version() == logs) {
            startCopy(copy);
            return;
        }
        finish([] {
            return zelqResourceLibrary::text(zelqId::kNotCopied)
                .arg(zelqResourceLibrary::text(zelqId::kLogsHaveChanged));
        });
    }});
}

void zelqBrowser::startCopy(const Copy& copy) {
    const auto work = [this, copy, data = zelqDataReader(session_.logs().dataSources())](
                          const zelqLogWorker::Control& control) -> zelqLogWorker::Delivery {
        zelqRecordFormatter formatter(mainWindow_->locale(), data);
        const auto goesOn = [&control, &copy](qint64 done) {
            control.progress(static_cast<std::uint64_t>(done),
                             static_cast<std::uint64_t>(copy.total));
            return !control.stop.stop_requested();
        };
        const QString text = copy.text(formatter, goesOn);
        return [this, text, outcome = copy.outcome] {
            QGuiApplication::clipboard()->setText(text);
            finish([&outcome] { return outcome; });
        };
    };
    worker_.start(work, [this](const zelqStatus& status) {
        finish([&status] {
            return zelqResourceLibrary::text(zelqId::kNotCopied)
                .arg(QString::fromStdString(status.text));
        });
    });
}
