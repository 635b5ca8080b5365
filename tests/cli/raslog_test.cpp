#include <cstdlib>
#include <map>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "cli/zelqSampleLog.h"
#include "log/zelqLogReader.h"
#include "output/zelqListing.h"
#include "support/LogImage.h"

namespace {

/// Runs a command line of the shell in a folder and returns its exit status.
int shell(const TemporaryFolder& folder, const std::string& commands) {
    const std::string line = "cd '" + folder.file("") +
                             "' && export LC_ALL=C && raslog() { '" RASLOG_PROGRAM
                             "' \"$@\"; } && { " +
                             commands + "; } 2>messages";
    const int status = std::system(line.c_str());  // NOLINT(concurrency-mt-unsafe)
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string sample(std::uint64_t seed, unsigned logNumber, int count, std::string_view start) {
    zelqSampleLog log(seed, logNumber, parseSampleTime(start).value());
    std::string image;
    for (int i = 0; i < count; ++i) {
        const auto entry = log.next();
        image.append(reinterpret_cast<const char*>(entry.data()), entry.size());
    }
    return image;
}

TEST(SampleLog, EqualArgumentsGiveEqualBytes) {
    const std::string image = sample(7, 0, 300, "2026-11-21T08:00:00");
    EXPECT_NE(sample(8, 0, 300, "2026-11-21T08:00:00"), image);
    EXPECT_NE(sample(7, 1, 300, "2026-11-21T08:00:00"), image);
    // The demo log is the same whatever compiler and library made this program.
    EXPECT_EQ(contentOf(DEMO_LOG), image);
}

TEST(SampleLog, IsValidAndHasEveryType) {
    const DecodedLog log(sample(1, 0, 5000, "2026-12-31T23:00:00"));
    EXPECT_EQ(log.size(), 5000U);
    EXPECT_THAT(log.findings, testing::IsEmpty());
    std::set<std::uint16_t> types;
    log.log->forEach([&](const zelqBCnrObject& record) { types.insert(record.entryType()); });
    for (const zelqFormat::EntryLayout& layout : zelqFormat::kEntryLayouts) {
        EXPECT_TRUE(layout.type == 0 || types.contains(layout.type)) << layout.type;
    }
}

TEST(Raslog, NumbersFilesSoThatTheySort) {
    const TemporaryFolder folder;
    EXPECT_EQ(shell(folder,
                    "raslog sample -n 5 --logs 10 -o ./a.b && test \"$(echo a*)\" = "
                    "\"$(printf 'a-%02d.b ' 1 2 3 4 5 6 7 8 9 10 | sed 's/ $//')\""),
              0);
    EXPECT_EQ(shell(folder, "raslog sample -n 50 -o x && raslog sample -n 50 -o - | cmp - x"), 0);
    EXPECT_EQ(shell(folder, "raslog --version"), 0);
}

TEST(Raslog, FailsWithStatus2AndLeavesNoFile) {
    const TemporaryFolder folder;
    for (const char* arguments :
         {"", "nosuch", "sample -n 5", "sample -o x", "sample -n -5 -o x", "sample -n 010 -o x",
          "sample -n 5 --logs 0 -o x", "sample -n 5 --logs 101 -o x", "sample -n 5 --logs 2 -o -",
          "sample -n 5 --start 2026-02-29 -o x", "sample -n 5 --start 2026-11-21T24:00:00 -o x",
          "sample -n 5 --start 2026-11-21T08:00:00Z -o x", "sample -n 5 --seed -1 -o x",
          "sample -n 5 -o nosuch/x", "sample -n 5 -o /dev/full", "sample -n 5 -o - >/dev/full"}) {
        EXPECT_EQ(shell(folder, "raslog " + std::string(arguments)), 2) << arguments;
        EXPECT_GT(std::filesystem::file_size(folder.file("messages")), 0U) << arguments;
    }
    // A file that outgrows its limit is as good as a full disk.
    EXPECT_EQ(shell(folder, "trap '' XFSZ && ulimit -f 64 && raslog sample -n 9999 -o x"), 2);
    EXPECT_EQ(shell(folder, "test \"$(ls -A)\" = messages"), 0);
}

/// The listing of logs that were merged in this order.
std::string listing(const TemporaryFolder& folder, const std::vector<std::string>& logs) {
    zelqLogCollection records;
    for (const std::string& name : logs) {
        const int slot = records.assignLogSlot(name);
        records.append(readLog({.fileName = folder.file(name)}).log, slot);
    }
    zelqListingFile file(folder.file("listing"));
    EXPECT_TRUE(writeListing(records, zelqLocaleText("C"), file) && file.complete());
    return contentOf(folder.file("listing"));
}

TEST(List, WritesTheListingOfMergedLogs) {
    const TemporaryFolder folder;
    ASSERT_EQ(shell(folder, "raslog sample -n 1500 --logs 2 -o x.log"), 0);
    const std::string expected = listing(folder, {"x-1.log", "x-2.log"});
    for (const char* command :
         {"raslog list x-1.log x-2.log -o - >out", "raslog list -o out x-1.log x-2.log x-1.log"}) {
        EXPECT_EQ(shell(folder, command), 0) << command;
        EXPECT_TRUE(contentOf(folder.file("out")) == expected) << command;
        EXPECT_EQ(contentOf(folder.file("messages")), "") << command;
        std::filesystem::remove(folder.file("out"));
    }
    EXPECT_EQ(shell(folder, "raslog list x-2.log x-1.log >out"), 0);
    EXPECT_TRUE(contentOf(folder.file("out")) == listing(folder, {"x-2.log", "x-1.log"}));
    // Its reader need not read it to the end.
    EXPECT_EQ(shell(folder, "{ raslog list x-1.log x-2.log; echo $? >status; } | head -1 >line"),
              0);
    EXPECT_EQ(contentOf(folder.file("line")), expected.substr(0, expected.find('\n') + 1));
    EXPECT_EQ(contentOf(folder.file("status")), "0\n");
    EXPECT_EQ(contentOf(folder.file("messages")), "");
}

TEST(List, TellsWhatWentWrongByItsStatus) {
    const TemporaryFolder folder;
    ASSERT_EQ(shell(folder,
                    "raslog sample -n 500 -o good && head -c 5000 good >damaged && "
                    ": >empty && mkdir folder && echo old >old"),
              0);
    struct Row {
        const char* command;
        int status;
        std::vector<std::string> logs{};  ///< what "out" is the listing of; none: there is no "out"
    };
    const std::vector<Row> rows{
        {"raslog list damaged -o out", 1, {"damaged"}},
        {"raslog list good damaged -o out", 1, {"good", "damaged"}},
        {"raslog list empty good -o out", 0, {"empty", "good"}},
        {"raslog list empty -o out", 0},
        {"raslog list empty -o old", 0},
        {"raslog list good nosuch -o old", 2},
        {"raslog list good folder >stdout", 2},
        {"raslog list good -o nosuch/out", 2},
        {"raslog list good -o folder", 2},
        {"raslog list good >/dev/full", 2},
        {"raslog list", 2},
        // A file that outgrows its limit is as good as a full disk.
        {"trap '' XFSZ && ulimit -f 64 && raslog list good -o old", 2},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(shell(folder, row.command), row.status) << row.command;
        EXPECT_EQ(contentOf(folder.file("messages")).empty(), row.status == 0) << row.command;
        EXPECT_EQ(std::filesystem::exists(folder.file("out")), !row.logs.empty()) << row.command;
        EXPECT_TRUE(row.logs.empty() || contentOf(folder.file("out")) == listing(folder, row.logs))
            << row.command;
        EXPECT_EQ(contentOf(folder.file("old")), "old\n") << row.command;
        std::filesystem::remove(folder.file("out"));
    }
    EXPECT_EQ(contentOf(folder.file("stdout")), "");
    for (const auto& entry : std::filesystem::directory_iterator(folder.file(""))) {
        EXPECT_NE(entry.path().extension(), ".part") << entry.path();
    }
}

constexpr char kChecked[] = R"(good: 30 entries, 0 findings
cut: entry 0, offset 24: block length 4 is under 8; the block is kept as it stands
cut: entry 0, offset 28: block length is 0; the blocks behind it are not counted
cut: entry 1, offset 42: the file ends after 10 of the entry's 24 bytes; the entry is built from them
cut: 2 entries, 3 findings
long: entry 0, offset 4: header length 300 is over 256; the bytes past the first 256 are skipped
long: entry 0, offset 304: block length 257 runs past the 2 bytes left in the entry; the block is cut there
long: entry 0, offset 306: the file ends inside the last block; bytes behind the entry that are not read: 1
long: 1 entry, 3 findings
short: entry 0, offset 4: header length 3 is under 4; the entry has no header fields of its own
short: entry 0, offset 0: entry length 6 ends inside the header of 7 bytes; the entry has no expansion data
short: entry 0, offset 0: entry length 6 is under 8; the entry is kept and the rest of the file is not read
short: 1 entry, 3 findings
4 of 6 logs read: 34 entries, 9 findings
)";

TEST(Check, PrintsWhatIsDamagedAndTellsItByItsStatus) {
    const TemporaryFolder folder;
    ASSERT_EQ(shell(folder, "raslog sample -n 30 -o good && mkdir folder"), 0);
    const TestEntry blocks{.type = 1, .data = std::string("\0\4zz\0\0zz", 8)};
    const TestEntry past{.type = 1, .headerLength = 300, .data = "\1\1"};
    for (const auto& [name, bytes] : std::map<std::string, std::string>{
             {"cut", logImage({blocks, {.type = 1}}).substr(0, 42)},
             {"long", logImage({past}) + "z"},
             {"short", logImage({{.type = 1, .headerLength = 3, .entryLength = 6}})}}) {
        ASSERT_EQ(folder.write(name, bytes), folder.file(name));
    }
    EXPECT_EQ(shell(folder, "raslog check good folder cut long nosuch short >out"), 2);
    EXPECT_EQ(contentOf(folder.file("out")), kChecked);
    EXPECT_EQ(contentOf(folder.file("messages")),
              "raslog: folder: is not a regular file\n"
              "raslog: nosuch: cannot be opened: No such file or directory\n");
    for (const auto& [arguments, status] : std::map<std::string, int>{{"good", 0},
                                                                      {"good cut good", 1},
                                                                      {"nosuch cut", 2},
                                                                      {"good >/dev/full", 2},
                                                                      {"", 2}}) {
        EXPECT_EQ(shell(folder, ">out raslog check " + arguments), status) << arguments;
        EXPECT_EQ(contentOf(folder.file("messages")).empty(), status < 2) << arguments;
    }
}

}  // namespace
