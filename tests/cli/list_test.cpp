#include <cstdlib>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>
#include <sys/wait.h>

#include "log/zelqLogReader.h"
#include "output/zelqListing.h"
#include "support/LogImage.h"

namespace {

namespace fs = std::filesystem;

class List : public testing::Test {
protected:
    /// Runs commands of the shell in the folder and returns their exit status. What they say goes
    /// to the file "messages".
    int shell(const std::string& commands) {
        const std::string line = "cd '" + folder_.file("") +
                                 "' && export LC_ALL=C && raslog() { '" RASLOG_PROGRAM
                                 "' \"$@\"; } && { " +
                                 commands + "; } 2>messages";
        const int status = std::system(line.c_str());  // NOLINT(concurrency-mt-unsafe)
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    [[nodiscard]] std::string content(const std::string& name) const {
        std::ifstream stream(folder_.file(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    /// The listing of logs that were merged in this order.
    [[nodiscard]] std::string listing(const std::vector<std::string>& logs) const {
        zelqLogCollection records;
        for (const std::string& name : logs) {
            const int slot = records.assignLogSlot(name);
            records.append(readLog({.fileName = folder_.file(name)}).log, slot);
        }
        zelqListingFile file(folder_.file("listing"));
        EXPECT_TRUE(writeListing(records, zelqLocaleText("C"), file) && file.complete());
        return content("listing");
    }

    TemporaryFolder folder_;
};

TEST_F(List, WritesTheListingOfMergedLogs) {
    ASSERT_EQ(shell("raslog sample -n 1500 --logs 2 -o x.log"), 0);
    const std::string expected = listing({"x-1.log", "x-2.log"});
    for (const char* command :
         {"raslog list x-1.log x-2.log >out", "raslog list x-1.log x-2.log -o - >out",
          "raslog list -o out x-1.log x-2.log", "raslog list -o out x-1.log x-2.log x-1.log"}) {
        EXPECT_EQ(shell(command), 0) << command;
        EXPECT_TRUE(content("out") == expected) << command;
        EXPECT_EQ(content("messages"), "") << command;
        fs::remove(folder_.file("out"));
    }
    EXPECT_EQ(shell("raslog list x-2.log x-1.log >out"), 0);
    EXPECT_TRUE(content("out") == listing({"x-2.log", "x-1.log"}));
    // Its reader need not read it to the end.
    EXPECT_EQ(shell("{ raslog list x-1.log x-2.log; echo $? >status; } | head -1 >line"), 0);
    EXPECT_EQ(content("line"), expected.substr(0, expected.find('\n') + 1));
    EXPECT_EQ(content("status"), "0\n");
    EXPECT_EQ(content("messages"), "");
}

TEST_F(List, TellsWhatWentWrongByItsStatus) {
    ASSERT_EQ(shell("raslog sample -n 500 -o good && head -c 5000 good >damaged && "
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
        {"raslog list good nosuch -o out", 2},
        {"raslog list good nosuch -o old", 2},
        {"raslog list good nosuch >stdout", 2},
        {"raslog list good folder -o out", 2},
        {"raslog list good -o nosuch/out", 2},
        {"raslog list good -o folder", 2},
        {"raslog list good -o /dev/full", 2},
        {"raslog list good >/dev/full", 2},
        {"raslog list", 2},
        // A file that outgrows its limit is as good as a full disk.
        {"trap '' XFSZ && ulimit -f 64 && raslog list good -o old", 2},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(shell(row.command), row.status) << row.command;
        EXPECT_EQ(content("messages").empty(), row.status == 0) << row.command;
        EXPECT_EQ(fs::exists(folder_.file("out")), !row.logs.empty()) << row.command;
        EXPECT_TRUE(row.logs.empty() || content("out") == listing(row.logs)) << row.command;
        EXPECT_EQ(content("old"), "old\n") << row.command;
        fs::remove(folder_.file("out"));
    }
    EXPECT_EQ(content("stdout"), "");
    for (const auto& entry : fs::directory_iterator(folder_.file(""))) {
        EXPECT_NE(entry.path().extension(), ".part") << entry.path();
    }
}

}  // namespace
