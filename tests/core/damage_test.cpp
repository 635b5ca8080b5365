#include <algorithm>
#include <cstring>
#include <random>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "log/zelqLogReader.h"
#include "support/LogImage.h"

namespace {

using namespace std::string_literals;

constexpr std::size_t kLargeSize = std::size_t{64} << 20;

std::vector<std::byte> repeated(const std::string& bytes) {
    std::vector<std::byte> image(kLargeSize / bytes.size() * bytes.size());
    for (std::size_t at = 0; at < image.size(); at += bytes.size()) {
        std::memcpy(image.data() + at, bytes.data(), bytes.size());
    }
    return image;
}

using Counts = std::pair<std::size_t, std::size_t>;  ///< records, findings

Counts countsOf(std::vector<std::byte> image) {
    zelqLog log("");
    std::size_t findings = 0;
    zelqLogDecoder decoder(log, 0, [&findings](const zelqFinding&) { ++findings; });
    decoder.decode(image, true);
    return {log.size(), findings};
}

TEST(Damage, OfALargeLogMakesNoMoreRecordsAndFindingsThanItsLengthsTell) {
    EXPECT_EQ(countsOf(repeated("\0"s)), Counts(1, 3));
    EXPECT_EQ(countsOf(repeated("\xFF")), Counts(1025, 2051));
    TestEntry chain{.headerLength = 4};
    for (int i = 0; i < 32763; ++i) {
        chain.data += "\0\2"s;  // for every two bytes a finding; there cannot be more
    }
    EXPECT_EQ(countsOf(repeated(logImage({chain}))), Counts(1024, 1024 * 32763));

    std::vector<std::byte> image(kLargeSize);
    std::mt19937_64 random(1);
    std::generate(image.begin(), image.end(), [&random] { return std::byte(random()); });
    // Half of all headers end behind their entries, which have 32 KiB on average.
    EXPECT_EQ(countsOf(image), Counts(2024, 4038));
}

TEST(Damage, WhatIsNoReadableFileGivesNoRecordsAndDoesNotBlock) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo(folder.file("fifo").c_str(), 0600), 0);
    const std::string empty = folder.write("empty.log", "");
    for (const std::string& name : {folder.file("missing"), folder.file("."), folder.file("fifo"),
                                    folder.file("empty.log/a.log"), ""s, empty}) {
        const zelqReadResult result = readLog({.fileName = name});
        EXPECT_EQ(result.log->size(), 0U) << name;
        EXPECT_EQ(result.problem.empty(), name == empty) << name;
    }
    const std::string locked = folder.write("locked.log", "");
    std::filesystem::permissions(folder.file(""), std::filesystem::perms{0755});
    std::filesystem::permissions(locked, std::filesystem::perms::none);
    const auto readsOthersOnly = [&locked, &empty] {
        return readLog({.fileName = empty}).problem.empty() &&
               !readLog({.fileName = locked}).problem.empty();
    };
    // Root may read anything, so a child of the process tries it as somebody else.
    EXPECT_EXIT(std::_Exit((::geteuid() != 0 || ::setuid(65534) == 0) && readsOthersOnly() ? 0 : 1),
                testing::ExitedWithCode(0), "");
}

TEST(Damage, AFileThatShrinksOrGrowsIsReadUpToTheSizeItHadAtMost) {
    const TemporaryFolder folder;
    const std::string name = folder.write("some.log", "");
    for (const auto& [size, read] : {std::pair{5U, 20U}, {50U, 50U}, {100U, 100U}, {300U, 100U}}) {
        std::filesystem::resize_file(name, 100);
        zelqLogFile file(name);
        EXPECT_TRUE(file.readMore(20));
        std::filesystem::resize_file(name, size);
        while (file.readMore(7)) {
        }
        EXPECT_EQ(file.bytes().size(), read);
        EXPECT_EQ(file.problem(), "");
    }
}

}  // namespace
