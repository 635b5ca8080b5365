#include <algorithm>
#include <cstdlib>
#include <deque>

#include "filters/zelqFilterChain.h"
#include "log/zelqBSorter.h"
#include "log/zelqRecordList.h"
#include "support/LogImage.h"

namespace {

using Records = std::vector<zelqBCnrObject*>;
using Kind = zelqFilterKind;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// The chain at its plainest: what is given back is given back, twice and three times if need be.
struct PlainFilter {
    Kind kind;
    unsigned accepted;  ///< a bit for each of the values 0 to 3
    Records passed{};
    Records rejected{};

    void run(Records& input) {
        input.insert(input.end(), rejected.begin(), rejected.end());
        passed.clear();
        rejected.clear();
        for (zelqBCnrObject* record : input) {
            const bool passes = (accepted >> zelqValueTest::valueOf(kind, *record) & 1U) != 0;
            (passes ? passed : rejected).push_back(record);
        }
    }
};

/// Without what stands there a second time, which nobody can see.
Records distinct(const Records& records) {
    Records seen;
    for (zelqBCnrObject* record : records) {
        if (std::find(seen.begin(), seen.end(), record) == seen.end()) {
            seen.push_back(record);
        }
    }
    return seen;
}

class Session {
public:
    void readLog(std::size_t size) {
        std::vector<TestEntry> entries;
        for (std::uint32_t i = 0; i < size; ++i) {
            entries.push_back({.second = static_cast<std::uint8_t>(7 * i % 5),
                               .pid = i % 4,
                               .tid = i / 4 % 4,
                               .majorError = i / 2 % 3,
                               .minorError = i / 8 % 4});
        }
        const int slot = logs_.assignLogSlot(std::to_string(names_++));
        if (slot >= 0) {
            images_.emplace_back(logImage(entries), slot);
            logs_.append(std::move(images_.back().log), slot);
            runFrom(0);
            chain_.run(logs_);
        }
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
        const auto place = find(kind);
        const auto start = place - plain_.begin();
        if (place == plain_.end()) {
            plain_.push_back({.kind = kind, .accepted = accepted});
        } else {
            *place = {.kind = kind, .accepted = accepted};
        }
        runFrom(static_cast<std::size_t>(start));
        chain_.apply(std::make_unique<zelqFilterStage>(kind, zelqValueTest(kind, choice)), logs_);
        rows_.assign(chain_.result());
        Records expected = distinct(plain_.back().passed);
        std::stable_sort(expected.begin(), expected.end(), zelqBSorter{});
        require(std::ranges::equal(rows_.records(), expected));
    }
    void remove(Kind kind) {
        const auto place = find(kind);
        const auto removed = chain_.remove(kind);
        require((removed != nullptr) == (place != plain_.end()));
        if (removed != nullptr) {
            require(std::ranges::equal(removed->rejected(), distinct(place->rejected)));
            rows_.addAll(removed->rejected());
            plain_.erase(place);
        }
    }
    void check() const {
        require(plain_.size() == chain_.filters().size());
        for (std::size_t i = 0; i < plain_.size(); ++i) {
            const zelqFilterStage& filter = *chain_.filters()[i];
            require(filter.kind() == plain_[i].kind);
            require(std::ranges::equal(filter.passed(), distinct(plain_[i].passed)));
            require(std::ranges::equal(filter.rejected(), distinct(plain_[i].rejected)));
        }
    }

private:
    std::vector<PlainFilter>::iterator find(Kind kind) {
        return std::find_if(plain_.begin(), plain_.end(),
                            [kind](const PlainFilter& filter) { return filter.kind == kind; });
    }
    void runFrom(std::size_t position) {
        for (; position < plain_.size(); ++position) {
            Records all;
            for (const auto& [slot, log] : logs_.logs()) {
                log->forEach([&all](zelqBCnrObject& record) { all.push_back(&record); });
            }
            if (position == 0) {
                plain_[0].rejected.clear();  // the collection has them already
            }
            plain_[position].run(position == 0 ? all : plain_[position - 1].passed);
        }
    }

    std::deque<DecodedLog> images_;
    zelqLogCollection logs_;
    zelqFilterChain chain_;
    std::vector<PlainFilter> plain_;
    zelqRecordList rows_{zelqBCnrObject::InContainer};
    int names_ = 0;
};

}  // namespace

/// Every two bytes are a step: what to do, and with what.
// NOLINTNEXTLINE(*-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Session session;
    session.readLog(24);
    for (std::size_t i = 0; i + 1 < std::min<std::size_t>(size, 64); i += 2) {
        const auto kind = static_cast<Kind>(4 + (data[i] >> 4) % 4);  // pid to minor error
        switch (data[i] & 15) {
            case 0:
                session.readLog(data[i + 1] % 32);
                break;
            case 1:
                session.dropLog(data[i + 1] % 4);
                break;
            case 2:
            case 3:
                session.remove(kind);
                break;
            default:
                session.apply(kind, data[i + 1]);
                break;
        }
        session.check();
    }
    return 0;
}
