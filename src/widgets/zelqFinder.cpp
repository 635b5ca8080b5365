#include "widgets/zelqFinder.h"

#include <QAction>
#include <QShortcut>
#include <new>
#include <utility>

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"

namespace {

/// Changes that come one after another are waited for, so that the search does not begin for each.
constexpr int kSearchAgainDelay = 150;  // ms
constexpr int kBetweenLooks = 30;       // ms

}  // namespace

zelqFinder::zelqFinder(QWidget& window, QWidget& seen, zelqFindBar::Matches matches)
    : QObject(&window),
      seen_(seen),
      bar_(new zelqFindBar(matches)),
      find_(new QAction(zelqResourceLibrary::text(zelqId::kFindItem), this)) {
    connect(bar_, &zelqFindBar::queryChanged, this, [this] { restart(Way::Here); });
    connect(bar_, &zelqFindBar::stepWanted, this, &zelqFinder::step);
    connect(bar_, &zelqFindBar::selectAllWanted, this,
            [this] { attempt([this] { selectMatches(); }); });
    connect(bar_, &zelqFindBar::stopWanted, this, [this] {
        search_.stop();
        wanted_.reset();
        bar_->showNotice(zelqResourceLibrary::text(zelqId::kFindStopped));
        update();
    });
    connect(bar_, &zelqFindBar::closed, this, [this] {
        close();
        seen_.setFocus();
    });
    again_.setSingleShot(true);
    again_.setInterval(kSearchAgainDelay);
    // A step that the search had not come to yet is still to be taken.
    connect(&again_, &QTimer::timeout, this, [this] { restart(wanted_); });
    look_.setInterval(kBetweenLooks);
    connect(&look_, &QTimer::timeout, this, [this] {
        if (!search_.isRunning()) {
            look_.stop();
        }
        update();
        emit matchesChanged();
    });
    setUpKeys(window);
}

zelqFinder::~zelqFinder() {
    delete bar_;
}

void zelqFinder::setUpKeys(QWidget& window) {
    const auto add = [this, &window](const QKeySequence& key, const auto& act) {
        connect(new QShortcut(key, &window), &QShortcut::activated, this, act);
    };
    find_->setShortcut(Qt::CTRL | Qt::Key_F);
    window.addAction(find_);
    connect(find_, &QAction::triggered, this, &zelqFinder::open);
    add(Qt::Key_F3, [this] { step(true); });
    add(Qt::SHIFT | Qt::Key_F3, [this] { step(false); });
}

void zelqFinder::open() {
    emit opened();
    bar_->open();
    if (isStale_ && bar_->hasText()) {
        restart(std::nullopt);
    }
}

void zelqFinder::close() {
    again_.stop();
    look_.stop();
    search_.clear();
    isStale_ = true;
    wanted_.reset();
    bar_->hide();
    bar_->hideProgress();
    bar_->showNothing();
    forgetMatches();
    emit matchesChanged();
}

void zelqFinder::hold(bool holds) {
    isHeld_ = holds;
    if (!holds) {
        update();
    }
}

void zelqFinder::step(bool forward) {
    if (!bar_->hasText()) {
        open();
        return;
    }
    if (bar_->isHidden()) {
        emit opened();
        bar_->show();
    }
    const Way way = forward ? Way::Forward : Way::Backward;
    bar_->showNotice({});
    attempt([this, way] {
        if (isStale_) {
            restart(way);
        } else if (isHeld_ || !goOnWithin(way)) {
            wanted_ = way;
            tryStep();
        }
        showCounter();
    });
}

void zelqFinder::stopForChange() {
    look_.stop();
    search_.stop();
    isStale_ = true;
}

void zelqFinder::searchAgain() {
    if (!bar_->isHidden() && bar_->hasText()) {
        again_.start();
    }
}

/// `way`: to the match to be gone to, if the search is to do that.
void zelqFinder::restart(std::optional<Way> way) {
    again_.stop();
    attempt([this, way] { begin(way); });
    emit matchesChanged();
}

void zelqFinder::begin(std::optional<Way> way) {
    look_.stop();
    search_.clear();
    pattern_.reset();
    isStale_ = true;
    wanted_.reset();
    bar_->showNotice({});
    if (!bar_->hasText()) {
        bar_->hideProgress();
        bar_->showNothing();
        forgetMatches();
        return;
    }
    auto pattern = std::make_shared<const zelqSearchPattern>(bar_->query());
    if (!pattern->status().ok()) {
        bar_->hideProgress();
        bar_->showProblem(QString::fromStdString(pattern->status().text));
        return;
    }
    pattern_ = std::move(pattern);
    isStale_ = false;
    const std::size_t records = count();
    if (records == 0) {
        update();
        return;
    }
    wanted_ = way;
    search_.start({.count = records,
                   .from = currentPlace().value_or(0),
                   .makeMatcher = matcherMaker(pattern_)});
    look_.start();
    update();
}

/// Shows how far the search is, and goes where it was to go, once it is known where that is.
void zelqFinder::update() {
    if (isStale_ || !pattern_) {
        return;
    }
    attempt([this] { tryStep(); });
    showCounter();
    if (search_.isRunning()) {
        bar_->showProgress(search_.searched(), search_.count());
        return;
    }
    bar_->hideProgress();
    if (!search_.status().ok()) {
        bar_->showProblem(QString::fromStdString(search_.status().text));
    }
}

void zelqFinder::tryStep() {
    if (!wanted_ || isHeld_ || search_.count() == 0) {
        return;
    }
    const Way way = *wanted_;
    const std::optional<std::size_t> current = currentPlace();
    const std::size_t from = current.value_or(0);
    const zelqRecordSearch::Step step = way == Way::Backward
                                            ? search_.previous(from)
                                            : search_.next(from, way == Way::Here || !current);
    if (step.undecided) {
        return;
    }
    wanted_.reset();
    if (!step.place) {
        return;  // the counter says so
    }
    goTo(*step.place, way);
    if (step.wrapped) {
        bar_->showNotice(zelqResourceLibrary::text(way == Way::Backward ? zelqId::kFindFromBottom
                                                                        : zelqId::kFindFromTop));
    }
}

void zelqFinder::showCounter() {
    if (isStale_ || !pattern_ || bar_->isHidden()) {
        return;
    }
    const std::optional<std::size_t> current = currentPlace();
    const bool isMatch = current && *current < search_.count() && search_.isMatch(*current);
    bar_->showFound(isMatch ? search_.matchesBefore(*current) + 1 : 0, search_.matches(),
                    search_.isRunning()    ? zelqFindBar::Search::Running
                    : search_.isComplete() ? zelqFindBar::Search::Complete
                                           : zelqFindBar::Search::Stopped);
}

void zelqFinder::attempt(const std::function<void()>& work) {
    try {
        work();
    } catch (const std::bad_alloc&) {
        wanted_.reset();
        bar_->hideProgress();
        bar_->showProblem(zelqResourceLibrary::text(zelqId::kNotEnoughMemory));
    }
}
