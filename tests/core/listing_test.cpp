#include <algorithm>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "log/zelqLogReader.h"
#include "output/zelqListing.h"
#include "output/zelqRecordFormatter.h"
#include "support/LogImage.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
}

TEST(Listing, OfEachTypeIsAsItAlwaysWas) {
    const TemporaryFolder folder;
    zelqLogCollection records;
    records.append(readLog({.fileName = DATA_FOLDER "listing.log"}).log, 0);
    EXPECT_EQ(records.size(), 15U);
    zelqListingFile file(folder.file("x.txt"));
    EXPECT_TRUE(writeListing(records, zelqLocaleText("C"), file) && file.complete());
    EXPECT_EQ(contentOf(folder.file("x.txt")), contentOf(DATA_FOLDER "listing.txt"));
}

/// Two logs, each of several pieces to render. The one that was read first is behind the other one
/// in time and slot.
class TwoLogs : public testing::Test {
protected:
    TwoLogs() {
        std::vector<TestEntry> late(3000, {.date = {2030, 1, 1}, .blocks = {{0x1003, "data"}}});
        std::vector<TestEntry> early(1500, {.type = 0x0015, .blocks = {{0x2001, "more"}}});
        for (std::uint32_t i = 0; i < early.size(); ++i) {
            late[i].pid = early[i].pid = i;
        }
        for (const auto& [slot, entries] : {std::pair{7, late}, {3, early}}) {
            decoded_.emplace_back(logImage(entries), slot);
            records_.append(std::move(decoded_.back().log), slot);
        }
    }

    /// What the listing should be, by one formatter for one record after another.
    [[nodiscard]] std::string text(zelqAddressForm form) const {
        zelqRecordFormatter formatter(locale_);
        std::string text;
        for (const auto& [slot, log] : records_.logs()) {
            log->forEach(
                [&](const zelqBCnrObject& record) { formatter.appendListing(record, form, text); });
        }
        return text;
    }

    zelqLocaleText locale_{"C"};
    std::vector<DecodedLog> decoded_;  // has the bytes
    zelqLogCollection records_;
    TemporaryFolder folder_;
};

TEST_F(TwoLogs, AreListedInTheirOrderAndWithTrueAddressesLater) {
    for (const zelqAddressForm form : {zelqAddressForm::Reversed, zelqAddressForm::True}) {
        zelqListingFile file(folder_.file("x.txt"));
        std::uint64_t last = 0;
        ASSERT_TRUE(writeListing(records_, locale_, file, [&last](auto done, auto total) {
            EXPECT_EQ(total, 4500U);
            EXPECT_GT(done, std::exchange(last, done));
            return true;
        }));
        EXPECT_TRUE(file.complete());
        EXPECT_EQ(last, 4500U);
        EXPECT_TRUE(contentOf(folder_.file("x.txt")) == text(form)) << static_cast<int>(form);
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
    EXPECT_THAT(namesIn(folder.file("")), ElementsAre("link", "new", "old"));
}

TEST(ListingFile, SaysWhyItCannotBeWritten) {
    const TemporaryFolder folder;
    const std::string file = folder.write("file", "old");
    fs::create_directory(folder.file("locked"));
    const auto refuses = [](const std::string& name) {
        return !zelqListingFile(name).problem().empty();
    };
    for (const char* name : {"nosuch/x", "file/x", "locked"}) {
        EXPECT_TRUE(refuses(folder.file(name))) << name;
    }
    zelqListingFile full("/dev/full");  // written directly
    EXPECT_EQ(full.problem(), "");
    EXPECT_FALSE(full.write("text"));
    EXPECT_FALSE(full.write(""));
    EXPECT_FALSE(full.complete());
    EXPECT_NE(full.problem(), "");
    // Root may write anywhere, so a child of the process tries it as somebody else.
    fs::permissions(folder.file(""), fs::perms{0777});
    fs::permissions(folder.file("locked"), fs::perms{0555});
    fs::permissions(file, fs::perms{0444});
    EXPECT_EXIT(
        {
            const bool ordinary = ::geteuid() != 0 || ::setuid(65534) == 0;
            const bool refused = refuses(folder.file("locked/x")) && refuses(file);
            std::_Exit(ordinary && refused && !refuses(folder.file("y")) ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EQ(contentOf(file), "old");
    EXPECT_THAT(namesIn(folder.file("")), ElementsAre("file", "locked"));
    EXPECT_THAT(namesIn(folder.file("locked")), ElementsAre());
}

}  // namespace
