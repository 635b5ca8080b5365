#include <QClipboard>
#include <QLineEdit>
#include <algorithm>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include "dialogs/zelqExpansionFinder.h"
#include "support/RandomLog.h"
#include "widgets/zelqElidedLabel.h"
#include "widgets/zelqLineView.h"

#include "GuiTest.h"

namespace {

constexpr std::size_t kPiece = zelqLogPieces::kSize;
constexpr int kPerPiece = 256;

/// The program with a log of three pieces whose bytes are not kept.
class DemandTest : public GuiTest {
protected:
    DemandTest() {
        browser.setMostKept(0);
        load(log);
        EXPECT_EQ(browser.session().logs().bytesKept(), 0U);
    }
    void expand(const std::vector<int>& rows) {
        std::vector<zelqBCnrObject*> records;
        for (const int one : rows) {
            records.push_back(browser.session().shown().records()[static_cast<std::size_t>(one)]);
        }
        browser.setExpanded(records, true);
    }
    zelqLineView& view() { return *browser.expansionWindow().findChild<zelqLineView*>(); }
    /// The first line of the dump of a record, by its place among the expanded ones.
    QString dump(std::size_t place) {
        const std::size_t first = browser.session().expanded().lineOfRecord(place);
        return view().model()->index(static_cast<int>(first) + 3, 0).data().toString();
    }
    QString copied() {
        QGuiApplication::clipboard()->clear();
        view().selectAll();
        view().copySelection();
        wait();
        return QGuiApplication::clipboard()->text();
    }

    const std::string image = numbered(std::size_t{3} * kPerPiece);
    const std::string log = folder.write("some.log", image);
};

TEST_F(DemandTest, LinesArePendingUntilTheyAreRead) {
    const zelqDescriptor file(::open(log.c_str(), O_RDONLY));
    ASSERT_EQ(::fsync(file.get()), 0);
    void* const mapped = ::mmap(nullptr, image.size(), PROT_READ, MAP_SHARED, file.get(), 0);
    ASSERT_NE(mapped, MAP_FAILED);
    std::vector<unsigned char> pages(image.size() / 4096, 1);
    expand({300});
    ::posix_fadvise(file.get(), 0, 0, POSIX_FADV_DONTNEED);
    ASSERT_EQ(::mincore(mapped, image.size(), pages.data()), 0);
    ::munmap(mapped, image.size());
    const bool isCached = (pages[kPiece / 4096 + 44] & 1) != 0;  // where it cannot be dropped
    EXPECT_EQ(dump(0) == zelqResourceLibrary::text(zelqId::kDataPending), !isCached);
    EXPECT_TRUE(QTest::qWaitFor([this] { return dump(0).contains("300xxx"); }));
}

/// The search itself reads more than is kept of what was read.
TEST_F(DemandTest, FindsWhatHasToBeReadAgain) {
    const zelqDescriptor file(::memfd_create("log", MFD_CLOEXEC));
    const std::string large = numbered(std::size_t{160} * 260);
    ASSERT_EQ(::write(file.get(), large.data(), large.size()), static_cast<ssize_t>(large.size()));
    load("/proc/self/fd/" + std::to_string(file.get()));
    std::vector<int> rows(160);
    std::generate(rows.begin(), rows.end(), [row = -260]() mutable { return row += 260; });
    expand(rows);
    zelqFinder& finder = browser.expansionWindow().finder();
    finder.open();
    finder.bar().findChild<QLineEdit*>()->setText("0xx");
    const auto finds = [&finder](int record) {
        const QString place = QString("%1 of 160 records").arg(record);
        return QTest::qWaitFor([&finder, &place] {
            return finder.bar().findChild<zelqElidedLabel*>()->text().startsWith(place);
        });
    };
    EXPECT_TRUE(finds(1));
    QTest::keyClick(&browser.expansionWindow(), Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_TRUE(finds(160));
    QTest::keyClick(&browser.expansionWindow(), Qt::Key_F3);
    EXPECT_TRUE(finds(1));
}

TEST_F(DemandTest, CopiesAsALogThatIsKept) {
    expand({0, 1, 255, 256, 700});
    const QString lines = copied();
    EXPECT_EQ(lines.count("700xxx"), 1);
    EXPECT_EQ(lines.count('\n'), view().model()->rowCount());
    browser.setMostKept(SIZE_MAX);
    load(log);
    expand({0, 1, 255, 256, 700});
    EXPECT_EQ(copied(), lines);
}

TEST_F(DemandTest, SaysWhatHasChangedOnDiskAndShowsTheRest) {
    std::string other = image;
    other[kPiece + 70] ^= 1;
    ASSERT_EQ(folder.write("some.log", other), log);
    expand({255, 256, 512});
    const QString changed = zelqResourceLibrary::text(zelqId::kDataChanged);
    EXPECT_TRUE(QTest::qWaitFor([&] { return dump(1) == changed; }));
    EXPECT_TRUE(QTest::qWaitFor([this] { return status().contains("Findings: 1"); }));
    EXPECT_TRUE(dump(0).contains("255xxx") && dump(2).contains("512xxx"));
    const auto findings = browser.session().logs().logs()[0].log->findings();
    EXPECT_EQ(findings->kept[0].kind, zelqFinding::Kind::LogChanged);
    EXPECT_EQ(findings->kept[0].entry, 256U);
    EXPECT_TRUE(copied().contains(changed));

    browser.writeLog(folder.file("listing"));
    wait();
    EXPECT_TRUE(status().contains("but 256 of them without their data"));
    EXPECT_EQ(QString::fromStdString(contentOf(folder.file("listing"))).count(changed), 256);
}

}  // namespace
