#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "log/zelqLogReader.h"
#include "support/LogImage.h"

namespace {

using testing::ElementsAre;

/// Runs raslog in a folder by the shell and returns its exit status.
int raslog(const TemporaryFolder& folder, const std::string& arguments,
           const std::string& preparation = "") {
    const std::string command = "cd '" + folder.file("") + "' && " + preparation +
                                " '" RASLOG_PROGRAM "' " + arguments + " 2>stderr.txt";
    const int status = std::system(command.c_str());  // NOLINT(concurrency-mt-unsafe)
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::vector<std::string> logsIn(const TemporaryFolder& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.file(""))) {
        if (entry.path().extension() != ".txt") {
            names.push_back(entry.path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

TEST(Raslog, WritesLogsWhoseTimesInterleave) {
    const TemporaryFolder folder;
    ASSERT_EQ(raslog(folder, "sample -n 400 --logs 2 -o x.log"), 0);
    ASSERT_THAT(logsIn(folder), ElementsAre("x-1.log", "x-2.log"));
    const zelqReadResult one = readLog({.fileName = folder.file("x-1.log")});
    const zelqReadResult two = readLog({.fileName = folder.file("x-2.log")});
    ASSERT_EQ(one.log->size(), 400U);
    ASSERT_EQ(two.log->size(), 400U);
    int ahead = 0;
    for (std::size_t i = 0; i < 400; ++i) {
        ahead += (*one.log)[i].timestamp() < (*two.log)[399].timestamp() &&
                         (*two.log)[i].timestamp() < (*one.log)[399].timestamp()
                     ? 1
                     : 0;
    }
    EXPECT_GT(ahead, 200);
}

TEST(Raslog, NumbersFilesSoThatTheySort) {
    const TemporaryFolder folder;
    ASSERT_EQ(raslog(folder, "sample -n 0 --logs 10 -o ./a.b"), 0);
    EXPECT_THAT(logsIn(folder), ElementsAre("a-01.b", "a-02.b", "a-03.b", "a-04.b", "a-05.b",
                                            "a-06.b", "a-07.b", "a-08.b", "a-09.b", "a-10.b"));
    EXPECT_EQ(raslog(folder, "sample -n 50 -o x.log"), 0);
    EXPECT_EQ(raslog(folder, "sample -n 50 -o - | cmp - x.log"), 0);
}

TEST(Raslog, FailsWithStatus2AndLeavesNoFile) {
    const TemporaryFolder folder;
    for (const char* arguments :
         {"", "nosuch", "sample -n 5", "sample -o x", "sample -n -5 -o x", "sample -n 010 -o x",
          "sample -n 5 --logs 0 -o x", "sample -n 5 --logs 101 -o x", "sample -n 5 --logs 2 -o -",
          "sample -n 5 --start 2026-02-30 -o x", "sample -n 5 --seed -1 -o x",
          "sample -n 5 -o nosuch/x", "sample -n 5 -o /dev/full", "sample -n 5 -o - >/dev/full"}) {
        EXPECT_EQ(raslog(folder, arguments), 2) << arguments;
        EXPECT_GT(std::filesystem::file_size(folder.file("stderr.txt")), 0U) << arguments;
    }
    EXPECT_TRUE(std::filesystem::exists("/dev/full"));
    // A file that outgrows its limit is as good as a full disk.
    EXPECT_EQ(raslog(folder, "sample -n 9999 -o x", "trap '' XFSZ && ulimit -f 64 &&"), 2);
    EXPECT_THAT(logsIn(folder), ElementsAre());
    EXPECT_EQ(raslog(folder, "--version"), 0);
}

}  // namespace
