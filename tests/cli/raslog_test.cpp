#include <algorithm>
#include <cstdlib>
#include <map>
#include <numeric>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "sample/zelqSampleLog.h"
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

std::string sample(std::uint64_t seed, unsigned logNumber, int count, const std::string& start) {
    zelqSampleLog log(seed, logNumber, zelqSampleTime::parse(start).value());
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
    EXPECT_EQ(shell(folder,
                    "raslog sample -n 5 --logs 1 -o one && raslog extract -n 1 -o e one && "
                    "raslog check e | grep -qx 'e: 1 entry, 0 findings'"),
              0);
    // More than the program writes at a time.
    EXPECT_EQ(shell(folder, "raslog sample -n30000 -o x; raslog sample -n30000 -o - | cmp - x"), 0);
    // 32 blocks, each with a header of 8 bytes; the longest there can be.
    EXPECT_EQ(shell(folder,
                    "raslog sample -n 99 --data 64000 -o d && raslog check d && test "
                    "$(raslog export -f jsonl d | grep -c '\"data_length\":64256') = 99"),
              0);
    const std::string image = sample(1, 0, 30000, "2026-11-21T08:00:00");
    EXPECT_GT(image.size(), std::size_t{2} << 20);
    EXPECT_TRUE(contentOf(folder.file("x")) == image);
    // What depends on rare draws, too.
    EXPECT_EQ(std::accumulate(image.begin(), image.end(), 0U,
                              [](unsigned sum, char byte) {
                                  return sum * 31 + static_cast<unsigned char>(byte);
                              }),
              896190264U);
}

TEST(Raslog, FailsWithStatus2AndLeavesNoFile) {
    const TemporaryFolder folder;
    ASSERT_EQ(shell(folder, "raslog sample -n 500 -o good && mkdir folder"), 0);
    ASSERT_EQ(shell(folder, "ln good hard && ln -s good link && echo old >old"), 0);
    for (const char* command :
         {"raslog", "raslog nosuch", "raslog sample -n 5", "raslog sample -n -5 -o x",
          "raslog sample -n 010 -o x", "raslog sample -n 5 --logs 101 -o x",
          "raslog sample -n 5 --logs 2 -o -", "raslog sample -n 5 --start 2026-02-29 -o x",
          "raslog sample -n 5 --start 2026-11-21T24:00:00 -o x",
          "raslog sample -n 5 --start 2026-2-3 -o x",
          "raslog sample -n 5 --start ' 2026-02-03' -o x",
          "raslog sample -n 5 --start 2026-11-21T08:00:60 -o x",
          "raslog sample -n 5 --start 2026-11-21T08:00:00Z -o x", "raslog sample -n 5 -o nosuch/x",
          "raslog sample -n 5 -o /dev/full", "raslog sample -n 5 -o - >/dev/full", "raslog list",
          "raslog list nosuch -o old", "raslog list folder -o x", "raslog list good -o nosuch/x",
          "raslog list good -o folder", "raslog list good >/dev/full", "raslog check",
          "raslog rows --context 0 good", "raslog rows --context 10001 good",
          "raslog rows --tail 0 good", "raslog rows --tail 100001 good", "raslog rows -n 0 good",
          "raslog check good >/dev/full", "raslog check old/x", "raslog list good -o link",
          "raslog list good -o hard", "raslog list good >>good", "raslog check good >>good",
          "raslog list good -o ''", "raslog list --from '' good", "raslog list --from= good",
          "raslog list --match= good good", "raslog --help >/dev/full", "raslog list good - <&-",
          "raslog check good >&-",
          // A file that outgrows its limit is as good as a full disk.
          "trap '' XFSZ && ulimit -f 64 && raslog sample -n 9999 -o x",
          "trap '' XFSZ && ulimit -f 64 && raslog list good -o old"}) {
        EXPECT_EQ(shell(folder, command), 2) << command;
        EXPECT_GT(std::filesystem::file_size(folder.file("messages")), 0U) << command;
    }
    // A log takes no messages: nothing can be said then.
    for (const char* command : {"raslog check good 2>>good", "raslog summary - <good 2>>link",
                                "raslog rows good --nosuch 2>>hard"}) {
        EXPECT_EQ(shell(folder, command), 2) << command;
    }
    EXPECT_EQ(contentOf(folder.file("old")), "old\n");
    // Where a log cannot be put aside, it does not end.
    EXPECT_EQ(shell(folder,
                    "raslog sample -n 9999 -o - | (trap '' XFSZ && ulimit -f 8 && raslog rows "
                    "--order time - | cat >/dev/null); test \"$(wc -l <messages)\" = 1"),
              0);
    EXPECT_EQ(shell(folder, "raslog sample -n500 -o - | cmp - good && test $(ls -A|wc -l) = 6"), 0);
}

TEST(Raslog, SaysInOneLineWhichOptionItCannotTake) {
    const TemporaryFolder folder;
    ASSERT_EQ(shell(folder, "raslog sample -n 5 -o good"), 0);
    for (const std::string option :
         {"--from x", "--to 24:00", "--type Error", "--pid 1-", "--tid ''", "--major -1",
          "--minor 2-1", "--detect-point 0x", "--detect-point-type x", "--function [z-a]",
          "--match ''", "--match-bytes 1", "--match-regex 'a('"}) {
        EXPECT_EQ(shell(folder, "raslog rows " + option + " good >out"), 2) << option;
        const std::string message = contentOf(folder.file("messages"));
        EXPECT_THAT(message,
                    testing::StartsWith("raslog: " + option.substr(0, option.find(' ')) + ": "));
        EXPECT_EQ(std::ranges::count(message, '\n'), 1) << message;
        EXPECT_EQ(contentOf(folder.file("out")), "");
    }
}

TEST(List, WritesTheListingOfMergedLogs) {
    const TemporaryFolder folder;
    ASSERT_EQ(shell(folder, "raslog sample -n 1500 --logs 2 -o x.log"), 0);
    ASSERT_EQ(shell(folder, "raslog list x-2.log >expected && raslog list x-1.log >>expected"), 0);
    EXPECT_EQ(shell(folder, "raslog list x-2.log x-1.log -o - | cmp - expected"), 0);
    EXPECT_EQ(shell(folder, "raslog list -o out x-2.log x-1.log x-2.log && cmp out expected"), 0);
    EXPECT_EQ(shell(folder,
                    "mkfifo pipe; cat x-2.log >pipe & raslog list pipe - <x-1.log >piped; "
                    "cmp piped expected"),
              0);
    EXPECT_EQ(shell(folder,
                    "for i in $(seq 101 220); do head -c 999 x-1.log >$i; done; "
                    "raslog list [12]?? >out; for i in [12]??; do raslog list $i; done >one; "
                    "cmp out one"),
              0);
    // What a pipe has given is shown before it ends.
    EXPECT_EQ(shell(folder,
                    "(cat x-2.log x-1.log pipe | raslog list - >live; cmp live expected) & "
                    "for i in $(seq 300); do cmp -s live expected && break; sleep .1; done;"
                    "cmp live expected; seen=$?; : >pipe; wait $! && test $seen = 0"),
              0);
    // A reader that stops early is no failure.
    EXPECT_EQ(shell(folder, "{ raslog list x-2.log x-1.log; echo $? >status; } | head -1 >line"),
              0);
    for (const char* const command : {"raslog check x-1.log", "raslog --help"}) {
        EXPECT_EQ(shell(folder, std::string("rm -f ended; mkfifo ended; exec 3<>ended 4>ended "
                                            "3<&-; ") +
                                    command + " >&4"),
                  0)
            << command;
    }
    EXPECT_EQ(shell(folder, "head -1 expected | cmp - line && grep -q ^Time line"), 0);
    EXPECT_EQ(contentOf(folder.file("status")), "0\n");
    EXPECT_EQ(contentOf(folder.file("messages")), "");
}

TEST(List, WritesWhatThereIsAndTellsOfDamageByItsStatus) {
    const TemporaryFolder folder;
    ASSERT_EQ(shell(folder, "raslog sample -n 5 -o good && head -c 50 good >cut && : >empty"), 0);
    EXPECT_EQ(shell(folder, "raslog list empty -o none && test ! -e none"), 0);
    EXPECT_EQ(shell(folder, "raslog list empty good -o some && test -s some"), 0);
    EXPECT_EQ(contentOf(folder.file("messages")), "");
    EXPECT_EQ(shell(folder, "raslog list good cut >out"), 1);
    EXPECT_NE(contentOf(folder.file("messages")), "");
    EXPECT_EQ(shell(folder, "test $(grep -c Pid out) -ge $(grep -c Pid some)"), 0);
    EXPECT_EQ(shell(folder, "raslog list good nosuch cut >all"), 2);
    EXPECT_THAT(contentOf(folder.file("messages")), testing::HasSubstr("raslog: nosuch: cannot"));
    EXPECT_EQ(shell(folder, "cmp all out"), 0);
    // Messages that have no place to go do not end in a file that is opened meanwhile.
    EXPECT_EQ(shell(folder, "raslog list good nosuch cut -o all 2>&-"), 2);
    EXPECT_EQ(shell(folder, "cmp all out"), 0);
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
              "raslog: folder: is a directory\n"
              "raslog: nosuch: cannot be opened: No such file or directory\n");
    EXPECT_EQ(shell(folder, "raslog check good >out"), 0);
    EXPECT_EQ(shell(folder, "raslog check good cut good >out"), 1);
    EXPECT_EQ(shell(folder,
                    "raslog check good good | grep -qx '2 of 2 logs read: 60 entries, 0 "
                    "findings'"),
              0);
    EXPECT_EQ(shell(folder, "raslog --version | grep -Eqx 'raslog " VERSION_PATTERN "'"), 0);
}

constexpr char kSummary[] =
    R"(Log               Entries  Errors  Findings  First                Last
first                  15  33.3 %         0  2026-11-21T08:00:00  2026-11-21T10:01:00
a\x1Bsecond log         2  50.0 %         1  2026-11-22T13:00:00  2026-11-22T13:00:00

All 2 logs
  17 entries, 857 bytes, 1 finding (see raslog check)
  2026-11-21T08:00:00 to 2026-11-22T13:00:00, 1 d 5 h
  Largest gap: 1 d 2 h after 2026-11-21T10:01:00
  Busiest minute: 2026-11-22T13:00, 2 entries
  Without a date that a calendar has: 1 entry

Type         Entries     Share
Error              6    35.3 %
Trace              9    52.9 %
Message            1     5.9 %
Unknown            1     5.9 %

From, 3 h each        Entries   Errors  # errors, = others
2026-11-21T06:00:00         6   33.3 %  #########==================
2026-11-21T09:00:00         8   37.5 %  ##############======================
2026-11-21T12:00:00         0
2026-11-21T15:00:00         0
2026-11-21T18:00:00         0
2026-11-21T21:00:00         0
2026-11-22T00:00:00         0
2026-11-22T03:00:00         0
2026-11-22T06:00:00         0
2026-11-22T09:00:00         0
2026-11-22T12:00:00         2   50.0 %  #####====

Function (3 different)         Entries    PID (4 different)              Entries
AFunctionWithALongNameäöü...        10    0                                    7
f                                    4    1                                    4

Major error (4 different)      Entries    Minor error (1 different)      Entries
7                                    3    0                                    6
0                                    1
)";

TEST(Summary, IsATableForPeople) {
    const TemporaryFolder folder;
    std::vector<TestEntry> entries;
    for (std::uint32_t i = 0; i < 14; ++i) {
        entries.push_back({.type = static_cast<std::uint16_t>(i % 3 == 0 ? 0x13 : 0x15),
                           .hour = static_cast<std::uint8_t>(8 + i / 6),
                           .minute = static_cast<std::uint8_t>(i % 6),
                           .pid = i % 4,
                           .majorError = i % 2 == 0 ? 7 : i,
                           .name = i % 4 == 0 ? "f" : "AFunctionWithALongName\xE4\xF6\xFC\x1B"});
    }
    entries.push_back({.type = 0x2002, .date = {2026, 13, 1}});
    const TestEntry later{.date = {2026, 11, 22}, .hour = 13, .name = "abcdefghijklmnopqrstuvwx"};
    EXPECT_EQ(folder.write("first", logImage(entries)), folder.file("first"));
    EXPECT_EQ(folder.write("a\x1Bsecond log", logImage({later}) + "\1"),
              folder.file("a\x1Bsecond log"));
    EXPECT_EQ(shell(folder, "raslog summary --top 2 first a*log >out"), 1);
    EXPECT_EQ(contentOf(folder.file("out")), kSummary);
}

TEST(Check, PrintsTheFirstThousandFindingsOfALogOrAll) {
    const TemporaryFolder folder;
    TestEntry chain{.headerLength = 4};
    for (int i = 0; i < 1123; ++i) {
        chain.data += std::string("\0\2", 2);
    }
    EXPECT_EQ(folder.write("many", logImage({chain})), folder.file("many"));
    EXPECT_EQ(shell(folder, "raslog check many >out; test $(wc -l <out) = 1002 && tail -2 out >x"),
              0);
    EXPECT_EQ(contentOf(folder.file("x")),
              "many: 123 more findings\nmany: 1 entry, 1123 findings\n");
    EXPECT_EQ(shell(folder, "test $(raslog check --all many | wc -l) = 1124"), 0);
}

/// Control characters, overrides of direction, and bytes that are no UTF-8: half a surrogate pair,
/// a form that is too long, a character beyond the last one.
TEST(Raslog, NothingThatItPrintsCommandsATerminal) {
    const TemporaryFolder folder;
    const std::string name =
        "\x1B\x7F\n\xC2\x9B\u200E\u2028\u202E\u2066\xED\xA0\x80\xC0\x80\xF4\x90"
        "\x80\x80\xE2\x80"
        "ä\u2065\U0001F600";
    const std::string shown = R"(\x1B\x7F\x0A\xC2\x9B\u{200E}\u{2028}\u{202E}\u{2066}\xED\xA0\x80)"
                              R"(\xC0\x80\xF4\x90\x80\x80\xE2\x80)"
                              "ä\u2065\U0001F600";
    ASSERT_EQ(folder.write(name, "\1"), folder.file(name));
    EXPECT_EQ(shell(folder, "raslog check '" + name + "' >out"), 1);

    EXPECT_THAT(contentOf(folder.file("out")),
                testing::EndsWith("\n" + shown + ": 1 entry, 1 finding\n"));
    for (const std::string command :
         {"list ", "list no --no", "check no", "list no", "sample -n 5 -o no/"}) {
        shell(folder, "raslog " + command + "'" + name + "' >/dev/null");
        EXPECT_THAT(contentOf(folder.file("messages")), testing::HasSubstr(shown.substr(12)))
            << command;
    }
}

}  // namespace
