#pragma once

#include "output/zelqLineSearch.h"
#include "session/zelqSearchPattern.h"
#include "widgets/zelqFinder.h"

class zelqLineModel;
class zelqLineView;

/// Finds text and bytes in the lines of the expanded records, and selects the exact place.
class zelqExpansionFinder : public zelqFinder {
    Q_OBJECT

public:
    /// All must outlive the finder.
    zelqExpansionFinder(QWidget& window, zelqLineModel& lines, zelqLineView& view,
                        const zelqLocaleText& locale);

protected:
    [[nodiscard]] std::size_t count() const override;
    [[nodiscard]] std::optional<std::size_t> currentPlace() const override;
    [[nodiscard]] std::function<Matcher()> matcherMaker(const Pattern& pattern) override;
    void goTo(std::size_t place, Way way) override;
    bool goOnWithin(Way way) override;
    void forgetMatches() override;

private:
    /// The place in the text of a record that was found last.
    struct Found {
        const zelqBCnrObject* record;
        std::vector<zelqLineSearch::Place> places;
        std::size_t at;
    };

    void show();

    zelqLineModel& lines_;
    zelqLineView& view_;
    const zelqLocaleText& locale_;
    zelqSearchPattern::Query query_;  ///< the last one; what was found is of it
    std::optional<Found> found_;
    /// Where to go to once the data of the record there are read.
    std::optional<std::pair<std::size_t, Way>> pending_;
};
