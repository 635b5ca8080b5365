#include <algorithm>
#include <atomic>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "output/zelqLineSearch.h"
#include "output/zelqListing.h"
#include "session/zelqRecordMatcher.h"
#include "support/RandomLog.h"
#include "support/TestSession.h"

namespace {

using namespace std::string_literals;

constexpr std::size_t kPiece = zelqLogPieces::kSize;

const zelqLocaleText& locale() {
    static const zelqLocaleText text("C");
    return text;
}

zelqLogCollection collectionOf(std::unique_ptr<zelqLog> log) {
    zelqLogCollection logs;
    logs.append(std::move(log), "log", 0);
    return logs;
}

std::string listingOf(const zelqLogCollection& logs, std::uint64_t withoutData = 0) {
    const TemporaryFolder folder;
    zelqOutputFile file(folder.file("listing"));
    EXPECT_EQ(zelqListing::write(logs, locale(), file).withoutData, withoutData);
    EXPECT_TRUE(file.complete().ok());
    return contentOf(folder.file("listing"));
}

/// All lines of all records when they are expanded, the last one first, so that none follows from
/// the one before; with how many they are, and which records hold a pattern.
std::vector<std::string> linesOf(const zelqLogCollection& logs, zelqAddressForm form) {
    std::vector<std::string> all;
    const zelqDataReader data(logs.dataSources());
    zelqRecordFormatter formatter(locale(), data);
    const auto pattern =
        std::make_shared<zelqSearchPattern>(zelqSearchPattern::Query{.text = "xxa"});
    zelqLineSearch search(pattern, locale(), data);
    zelqRecordMatcher matcher(pattern, {[](auto) { return ""s; }, [](auto) { return ""s; }}, data);
    logs.forEach([&](const zelqBCnrObject& record) {
        const std::size_t count = zelqRecordFormatter::lineCount(record, form, logs.dataSources());
        all.push_back(std::to_string(count) + (matcher.matches(record) ? "matches" : "") +
                      (search.isIn(record, form) ? "shows" : ""));
        for (std::size_t line = count; line-- > 0;) {
            const auto text = formatter.line(record, form, line);
            EXPECT_EQ(text.state, zelqDataState::Here);
            all.push_back(std::string(text.before).append(text.time).append(text.after));
        }
    });
    return all;
}

TEST(Demand, ShowsWhatALogThatIsKeptShows) {
    TestEntry longest{.blocks = {{0xFFFFFFF1, std::string(65000, 'x')}}};
    for (int i = 0; i < 60; ++i) {
        longest.blocks.push_back({0x0F000000, "ab"});  // a line or two, by the form of the address
    }
    for (const unsigned seed : {1U, 2U, 3U}) {
        std::string image = randomImage(seed, 3 * kPiece, seed != 1) + logImage({longest});
        DecodedLog decoded(image);
        DemandedLog demanded(image);
        EXPECT_EQ(demanded.findings, decoded.findings);
        ASSERT_EQ(contentsOf(*demanded.log, nullptr),
                  contentsOf(*decoded.log, decoded.bytes.data()));
        for (std::size_t i = 0; i < decoded.size(); i += 97) {
            EXPECT_TRUE(i == 0 || demanded.log->offsetOf(i) > demanded.log->offsetOf(i - 1));
        }
        EXPECT_EQ(demanded.log->file().bytesRead(), 0U);
        const zelqLogCollection kept = collectionOf(std::move(decoded.log));
        const zelqLogCollection onDemand = collectionOf(std::move(demanded.log));
        for (const auto form : {zelqAddressForm::Reversed, zelqAddressForm::True}) {
            ASSERT_TRUE(linesOf(kept, form) == linesOf(onDemand, form)) << seed;
            ASSERT_TRUE(listingOf(kept) == listingOf(onDemand)) << seed;
        }
    }
}

/// What of a file can be given: as a character for each of 1024 entries whether its data are as
/// they were, have changed or cannot be read.
std::string statesOf(const zelqLog& log) {
    zelqDataSources sources(std::make_shared<zelqPieceCache>());
    sources.set(0, log.pieces());
    zelqDataReader data(sources);
    std::string states;
    log.forEach([&, number = 0](const zelqBCnrObject& record) mutable {
        const zelqRecordData found = data.dataOf(record);
        const std::string text = std::to_string(number++);
        const bool isSame =
            found.isHere() && std::equal(text.begin(), text.end(), found.bytes.begin() + 8,
                                         [](char a, std::byte b) { return std::byte(a) == b; });
        states += isSame ? '=' : found.state == zelqDataState::Changed ? 'c' : '?';
    });
    return states;
}

TEST(Demand, NeverShowsWhatAFileWasNot) {
    const std::string image = numbered(1024);
    ASSERT_EQ(image.size(), 4 * kPiece);
    std::string overwritten = image;
    overwritten[kPiece + 5000] ^= 1;
    struct Row {
        const char* what;
        std::string image;
        std::string states;  ///< of the pieces
        std::optional<std::uint64_t> change;
    };
    for (const Row& row :
         std::vector<Row>{{"as it was", image, "====", {}},
                          {"longer", image + image, "====", {}},
                          {"a bit", overwritten, "=c==", kPiece},
                          {"cut", image.substr(0, 2 * kPiece + 7), "==cc", 2 * kPiece},
                          {"cut and grown", image.substr(0, kPiece) + std::string(3 * kPiece, '\0'),
                           "=ccc", kPiece},
                          {"another log", numbered(900), "===c", 3 * kPiece},
                          {"empty", "", "cccc", 0}}) {
        DemandedLog log(image);
        log.put(row.image);
        std::string states;
        for (const char state : row.states) {
            states.append(256, state);
        }
        EXPECT_EQ(statesOf(*log.log), states) << row.what;
        const auto change = log.log->pieces()->change();
        EXPECT_EQ(change.has_value() ? std::optional(change->offset) : std::nullopt, row.change);
        const zelqLogCollection logs = collectionOf(std::move(log.log));
        const auto gone = static_cast<std::uint64_t>(std::ranges::count(states, 'c'));
        const std::string listing = listingOf(logs, gone);
        std::uint64_t said = 0;
        for (auto at = listing.find("changed on disk"); at != listing.npos;
             at = listing.find("changed on disk", at + 1)) {
            ++said;
        }
        EXPECT_EQ(said, gone) << row.what;
    }
}

/// The log is the one that was opened, whatever its name leads to now.
TEST(Demand, ReadsAFileThatWasReplacedOrDeleted) {
    const TemporaryFolder folder;
    const std::string name = folder.write("log", numbered(300));
    const zelqReadResult result = zelqLogReader::read({.fileName = name, .mostKept = 1000});
    std::filesystem::rename(folder.write("new", numbered(2)), name);
    EXPECT_EQ(statesOf(*result.log), std::string(300, '='));
    std::filesystem::remove(name);
    EXPECT_EQ(statesOf(*result.log), std::string(300, '='));
}

TEST(Demand, WhoMustNotWaitIsToldWhenDataAreThere) {
    DemandedLog log(numbered(4096));
    std::atomic<int> told = 0;
    const auto cache = std::make_shared<zelqPieceCache>();
    cache->setNews([&told] { ++told; });
    zelqDataSources sources(cache);
    sources.set(0, log.log->pieces());
    zelqDataReader data(sources, zelqDataReader::Waits::No);
    // Where the system says at once what it has in memory, nothing is ever pending.
    int pending = 0;
    for (std::size_t row = 128; row < 4096; row += 256) {
        pending += data.dataOf((*log.log)[row]).state == zelqDataState::Pending ? 1 : 0;
    }
    for (int wait = 0; told < pending && wait < 1000; ++wait) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_EQ(told, pending);
    for (std::size_t row = 128; row < 4096; row += 256) {
        EXPECT_TRUE(data.dataOf((*log.log)[row]).isHere()) << row;
    }
    cache->setNews({});
}

TEST(Demand, KeepsWhatFitsAndReadsAFileOfUnknownSizeOnce) {
    const TemporaryFolder folder;
    const std::string name = folder.write("log", numbered(3));
    const auto isKept = [](const zelqReadRequest& request) {
        const zelqReadResult result = zelqLogReader::read(request);
        EXPECT_TRUE(result.status.ok() && result.log->size() != 0);
        return result.log->pieces() == nullptr;
    };
    EXPECT_TRUE(isKept({.fileName = name}));
    EXPECT_TRUE(isKept({.fileName = name, .mostKept = 3072}));
    EXPECT_FALSE(isKept({.fileName = name, .mostKept = 3071}));
    EXPECT_FALSE(isKept({.fileName = name, .bytesKept = SIZE_MAX / 4 * 3}));
    EXPECT_TRUE(isKept({.fileName = "/proc/version", .mostKept = 0}));
    zelqReadResult refused = zelqLogReader::read({.fileName = name, .mostKept = 0});
    refused.giveUpForMemory();
    EXPECT_EQ(refused.log->size(), 0U);
    EXPECT_THAT(refused.status.text,
                testing::MatchesRegex("needs about 3 MiB of memory for its records, and there "
                                      "are [0-9]+ MiB"));
    for (const auto& [code, text, isReplaced] :
         std::vector<std::tuple<std::errc, std::string, bool>>{
             {std::errc::io_error, "bad disk", true},
             {std::errc::not_enough_memory, "", true},
             {std::errc::not_enough_memory, "said already", false}}) {
        refused.status = zelqStatus::failure(code, text);
        refused.giveUpForMemory();
        EXPECT_TRUE(refused.status.is(std::errc::not_enough_memory));
        EXPECT_EQ(refused.status.text.starts_with("needs about"), isReplaced) << text;
    }
}

}  // namespace
