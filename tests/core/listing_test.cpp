#include <utility>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "log/zelqLogReader.h"
#include "output/zelqListing.h"
#include "output/zelqRecordFormatter.h"
#include "support/LogImage.h"

namespace {

namespace fs = std::filesystem;

std::ptrdiff_t filesIn(const TemporaryFolder& folder) {
    return std::distance(fs::directory_iterator(folder.file("")), {});
}

TEST(Listing, OfEachTypeIsAsItAlwaysWas) {
    const TemporaryFolder folder;
    zelqLogCollection records;
    records.append(zelqLogReader::read({.fileName = DATA_FOLDER "listing.log"}).log, 0);
    zelqListingFile file(folder.file("x.txt"));
    EXPECT_TRUE(writeListing(records, zelqLocaleText("C"), file) && file.complete());
    EXPECT_EQ(contentOf(folder.file("x.txt")), contentOf(DATA_FOLDER "listing.txt"));
}

/// The log that was read first is behind the other one in time and slot; each is rendered in
/// several pieces.
TEST(Listing, OfTwoLogsIsInTheirOrderAndHasTrueAddressesLater) {
    const TemporaryFolder folder;
    const zelqLocaleText locale("C");
    std::vector<TestEntry> late(3000, {.date = {2030, 1, 1}, .blocks = {{0x1003, "data"}}});
    std::vector<TestEntry> early(1500, {.type = 0x0015, .blocks = {{0x2001, "more"}}});
    for (std::uint32_t i = 0; i < early.size(); ++i) {
        late[i].pid = early[i].pid = i;
    }
    std::vector<DecodedLog> decoded;  // has the bytes
    zelqLogCollection records;
    for (const auto& [slot, entries] : {std::pair{7, late}, {3, early}}) {
        decoded.emplace_back(logImage(entries), slot);
        records.append(std::move(decoded.back().log), slot);
    }
    for (const zelqAddressForm form : {zelqAddressForm::Reversed, zelqAddressForm::True}) {
        zelqRecordFormatter formatter(locale);
        std::string expected;  // by one formatter for one record after another
        for (const auto& [slot, log] : records.logs()) {
            log->forEach([&](const auto& r) { formatter.appendListing(r, form, expected); });
        }
        zelqListingFile file(folder.file("x.txt"));
        std::uint64_t last = 0;
        EXPECT_TRUE(writeListing(records, locale, file, [&last](auto done, auto total) {
            EXPECT_EQ(total, 4500U);
            EXPECT_GT(done, std::exchange(last, done));
            return true;
        }));
        EXPECT_TRUE(file.complete());
        EXPECT_EQ(last, 4500U);
        EXPECT_TRUE(contentOf(folder.file("x.txt")) == expected) << static_cast<int>(form);
    }
}

TEST(ListingFile, ReplacesTheFileOnlyWhenItIsComplete) {
    const TemporaryFolder folder;
    const std::string old = folder.write("old", "something longer");
    ASSERT_EQ(::chmod(old.c_str(), 0640), 0);
    fs::create_symlink("old", folder.file("link"));
    for (const std::string& name : {old, folder.file("link"), folder.file("new")}) {
        const std::string before = contentOf(name);
        for (const bool complete : {false, true}) {
            zelqListingFile file(name);
            EXPECT_TRUE(file.write("whole "));
            EXPECT_TRUE(file.write(name));
            EXPECT_EQ(contentOf(name), before);
            EXPECT_TRUE(!complete || file.complete());
        }
        EXPECT_EQ(contentOf(name), "whole " + name);
    }
    EXPECT_EQ(contentOf(old), "whole " + folder.file("link"));
    EXPECT_TRUE(fs::is_symlink(folder.file("link")));
    EXPECT_EQ(fs::status(old).permissions(), fs::perms{0640});
    EXPECT_EQ(filesIn(folder), 3);
}

TEST(ListingFile, SaysWhyItCannotBeWritten) {
    const TemporaryFolder folder;
    const std::string file = folder.write("file", "old");
    zelqListingFile full("/dev/full");  // written directly
    EXPECT_FALSE(full.write("text") || full.write("") || full.complete());
    EXPECT_NE(full.problem(), "");
    // Root may write anywhere, so a child of the process tries it as somebody else.
    fs::permissions(folder.file(""), fs::perms{0777});
    fs::permissions(file, fs::perms{0444});
    EXPECT_EXIT(
        {
            const bool ordinary = ::geteuid() != 0 || ::setuid(65534) == 0;
            const bool refuses = !zelqListingFile(file).problem().empty() &&
                                 !zelqListingFile(folder.file("nosuch/x")).problem().empty();
            std::_Exit(ordinary && refuses && zelqListingFile(folder.file("y")).complete() ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EQ(contentOf(file), "old");
    EXPECT_EQ(filesIn(folder), 2);
}

}  // namespace
