#include <csignal>
#include <utility>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "log/zelqLogReader.h"
#include "output/zelqListing.h"
#include "support/LogImage.h"

namespace {

namespace fs = std::filesystem;

std::ptrdiff_t filesIn(const TemporaryFolder& folder) {
    return std::distance(fs::directory_iterator(folder.file("")), {});
}

/// listing.log has an entry of each type. The blocks of dump.log are aligned and not, empty, too
/// short, cut and past the data, and hold every byte. The first dump of all has its addresses
/// reversed.
TEST(Listing, IsAsItAlwaysWas) {
    const TemporaryFolder folder;
    for (const auto& [name, times] :
         {std::pair{std::string(DATA_FOLDER "listing"), 1}, {DATA_FOLDER "dump", 2}}) {
        zelqLogCollection records;
        records.append(zelqLogReader::read({.fileName = name + ".log"}).log, "log", 0);
        std::string text;
        for (int i = 0; i < times; ++i) {
            zelqOutputFile file(folder.file("x.txt"));
            EXPECT_TRUE(zelqListing::write(records, zelqLocaleText("C"), file).status.ok() &&
                        file.complete().ok());
            text += contentOf(folder.file("x.txt"));
        }
        EXPECT_EQ(text, contentOf(name + ".txt"));
    }
}

TEST(Listing, CommandsNoTerminal) {
    DecodedLog log(logImage({{.name = "\x1B[1m\xE4"}}));
    zelqLogCollection records;
    records.append(std::move(log.log), "log", 0);
    const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_TRUE(::grantpt(terminal) == 0 && ::unlockpt(terminal) == 0);
    zelqOutputFile file(::ptsname(terminal));  // NOLINT(concurrency-mt-unsafe)
    EXPECT_TRUE(zelqListing::write(records, zelqLocaleText("C"), file).status.ok());
    std::string shown(4096, '\0');
    shown.resize(static_cast<std::size_t>(::read(terminal, shown.data(), shown.size())));
    EXPECT_NE(shown.find("Function: \\x1B[1m\\xE4\r\n"), std::string::npos) << shown;
    ::close(terminal);
}

/// It has the old rights from its first byte on; it has no name where a file can be without one.
TEST(OutputFile, ReplacesTheFileOnlyWhenItIsComplete) {
    const TemporaryFolder folder;
    const std::string old = folder.write("old", "something longer");
    ASSERT_EQ(::chmod(old.c_str(), 04640), 0);
    fs::create_symlink("old", folder.file("link"));
    const bool canBeUnnamed =
        ::close(::open(folder.file("").c_str(), O_TMPFILE | O_RDWR, 0600)) == 0;
    for (const bool unnamed : {true, false}) {
        for (const std::string& name : {old, folder.file("link"), folder.file("new")}) {
            const std::string before = contentOf(name);
            for (const bool complete : {false, true}) {
                zelqOutputFile file(name, {.unnamed = unnamed});
                EXPECT_EQ(filesIn(folder), unnamed && canBeUnnamed ? 2 : 3);
                for (const auto& entry : fs::directory_iterator(folder.file(""))) {
                    EXPECT_TRUE(before.empty() ||
                                (entry.status().permissions() & fs::perms::all) == fs::perms{0640});
                }
                EXPECT_TRUE(file.write("whole ").ok() && file.write(name).ok());
                EXPECT_EQ(contentOf(name), before);
                EXPECT_TRUE(!complete || file.complete().ok());
            }
            EXPECT_EQ(contentOf(name), "whole " + name);
        }
        EXPECT_EQ(fs::status(old).permissions(), fs::perms{0640});
        EXPECT_TRUE(fs::is_symlink(folder.file("link")) && fs::remove(folder.file("new")));
    }
}

TEST(OutputFile, SaysWhyItFailsAndLeavesNothing) {
    const TemporaryFolder folder;
    const std::string log = folder.write("log", "log");
    const std::vector inputs{zelqFileIdentity::of(log).value()};
    EXPECT_TRUE(zelqOutputFile(log, {.inputs = inputs}).complete().is(std::errc::text_file_busy));
    {
        zelqOutputFile late(folder.file("folder"));
        fs::create_directory(folder.file("folder"));
        EXPECT_FALSE(late.complete().ok());
    }
    const auto killed = [&folder] {
        std::signal(SIGHUP, SIG_IGN);
        zelqOutputFile::removeOnSignals();
        zelqOutputFile file(folder.file("killed"), {.unnamed = false});
        std::raise(SIGHUP);
        std::raise(SIGTERM);
    };
    EXPECT_EXIT(killed(), testing::KilledBySignal(SIGTERM), "");
    EXPECT_EQ(filesIn(folder), 2);
    ASSERT_EQ(::mkfifo(folder.file("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(zelqOutputFile(folder.file("pipe")).status().ok());  // nobody reads it
    const int reader = ::open(folder.file("pipe").c_str(), O_RDONLY | O_NONBLOCK);
    std::stop_source stop;
    zelqOutputFile pipe(folder.file("pipe"), {.stop = stop.get_token()});
    stop.request_stop();
    EXPECT_TRUE(pipe.write(std::string(1 << 20, 'x')).is(std::errc::operation_canceled));
    ::close(reader);
}

/// Root may write anywhere, so a child of the process tries it as somebody else.
TEST(OutputFile, KeepsToWhatTheUserMayWrite) {
    const TemporaryFolder folder;
    fs::create_directory(folder.file("shut"));
    for (const auto& [name, mode] :
         {std::pair{"shut/file", 0666}, {"foreign", 0666}, {"readOnly", 0444}, {"shared", 0664}}) {
        fs::permissions(folder.write(name, "old"), fs::perms(mode));
    }
    fs::permissions(folder.file("shut"), fs::perms{0555});
    fs::permissions(folder.file(""), fs::perms{01777});
    const bool root = ::chown(folder.file("shared").c_str(), 65534, 54321) == 0;
    const auto written = [&] {
        std::string names = root && ::setuid(65534) != 0 ? "still root" : "";
        for (const char* name : {"shut/file", "foreign", "readOnly", "shared", "nosuch/x", "y"}) {
            zelqOutputFile file(folder.file(name));
            names += file.write("new").ok() && file.complete().ok() ? name : "-";
        }
        std::_Exit(names == "shut/fileforeign-shared-y" ? 0 : 1);
    };
    EXPECT_EXIT(written(), testing::ExitedWithCode(0), "");
    EXPECT_EQ(contentOf(folder.file("readOnly")) + contentOf(folder.file("shut/file")), "oldnew");
    // The group of strangers cannot be kept, and no other one gets its rights.
    EXPECT_EQ(fs::status(folder.file("shared")).permissions(), fs::perms(root ? 0644 : 0664));
    fs::permissions(folder.file("shut"), fs::perms{0755});
}

}  // namespace
