// Parts of windows and of the program, each worked by itself.

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QSignalSpy>
#include <QToolButton>
#include <new>

#include "widgets/zelqElidedLabel.h"
#include "widgets/zelqFindBar.h"

#include "GuiTest.h"

namespace {

/// A bar of its own, in a window of its own.
class FindBarTest : public GuiTest {
protected:
    FindBarTest() {
        for (const char* signal :
             {SIGNAL(queryChanged()), SIGNAL(stepWanted(bool)), SIGNAL(selectAllWanted()),
              SIGNAL(stopWanted()), SIGNAL(copyWanted()), SIGNAL(closed())}) {
            spies_.push_back(std::make_unique<QSignalSpy>(&bar, signal));
        }
        bar.open();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&bar));
    }
    /// The signals that have come since the last call, by their first letters and arguments.
    QString signalled() {
        QString names;
        for (const auto& spy : spies_) {
            for (const QVariantList& arguments : *spy) {
                names +=
                    QString::fromLatin1(spy->signal()).left(3) + (arguments.empty()       ? " "
                                                                  : arguments[0].toBool() ? "+ "
                                                                                          : "- ");
            }
            spy->clear();
        }
        return names.trimmed();
    }
    template <typename Part>
    Part& part() {
        return *bar.findChild<Part*>();
    }
    QAbstractButton& button(const QString& name) {
        for (auto* one : bar.findChildren<QAbstractButton*>()) {
            if (one->text() == name || one->accessibleName() == name) {
                return *one;
            }
        }
        throw std::out_of_range(name.toStdString());
    }
    QString said() { return part<zelqElidedLabel>().text(); }

    zelqFindBar bar{zelqFindBar::Matches::Selectable};

private:
    std::vector<std::unique_ptr<QSignalSpy>> spies_;
};

TEST_F(FindBarTest, AsksForWhatIsPressed) {
    QLineEdit& field = part<QLineEdit>();
    EXPECT_TRUE(field.hasFocus());
    QTest::keyClicks(&field, "ab");
    EXPECT_EQ(signalled(), "");  // not before a moment has passed
    EXPECT_TRUE(QTest::qWaitFor([this] { return signalled() == "que"; }));
    EXPECT_EQ(bar.query(), (zelqSearchPattern::Query{.text = "ab"}));
    for (const auto& [key, keys, expected] :
         std::vector<std::tuple<Qt::Key, Qt::KeyboardModifiers, QString>>{
             {Qt::Key_Return, {}, "ste+"},
             {Qt::Key_Enter, Qt::ShiftModifier | Qt::KeypadModifier, "ste-"},
             {Qt::Key_C, Qt::ControlModifier, "cop"},
             {Qt::Key_A, Qt::ControlModifier, ""},
             {Qt::Key_C, Qt::ControlModifier, ""},  // now of the field's own text
             {Qt::Key_Delete, {}, ""},
             {Qt::Key_Return, {}, "que"},  // at once
             {Qt::Key_Return, {}, "ste+"},
             {Qt::Key_Escape, {}, "clo"}}) {
        QTest::keyClick(&field, key, keys);
        EXPECT_EQ(signalled(), expected) << key;
    }
    EXPECT_FALSE(bar.isVisible() || bar.hasText());
    QTest::keyClicks(&field, "x");
    bar.open();
    EXPECT_EQ(field.selectedText(), "x");
    EXPECT_TRUE(QTest::qWaitFor([this] { return signalled() == "que"; }));
    for (const auto& [name, expected] : std::vector<std::pair<QString, QString>>{
             {"Next", "ste+"}, {"Previous", "ste-"}, {"Close", "clo"}}) {
        bar.show();
        QTest::mouseClick(&button(name), Qt::LeftButton);
        EXPECT_EQ(signalled(), expected) << name.toStdString();
    }
    bar.open();
    for (const int kind : {1, 2, 0}) {
        part<QComboBox>().setCurrentIndex(kind);
        EXPECT_EQ(part<QCheckBox>().isEnabled(), kind != 1);
        EXPECT_EQ(field.placeholderText().isEmpty(), kind != 1);
        EXPECT_EQ(static_cast<int>(bar.query().kind), kind);
        EXPECT_TRUE(QTest::qWaitFor([this] { return signalled() == "que"; }, 100));
    }
    part<QCheckBox>().click();
    EXPECT_TRUE(bar.query().matchCase);
    EXPECT_TRUE(QTest::qWaitFor([this] { return signalled() == "que"; }, 100));
}

TEST_F(FindBarTest, SaysWhatWasFound) {
    using Search = zelqFindBar::Search;
    QAbstractButton& all = button("Select All Matches");
    const auto says = [&](const QString& text, bool selectable) {
        EXPECT_EQ(said(), text);
        EXPECT_EQ(all.isEnabled(), selectable) << text.toStdString();
    };
    const std::vector<std::tuple<std::size_t, std::size_t, Search, QString>> cases{
        {0, 0, Search::Running, "Searching..."},
        {0, 0, Search::Stopped, ""},
        {0, 0, Search::Complete, "No record found"},
        {0, 1, Search::Running, "Records found: 1"},
        {0, 12345, Search::Stopped, "Records found: 12,345"},
        {0, 2, Search::Complete, "Records found: 2"},
        {1, 2, Search::Running, "1 of 2 records"},
        {1000, 2000, Search::Complete, "1,000 of 2,000 records"}};
    for (const auto& [current, matches, search, text] : cases) {
        bar.showNotice({});
        bar.showFound(current, matches, search);
        const bool selectable = search == Search::Complete && matches > 0;
        says(text, selectable);
        bar.showNotice("besides");
        says(text.isEmpty() ? "besides" : text + " \u2013 besides", selectable);
    }
    QTest::mouseClick(&all, Qt::LeftButton);
    EXPECT_EQ(signalled(), "sel");
    bar.showProblem("bad");
    says("Cannot search: bad \u2013 besides", false);
    EXPECT_EQ(part<QLineEdit>().accessibleDescription(), "bad");
    part<QLineEdit>().setText("y");
    says("", false);
    EXPECT_TRUE(QTest::qWaitFor([this] { return signalled() == "que"; }));
    bar.showFound(1, 1, Search::Complete);
    says("1 of 1 records", true);
    bar.showNothing();
    says("", false);
    EXPECT_FALSE(zelqFindBar(zelqFindBar::Matches::NotSelectable)
                     .findChildren<QPushButton*>()[1]
                     ->isVisibleTo(&bar));

    QProgressBar& progress = part<QProgressBar>();
    QAbstractButton& stop = button("Stop");
    for (const bool late : {false, true}) {
        bar.showProgress(3, 4);
        EXPECT_EQ(progress.value() * 4, progress.maximum() * 3);
        EXPECT_FALSE(progress.isVisible() || stop.isVisible());
        if (late) {
            EXPECT_TRUE(QTest::qWaitFor([&] { return progress.isVisible(); }));
            EXPECT_TRUE(stop.isVisible());
            QTest::mouseClick(&stop, Qt::LeftButton);
            EXPECT_EQ(signalled(), "sto");
            stop.setFocus();
        }
        bar.hideProgress();
        EXPECT_TRUE(part<QLineEdit>().hasFocus());
        QTest::qWait(150);
        EXPECT_FALSE(progress.isVisible() || stop.isVisible());
    }
}

TEST(LogWorker, DeliversOnceWhatItHasAndWhyItHasNot) {
    zelqLogWorker worker;
    std::vector<int> steps;
    QObject::connect(&worker, &zelqLogWorker::progressed, [&steps](int done, int total) {
        EXPECT_EQ(total, 1000);
        steps.push_back(done);
    });
    std::string outcome;
    const auto failed = [&outcome](const zelqStatus& status) { outcome += "!" + status.text; };
    const auto run = [&](const zelqLogWorker::Work& work) {
        outcome.clear();
        worker.start(work, failed);
        EXPECT_EQ(outcome, "");
        EXPECT_TRUE(QTest::qWaitFor([&outcome] { return !outcome.empty(); }));
        QTest::qWait(20);
        return outcome;
    };
    const auto delivery = [&outcome](const char* text) {
        return [&outcome, text] { outcome += text; };
    };
    EXPECT_EQ(run([&](const zelqLogWorker::Control& control) {
                  control.progress(7, 0);  // of what is not known
                  EXPECT_FALSE(control.stop.stop_requested());
                  control.progress(1, 4);
                  QThread::msleep(200);
                  control.progress(4, 4);
                  return delivery("done");
              }),
              "done");
    EXPECT_THAT(steps, testing::AllOf(testing::Contains(250), testing::Not(testing::Contains(7))));
    EXPECT_TRUE(std::ranges::is_sorted(steps) && steps.back() == 1000);
    const auto noMemory = [](const auto&) -> zelqLogWorker::Delivery { throw std::bad_alloc(); };
    EXPECT_EQ(run(noMemory), "!there is not enough memory");
    EXPECT_EQ(run([&](const auto&) { return delivery("again"); }), "again");
    // What is stopped is not delivered, though it had ended.
    for (const bool waits : {false, true}) {
        outcome.clear();
        std::atomic<bool> saw = false;
        worker.start(
            [&](const zelqLogWorker::Control& control) {
                while (waits && !control.stop.stop_requested()) {
                    std::this_thread::yield();
                }
                saw = true;
                return delivery("late");
            },
            failed);
        QThread::msleep(waits ? 0 : 30);
        worker.stop();
        EXPECT_TRUE(saw);
        QTest::qWait(30);
        EXPECT_EQ(outcome, "");
    }
    EXPECT_EQ(run([&](const auto&) { return delivery("at last"); }), "at last");
    auto freed = std::make_shared<int>();
    const std::weak_ptr<int> known = freed;
    worker.free(nullptr);
    worker.free(std::move(freed));
    EXPECT_TRUE(QTest::qWaitFor([&known] { return known.expired(); }));
}

}  // namespace
