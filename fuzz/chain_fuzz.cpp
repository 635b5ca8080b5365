#include <algorithm>
#include <cstdlib>
#include <deque>

#include "log/zelqBSorter.h"
#include "support/LogImage.h"

#include "session/zelqFilterChain.h"
#include "session/zelqRecordList.h"

namespace {

using Records = std::vector<zelqBCnrObject*>;
using Kind = zelqFilterKind;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// A filter at its plainest.
struct PlainFilter {
    Kind kind;
    unsigned accepted;  ///< a bit for each of the values 0 to 3
    Records passed{};
    Records rejected{};

    /// Filters an input, to which what was rejected before is given back.
    void run(Records& input) {
        std::copy_if(rejected.begin(), rejected.end(), std::back_inserter(input), [&](auto* r) {
            return std::find(input.begin(), input.end(), r) == input.end();
        });
        passed.clear();
        rejected.clear();
        for (zelqBCnrObject* record : input) {
            const bool passes = (accepted >> zelqValueTest::valueOf(kind, *record) & 1U) != 0;
            (passes ? passed : rejected).push_back(record);
        }
    }
};

/// A chain of filters beside plain ones, and the rows that it leaves.
class Session {
public:
    void readLog(std::uint32_t size) {
        std::vector<TestEntry> entries;
        for (std::uint32_t i = 0; i < size; ++i) {
            entries.push_back({.numbers = {0, i * 7 % 5, i % 4, i / 4 % 4, i / 2 % 3, i / 8 % 4}});
        }
        const int slot = logs_.assignLogSlot(std::to_string(images_.size()));
        images_.emplace_back(logImage(entries), slot);
        logs_.append(std::move(images_.back().log), slot);
        chain_.run(logs_);
        runFrom(0);
    }
    void dropLog(int slot) {
        const auto isDropped = [slot](const zelqBCnrObject* r) { return r->logIndex() == slot; };
        for (PlainFilter& filter : plain_) {
            std::erase_if(filter.passed, isDropped);
            std::erase_if(filter.rejected, isDropped);
        }
        chain_.dropLog(slot);
        rows_.dropLog(slot);
        (void)logs_.remove(slot);
    }
    void apply(Kind kind, unsigned accepted) {
        zelqValueTest::Choice choice({0, 1, 2, 3}, nullptr);
        choice.accept({(accepted & 1U) != 0, (accepted & 2U) != 0, (accepted & 4U) != 0,
                       (accepted & 8U) != 0});
        chain_.apply(std::make_unique<zelqFilterStage>(kind, zelqValueTest(kind, choice)), logs_);
        rows_.assign(chain_.result());

        const std::size_t place = find(kind);
        plain_.resize(std::max(plain_.size(), place + 1));
        plain_[place] = {.kind = kind, .accepted = accepted};
        runFrom(place);
        Records expected = plain_.back().passed;
        std::stable_sort(expected.begin(), expected.end(), zelqBSorter{});
        require(std::ranges::equal(rows_.records(), expected));
    }
    void remove(Kind kind) {
        const std::size_t place = find(kind);
        const auto removed = chain_.remove(kind);
        require((removed != nullptr) == (place < plain_.size()));
        if (removed != nullptr) {
            require(std::ranges::equal(removed->rejected(), plain_[place].rejected));
            rows_.addAll(removed->rejected());
            plain_.erase(plain_.begin() + static_cast<std::ptrdiff_t>(place));
        }
    }
    void check() const {
        require(std::ranges::equal(
            chain_.filters(), plain_, [](const auto& filter, const PlainFilter& plain) {
                return filter->kind() == plain.kind &&
                       std::ranges::equal(filter->passed(), plain.passed) &&
                       std::ranges::equal(filter->rejected(), plain.rejected);
            }));
    }

private:
    std::size_t find(Kind kind) const {
        const auto found = std::ranges::find(plain_, kind, &PlainFilter::kind);
        return static_cast<std::size_t>(found - plain_.begin());
    }
    void runFrom(std::size_t place) {
        for (; place < plain_.size(); ++place) {
            Records all;
            logs_.forEach([&all](zelqBCnrObject& record) { all.push_back(&record); });
            plain_[place].run(place == 0 ? all : plain_[place - 1].passed);
        }
    }

    std::deque<DecodedLog> images_;
    zelqLogCollection logs_;
    zelqFilterChain chain_;
    std::vector<PlainFilter> plain_;
    zelqRecordList rows_{zelqBCnrObject::InContainer};
};

}  // namespace

/// Every two bytes are a step: what to do, and with what.
// NOLINTNEXTLINE(*-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Session session;
    session.readLog(24);
    for (std::size_t i = 0; i + 1 < std::min<std::size_t>(size, 64); i += 2) {
        const auto kind = static_cast<Kind>(4 + (data[i] >> 4) % 4);  // pid to minor error
        const unsigned value = data[i + 1];
        if (const unsigned what = data[i] & 15U; what == 0) {
            session.readLog(value % 32);
        } else if (what == 1) {
            session.dropLog(static_cast<int>(value % 4));
        } else if (what < 4) {
            session.remove(kind);
        } else {
            session.apply(kind, value);
        }
        session.check();
    }
    return 0;
}
