#include <algorithm>
#include <fstream>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "log/zelqBSorter.h"
#include "log/zelqEntryReader.h"
#include "log/zelqLogReader.h"
#include "support/LogImage.h"
#include "support/RandomLog.h"

namespace {

/// All that a record shows, its place among the logs, and its data.
using Row = std::tuple<TestColumns, std::string, std::uint32_t, int, int, int, bool, std::string>;

Row rowOf(const zelqBCnrObject& record) {
    const auto data = dataOf(record);
    return {columnsOf(record),
            record.summaryFunction().string(),
            record.summaryDetectPoint(),
            record.logIndex(),
            record.entryIndex(),
            record.blockCount(),
            record.hasExpansion(),
            std::string(reinterpret_cast<const char*>(data.data()), data.size())};
}

/// What a header shows must be in it as a whole: an entry written with all of it reads alone as it
/// did in its log.
void expectReadsAlone(const zelqEntry& entry) {
    const zelqHeaderBuffer header = entry.header.asInFile();
    std::string image(4, '\0');
    image.append(reinterpret_cast<const char*>(header.data()), header.size());
    image.replace(4, 2, "\1", 2);  // its length is 256
    image.replace(0, 2, std::string{1, 4});
    EXPECT_EQ(columnsOf(DecodedLog(image)[0]), columnsOf(entry.record()));
    EXPECT_EQ(DecodedLog(image)[0].summaryFunction().string(),
              entry.record().summaryFunction().string());
}

class StreamTest : public testing::Test {
protected:
    struct Result {
        std::vector<Row> rows;
        std::vector<std::pair<std::size_t, zelqFinding>> findings;
    };

    Result streamed(const std::vector<std::string>& names, bool byTime) {
        Result result;
        const zelqEntryRequest request{
            .names = names,
            .finding = [&](auto log, auto& found) { result.findings.emplace_back(log, found); },
            .ended = [&](auto, const auto& end) { EXPECT_EQ(end.status.text, ""); }};
        (byTime ? zelqEntryReader::readInTimeOrder
                : zelqEntryReader::readInFileOrder)(request, [&](const zelqEntry& entry) {
            result.rows.push_back(rowOf(entry.record()));
            EXPECT_EQ(entry.bytes.size(), entry.place.length);
            EXPECT_EQ(entry.place.number, static_cast<std::uint64_t>(entry.record().entryIndex()));
            if (entry.inherits() || entry.place.number % 100 == 0) {
                expectReadsAlone(entry);
            }
            return true;
        });
        return result;
    }
    /// What the window's way of reading gives.
    static Result collected(const std::vector<std::string>& names, bool byTime) {
        Result result;
        std::vector<zelqReadResult> logs;
        std::vector<zelqBCnrObject*> records;
        for (std::size_t log = 0; log < names.size(); ++log) {
            logs.push_back(zelqLogReader::read(
                {.fileName = names[log],
                 .logSlot = static_cast<std::uint16_t>(log),
                 .findings = [&](auto& found) { result.findings.emplace_back(log, found); }}));
            logs[log].log->number(0);
            logs[log].log->forEach([&](auto& record) { records.push_back(&record); });
        }
        if (byTime) {
            zelqBSorter::sort(records);
        }
        for (const zelqBCnrObject* record : records) {
            result.rows.push_back(rowOf(*record));
        }
        return result;
    }

    TemporaryFolder folder_;
};

TEST_F(StreamTest, GivesWhatCollectingGivesFromFilesAndPipes) {
    std::vector<std::string> files;
    for (const unsigned seed : {1U, 2U, 3U, 4U}) {
        const std::string image = randomImage(seed, std::size_t{700} << 10, seed > 2);
        files.push_back(folder_.write(std::to_string(seed), image));
    }
    for (const auto& names : {std::vector{files[0]}, {files[2]}, files}) {
        for (const bool byTime : {false, true}) {
            SCOPED_TRACE(testing::Message() << names.size() << " by time: " << byTime);
            const Result expected = collected(names, byTime);
            const Result fromFiles = streamed(names, byTime);
            EXPECT_TRUE(fromFiles.rows == expected.rows);
            EXPECT_EQ(fromFiles.findings, expected.findings);
            std::vector<std::string> pipes;
            std::vector<std::jthread> writers;
            for (const std::string& name : names) {
                pipes.push_back(name + (byTime ? ".pipe" : ".pipeByTime") +
                                std::to_string(names.size()));
                ASSERT_EQ(::mkfifo(pipes.back().c_str(), 0600), 0);
                writers.emplace_back([pipe = pipes.back(), image = contentOf(name)] {
                    std::ofstream(pipe, std::ios::binary) << image;
                });
            }
            const Result fromPipes = streamed(pipes, byTime);
            EXPECT_TRUE(fromPipes.rows == expected.rows);
            EXPECT_EQ(fromPipes.findings, expected.findings);
        }
    }
}

TEST_F(StreamTest, NoticesALogThatChangesWhileItIsRead) {
    const std::string image = randomImage(1, std::size_t{2} << 20, false);
    const std::string half = image.substr(0, image.size() / 2 + 3);
    const Result whole = collected({folder_.write("log", image)}, true);
    for (const std::string& changed : {half, half + randomImage(9, half.size(), false)}) {
        std::string problem;
        std::size_t same = 0;
        std::size_t visited = 0;
        zelqEntryReader::readInTimeOrder(
            {.names = {folder_.write("log", image)},
             .ended = [&](auto, const auto& end) { problem = end.status.text; }},
            [&](const zelqEntry& entry) {
                same += same == visited && rowOf(entry.record()) == whole.rows[same] ? 1 : 0;
                if (++visited == 20) {
                    EXPECT_NE(folder_.write("log", changed), "");
                }
                return true;
            });
        EXPECT_EQ(problem, "has changed while it was read");
        EXPECT_GE(same, 20U);
        EXPECT_GT(whole.rows.size(), same);
    }
}

}  // namespace
