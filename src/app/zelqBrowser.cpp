#include "app/zelqBrowser.h"

#include <QLocale>
#include <QShortcut>
#include <algorithm>
#include <utility>

#include "app/zelqFindingReport.h"
#include "output/zelqListing.h"
#include "output/zelqRecordFormatter.h"
#include "resources/zelqResourceLibrary.h"
#include "widgets/zelqPlainText.h"

namespace {

QString notRead(const std::string& fileName, const zelqStatus& status) {
    return zelqResourceLibrary::text(zelqId::kNotRead)
        .arg(zelqPlainText::ofFileName(fileName),
             zelqPlainText::visible(QString::fromStdString(status.text)));
}

QString outcomeOf(const std::string& fileName, const zelqPreparedLog& prepared) {
    if (!prepared.status.ok()) {
        return notRead(fileName, prepared.status);
    }
    return prepared.firstEntryIsDamaged ? zelqResourceLibrary::text(zelqId::kFirstEntryDamaged)
                                              .arg(zelqPlainText::ofFileName(fileName))
                                        : QString();
}

QString written(const std::string& fileName, std::size_t records,
                const zelqListing::Outcome& outcome) {
    const auto number = [](std::uint64_t value) {
        return QLocale().toString(static_cast<qulonglong>(value));
    };
    const QString name = zelqPlainText::ofFileName(fileName);
    return outcome.withoutData == 0
               ? zelqResourceLibrary::text(zelqId::kWritten).arg(number(records), name)
               : zelqResourceLibrary::text(zelqId::kWrittenWithout)
                     .arg(number(records), name, number(outcome.withoutData));
}

QString notWritten(const std::string& fileName, const zelqStatus& status) {
    zelqFindingReport::write(fileName, status.text);
    return zelqResourceLibrary::text(zelqId::kNotWritten)
        .arg(zelqPlainText::ofFileName(fileName),
             zelqPlainText::visible(QString::fromStdString(status.text)));
}

}  // namespace

class zelqBrowser::Listing {
public:
    explicit Listing(zelqSession& session) : session_(&session) { session.beginListing(); }
    Listing(const Listing&) = delete;
    Listing& operator=(const Listing&) = delete;
    ~Listing() { end(); }
    void end() noexcept {
        if (zelqSession* const session = std::exchange(session_, nullptr)) {
            session->endListing();
        }
    }

private:
    zelqSession* session_;
};

zelqBrowser::zelqBrowser()
    : session_(&zelqRecordFormatter::lineCount), mainWindow_(std::make_unique<zelqBWindow>(*this)) {
    session_.setRowsView(&mainWindow_->container());
    setUpNews();
    QObject::connect(
        &worker_, &zelqLogWorker::progressed, mainWindow_.get(),
        [this](int done, int total) { mainWindow_->statusLine().showProgress(done, total); });
    auto* const otherWindow = new QShortcut(Qt::Key_F6, mainWindow_.get());
    QObject::connect(otherWindow, &QShortcut::activated, mainWindow_.get(),
                     [this] { goToExpansionWindow(); });
}

zelqBrowser::~zelqBrowser() {
    session_.logs().dataSources().cache()->setNews({});
    worker_.stop();
    session_.setRowsView(nullptr);
}

int zelqBrowser::loadLog() {
    return startLoad([] { return true; });
}

/// `isWanted()`: asked when its turn comes.
int zelqBrowser::startLoad(const std::function<bool()>& isWanted) {
    return start({.start =
                      [this, name = fileName_, isWanted] {
                          if (!isWanted()) {
                              finish([] { return QString(); });
                              return;
                          }
                          // All logs will have gone by then: the new one takes the first slot.
                          startRead(name, 0, 0, Puts::Anew);
                      },
                  .pointerWaits = false});  // its progress tells that it runs
}

int zelqBrowser::mergeLog() {
    return start({.start = [this, name = fileName_] { startMerge(name); }});
}

int zelqBrowser::unloadLog(int slot) {
    return start(
        {.start = [this, name = session_.logs().logName(slot), slot] { unload(name, slot); }});
}

void zelqBrowser::load(const std::string& name) {
    setFileName(name);
    startLoad([this, name] { return session_.logs().isNotLoaded(name); });
}

void zelqBrowser::merge(const std::string& name) {
    setFileName(name);
    mergeLog();
}

void zelqBrowser::take(std::vector<std::string> names, bool anew, QStringList refused) {
    bool loads = anew || (!isBusy() && session_.logs().logCount() == 0);
    for (const std::string& name : names) {
        setFileName(name);
        // A name that is loaded by the time its turn comes is passed over.
        std::exchange(loads, false) ? loadLog() : mergeLog();
    }
    if (names.size() < 2 && refused.isEmpty()) {
        return;  // it says itself what came of it
    }
    start({.start = [this, names = std::move(names), refused = std::move(refused)] {
        finish([this, &names, &refused] {
            QStringList notTaken = refused;
            for (const std::string& name : names) {
                if (const QString reason = reasonNotTaken(name); !reason.isEmpty()) {
                    notTaken += zelqResourceLibrary::text(zelqId::kNotTakenFile)
                                    .arg(zelqPlainText::ofLastName(name), reason);
                }
            }
            return notTaken.isEmpty() ? mainWindow_->statusLine().outcome()
                                      : zelqResourceLibrary::text(zelqId::kNotTaken)
                                            .arg(notTaken.join(QStringLiteral(", ")));
        });
    }});
}

/// Why a file that was to be loaded gave no log; empty if it did.
QString zelqBrowser::reasonNotTaken(const std::string& name) const {
    for (const auto& [slot, log] : session_.logs().logs()) {
        if (session_.logs().logName(slot) == name) {
            return zelqPlainText::visible(QString::fromStdString(log->file().status().text));
        }
    }
    const bool isFull = session_.logs().slotFor(name) == zelqLogCollection::kNoSlot;
    return zelqResourceLibrary::text(isFull ? zelqId::kNoLogSlot : zelqId::kNotEnoughMemory);
}

void zelqBrowser::writeLog(const std::string& fileName) {
    if (!fileName.empty() && !session_.shown().empty()) {
        // It counts as made from now on, but what was asked for before comes before it.
        const auto listing = isChanging() ? nullptr : std::make_shared<Listing>(session_);
        start({.start = [this, fileName, listing] {
            startWrite(fileName,
                       listing != nullptr ? listing : std::make_shared<Listing>(session_));
        }});
    }
}

void zelqBrowser::mainWindowCloses() {
    waiting_.clear();
    worker_.stop();
    if (const auto draft = std::exchange(draft_, nullptr)) {
        hold(false);
        if (draft->isReady()) {  // then records know of it
            session_.commit(*draft);
        }
    }
    running_ = changing_ = false;
    waitPointer_.reset();
    session_.collapseAll();
    session_.setLinesView(nullptr);
    expansionWindow_.reset();
}

int zelqBrowser::start(Job job) {
    const zelqWaitPointer pointer(*mainWindow_);
    if (acting_ < 0) {
        waiting_.push_back(std::move(job));
    } else {  // a part of the operation that runs, so before those that wait
        waiting_.insert(waiting_.begin() + acting_++, std::move(job));
    }
    startNext();
    return 1;
}

void zelqBrowser::startNext() {
    if (running_ || waiting_.empty()) {
        return;
    }
    running_ = true;
    const Job job = std::move(waiting_.front());
    waiting_.pop_front();
    changing_ = job.changes;
    try {
        if (job.pointerWaits) {
            waitPointer_.emplace(*mainWindow_);
        }
        mainWindow_->statusLine().startProgress();
        job.start();
    } catch (const std::bad_alloc&) {
        finish([] { return zelqResourceLibrary::text(zelqId::kNotEnoughMemory); });
    }
}

/// `outcome()`: what the status line says of the operation. It is asked when the next operation can
/// begin, for there may be no memory for a text.
void zelqBrowser::finish(const Outcome& outcome) {
    running_ = changing_ = false;
    waitPointer_.reset();
    mainWindow_->statusLine().hideProgress();
    mainWindow_->attempt([this, &outcome] {
        mainWindow_->statusLine().showOutcome(outcome());
        mainWindow_->refresh();
    });
    startNext();
}

/// Reads a log for a slot. Unless filters will decide what is shown, and in which order, its
/// records are numbered from `firstNumber` on and sorted, too.
void zelqBrowser::startRead(const std::string& name, int slot, std::size_t firstNumber, Puts puts) {
    const std::optional<std::int32_t> number =
        session_.filters().empty() ? std::optional(static_cast<std::int32_t>(firstNumber))
                                   : std::nullopt;
    const auto work = [this, name, slot, number, kept = session_.logs().bytesKept(),
                       mostKept = mostKept_,
                       puts](const zelqLogWorker::Control& control) -> zelqLogWorker::Delivery {
        zelqFindingReport report(name);
        const auto prepared = std::make_shared<zelqPreparedLog>(zelqPreparedLog::read(
            {.fileName = name,
             .logSlot = static_cast<std::uint16_t>(slot),
             .findings = [&report](const zelqFinding& finding) { report.add(finding); },
             .progress = control.progress,
             .stop = control.stop,
             .bytesKept = kept,
             .mostKept = mostKept},
            number));
        report.finish(prepared->status);
        return [this, name, puts, prepared] {
            try {
                put(name, puts, prepared,
                    [outcome = outcomeOf(name, *prepared)] { return outcome; });
            } catch (const std::bad_alloc&) {
                finish([&name] { return notRead(name, zelqStatus::of(std::current_exception())); });
            }
        };
    };
    worker_.start(work, [this, name](const zelqStatus& status) {
        finish([&] { return notRead(name, status); });
    });
}

/// Puts a log that was read in its place.
void zelqBrowser::put(const std::string& name, Puts puts,
                      const std::shared_ptr<zelqPreparedLog>& prepared, const Outcome& outcome) {
    if (session_.logs().size() + prepared->log->size() > mostAtOnce_ &&
        (puts == Puts::Anew || session_.logs().slotFor(name) != zelqLogCollection::kNoSlot)) {
        const auto steps = [name, puts, prepared](zelqSessionDraft& draft) {
            puts == Puts::Anew ? draft.load(name, std::move(*prepared))
                               : draft.add(name, std::move(*prepared));
        };
        startChange(steps, nullptr, outcome, [this, name](const zelqStatus& status) {
            finish([&] { return notRead(name, status); });
        });
        return;
    }
    if (puts == Puts::Anew) {
        worker_.free(session_.load(name, std::move(*prepared)));
    } else {
        session_.add(name, std::move(*prepared));
    }
    finish(outcome);
}

void zelqBrowser::startMerge(const std::string& name) {
    const int slot = session_.logs().slotFor(name);
    if (slot == zelqLogCollection::kNoSlot) {
        // Otherwise a request before this one has brought the log.
        const bool isFull = session_.logs().isNotLoaded(name);
        finish([&name, isFull] {
            return isFull ? zelqResourceLibrary::text(zelqId::kNotRead)
                                .arg(zelqPlainText::ofFileName(name),
                                     zelqResourceLibrary::text(zelqId::kNoLogSlot))
                          : QString();
        });
        return;
    }
    startRead(name, slot, session_.logs().size(), Puts::More);
}

void zelqBrowser::unload(const std::string& name, int slot) {
    // While the request waited, its slot may have gone to another log.
    const auto outcome = [] { return QString(); };
    if (session_.logs().logName(slot) == name) {
        if (session_.logs().size() > mostAtOnce_) {
            startChange([slot](zelqSessionDraft& draft) { draft.unload(slot); }, nullptr, outcome,
                        nullptr);
            return;
        }
        worker_.free(session_.unload(slot));
    }
    finish(outcome);
}

void zelqBrowser::startWrite(const std::string& fileName, const std::shared_ptr<Listing>& listing) {
    if (session_.shown().empty()) {  // as what came before may have left it
        listing->end();
        finish([] { return QString(); });
        return;
    }
    const auto ended = [this, fileName, listing](const zelqListing::Outcome& outcome) {
        listing->end();  // before the next operation begins
        finish([&] {
            return outcome.status.ok() ? written(fileName, session_.logs().size(), outcome)
                                       : notWritten(fileName, outcome.status);
        });
    };
    const auto work = [this, fileName,
                       ended](const zelqLogWorker::Control& control) -> zelqLogWorker::Delivery {
        std::vector<zelqFileIdentity> inputs;
        for (const auto& [slot, log] : session_.logs().logs()) {
            if (log->file().identity().has_value()) {
                inputs.push_back(*log->file().identity());
            }
        }
        zelqOutputFile output(fileName, {.inputs = inputs, .stop = control.stop});
        const auto progress = [&control](std::uint64_t done, std::uint64_t total) {
            control.progress(done, total);
            return !control.stop.stop_requested();
        };
        zelqListing::Outcome outcome =
            zelqListing::write(session_.logs(), mainWindow_->locale(), output, progress);
        if (outcome.status.ok()) {
            outcome.status = output.complete();
        }
        return [ended, outcome] { ended(outcome); };
    };
    worker_.start(work, [ended](const zelqStatus& status) { ended({.status = status}); });
}
