#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>

#include "session/zelqRecordSearch.h"
#include "widgets/zelqFindBar.h"

class QAction;

/// Searches what a window shows, as its find bar asks for it, in the background. It knows records
/// by their place in what is shown; who derives from it says what stands there. Whenever that
/// changes, the search is stopped before, and begun again afterwards.
class zelqFinder : public QObject {
    Q_OBJECT

public:
    ~zelqFinder() override;

    /// Shows the bar, with the keyboard in it.
    void open();
    /// Goes to the next match or the previous one; without anything to look for it opens the bar.
    void step(bool forward);
    /// Hides the bar and forgets what was found.
    void close();

    [[nodiscard]] zelqFindBar& bar() const noexcept { return *bar_; }
    /// Opens the bar; for a menu. The window has its key.
    [[nodiscard]] QAction& findAction() const noexcept { return *find_; }
    /// What was found so far; see matchesChanged().
    [[nodiscard]] const zelqRecordSearch& search() const noexcept { return search_; }

    /// While it is held it goes to no match; a step that was asked for is taken afterwards.
    void hold(bool holds);

signals:
    /// The bar is about to be seen. The window takes it then: what is in a window, though hidden,
    /// is read out of it by those who drive it from outside.
    void opened();
    /// There are more matches, or others, or none any more. Comes some times a second.
    void matchesChanged();

protected:
    using Matcher = zelqRecordSearch::Matcher;
    using Pattern = std::shared_ptr<const zelqSearchPattern>;

    /// `window` gets the keys, `seen` the keyboard when the bar is closed; both outlive the finder.
    zelqFinder(QWidget& window, QWidget& seen, zelqFindBar::Matches matches);

    /// What is shown is about to change: to be called before. Its reading on the other thread has
    /// ended then.
    void stopForChange();
    /// It has changed, or the texts of it have: it will be searched again, if it was before.
    void searchAgain();
    /// The current record is another.
    void showCounter();

    /// The number of records that can be gone to.
    [[nodiscard]] virtual std::size_t count() const = 0;
    /// The place of the current record, if there is one.
    [[nodiscard]] virtual std::optional<std::size_t> currentPlace() const = 0;
    /// What makes the matcher, on each thread of the search. What it refers to must stay as it is
    /// until stopForChange().
    [[nodiscard]] virtual std::function<Matcher()> matcherMaker(const Pattern& pattern) = 0;
    enum class Way { Here, Forward, Backward };
    /// Makes the record at a place the current one. `way`: from where it was found.
    virtual void goTo(std::size_t place, Way way) = 0;
    /// Goes on to another match within the current record. False if there is none that way.
    virtual bool goOnWithin(Way /*way*/) { return false; }
    /// Selects the records of all matches.
    virtual void selectMatches() {}
    /// There is nothing to be seen of matches any more.
    virtual void forgetMatches() {}

    [[nodiscard]] const Pattern& pattern() const noexcept { return pattern_; }

private:
    void setUpKeys(QWidget& window);
    void restart(std::optional<Way> way);
    void begin(std::optional<Way> way);
    void update();
    void tryStep();
    void attempt(const std::function<void()>& work);

    QWidget& seen_;
    QPointer<zelqFindBar> bar_;  ///< in no window until it is opened
    QAction* find_;
    Pattern pattern_;            ///< null if there is none that can be searched for
    std::optional<Way> wanted_;  ///< a step that waits for the search to get there
    bool isHeld_ = false;
    bool isStale_ = true;  ///< what was found is of other records or another query
    QTimer again_;
    QTimer look_;              ///< at how far the search is
    zelqRecordSearch search_;  // last: its thread ends before the rest is destroyed
};
