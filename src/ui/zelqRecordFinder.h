#pragma once

#include "widgets/zelqFinder.h"

class zelqLocaleText;
class zelqRecordContainer;
class zelqSession;

/// Finds records in the main window: among the rows of the table, by all that their cells and
/// their data show.
class zelqRecordFinder : public zelqFinder {
    Q_OBJECT

public:
    /// All must outlive the finder.
    zelqRecordFinder(QWidget& window, const zelqSession& session, zelqRecordContainer& container,
                     const zelqLocaleText& locale);

protected:
    [[nodiscard]] std::size_t count() const override;
    [[nodiscard]] std::optional<std::size_t> currentPlace() const override;
    [[nodiscard]] std::function<Matcher()> matcherMaker(const Pattern& pattern) override;
    void goTo(std::size_t place, Way way) override;
    void selectMatches() override;

private:
    const zelqSession& session_;
    zelqRecordContainer& container_;
    const zelqLocaleText& locale_;
};
