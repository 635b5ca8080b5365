#include <QAction>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <map>
#include <sstream>

#include "resources/zelqIds.h"

#include "GuiTest.h"

namespace {

/// What is done, one word after another, and the rows that then stand there by their TID, with "*"
/// if selected and "-" if expanded. A word is a filter and what is chosen in its dialog: values,
/// "*" for all, "-" for none, "cancel" or "delete"; "pid?1,2" expects these values on offer, in
/// brackets the selected ones, and cancels. Other words: "load:b", "merge:b", "unload:0",
/// "click:1,3" on rows, and the names of commands and keys.
struct Scenario {
    std::string actions;
    std::string rows;
    std::string marks;  ///< the filters whose items are checked
};

const std::map<std::string, int> kCommands{
    {"remove", zelqId::kRemoveAllFilters},
    {"reverse", zelqId::kReverseSelections},
    {"expand", zelqId::kExpandSelected},
    {"expandall", zelqId::kExpandAll},
    {"display", zelqId::kDisplayAll},
    {"selected", zelqId::kDisplayOnlySelected},
    {"nonselected", zelqId::kDisplayOnlyNonSelected},
    {"expanded", zelqId::kDisplayOnlyExpanded},
    {"nonexpanded", zelqId::kDisplayOnlyNonExpanded},
};

const std::map<std::string, QKeyCombination> kKeys{
    {"/", Qt::Key_Slash},
    {"^\\", Qt::CTRL | Qt::Key_Backslash},
    {"^Ins", Qt::CTRL | Qt::Key_Insert},
    {"Return", Qt::Key_Return},
    {"Home", Qt::Key_Home},
    {"sDown", Qt::SHIFT | Qt::Key_Down},
    {"^Down", Qt::CTRL | Qt::Key_Down},
    {"Space", Qt::CTRL | Qt::Key_Space},
};

void PrintTo(const Scenario& scenario, std::ostream* out) {
    *out << scenario.actions;
}

struct Kind {
    std::string name;
    int prompt;
    QString title;
    QString promptText;
};

const std::vector<Kind> kKinds{
    {"type", 11000, "Entry Type Filter Data Entry", "Select the entry types to be displayed"},
    {"time", 11100, "Time Filter Data Entry", "Define the time range to be displayed"},
    {"date", 11400, "Date Filter Data Entry", "Define the dates to be displayed"},
    {"pid", 11500, "PID Filter Data Entry", "Define the process IDs to be displayed"},
    {"tid", 11600, "TID Filter Data Entry", "Define the terminal IDs to be displayed"},
    {"maj", 11700, "Major Error Filter Data Entry", "Define the major errors to be displayed"},
    {"min", 11800, "Minor Error Filter Data Entry", "Define the minor errors to be displayed"},
    {"det", 11900, "Detect Point Filter Data Entry", "Define the detect points to be displayed"},
    {"func", 11200, "Function Filter Data Entry", "Select the functions to be displayed"}};

class ScenarioTest : public GuiTest, public testing::WithParamInterface<Scenario> {
protected:
    ScenarioTest() {
        const zelqDate later{.year = 2027, .month = 1, .day = 2};
        const TestEntry one{.hour = 1, .pid = 1, .tid = 1, .majorError = 1, .name = "Open"};
        const TestEntry two{
            .hour = 2, .pid = 1, .tid = 2, .majorError = 2, .minorError = 5, .name = "Read"};
        const TestEntry three{.hour = 3, .pid = 2, .tid = 3, .majorError = 1, .name = "open"};
        TestEntry four{.hour = 4, .pid = 2, .tid = 4, .majorError = 2, .name = "Open"};
        four.detectPoint = 10;
        const TestEntry five{.type = 5, .date = later, .hour = 26, .pid = 3, .tid = 5};
        const TestEntry six{.type = 0x2002, .hour = 0, .pid = 3, .tid = 6};
        load(folder.write("a", logImage({one, two, three, four, five, six})));
        b_ = folder.write("b", logImage({{.hour = 9, .pid = 1, .tid = 11, .majorError = 1},
                                         {.hour = 8, .pid = 7, .tid = 12, .majorError = 1},
                                         {.hour = 7, .pid = 1, .tid = 13, .majorError = 2}}));
    }

    static std::vector<std::string> split(const std::string& text, char separator) {
        std::vector<std::string> parts;
        std::istringstream stream(text);
        for (std::string part; std::getline(stream, part, separator);) {
            parts.push_back(part);
        }
        return parts;
    }
    static void press(QDialog& dialog, int button) {
        QTest::mouseClick(dialog.findChild<QPushButton*>(QString::number(button)), Qt::LeftButton);
    }

    /// The items of a dialog's list, the selected ones in brackets.
    static std::string items(const QListView& list) {
        std::string text;
        for (int i = 0; i < list.model()->rowCount(); ++i) {
            const QModelIndex index = list.model()->index(i, 0);
            const std::string item = index.data().toString().toStdString();
            text += i == 0 ? "" : ",";
            text += list.selectionModel()->isSelected(index) ? "[" + item + "]" : item;
        }
        return text;
    }

    /// Selects the items or rows with these texts by clicks.
    static void choose(QAbstractItemView& list, int column, const std::string& values) {
        Qt::KeyboardModifiers keys = Qt::NoModifier;
        for (const std::string& value : split(values, ',')) {
            const QModelIndexList found = list.model()->match(
                list.model()->index(0, column), Qt::DisplayRole, QString::fromStdString(value), 1,
                Qt::MatchExactly | Qt::MatchCaseSensitive);
            ASSERT_EQ(found.size(), 1) << value;
            QTest::mouseClick(list.viewport(), Qt::LeftButton, keys,
                              list.visualRect(found[0]).center());
            keys = Qt::ControlModifier;
        }
    }

    void filter(const Kind& kind, char what, const std::string& values) {
        onModalDialog([&](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), kind.title);
            EXPECT_EQ(dialog.size(), QSize(600, 300));
            EXPECT_EQ(dialog.findChild<QLabel*>(QString::number(kind.prompt + 5000))->text(),
                      kind.promptText);
            auto* const list = dialog.findChild<QListView*>(QString::number(kind.prompt + 5001));
            if (what == '?') {
                EXPECT_EQ(items(*list), values);
                QTest::keyClick(&dialog, Qt::Key_Escape);
            } else if (values == "cancel" || values == "delete") {
                press(dialog, values == "cancel" ? zelqId::kFilterCancel : zelqId::kFilterDelete);
            } else {
                press(dialog, zelqId::kFilterDeselectAll);
                if (values == "*") {
                    press(dialog, zelqId::kFilterSelectAll);
                } else if (values != "-") {
                    choose(*list, 0, values);
                }
                press(dialog, zelqId::kFilterOk);
            }
            EXPECT_FALSE(dialog.isVisible());
            dialog.hide();  // a test that failed must not wait for ever
        });
        const auto number = static_cast<int>(&kind - kKinds.data());
        EXPECT_TRUE(window().command(zelqId::kEntryTypeFilter + number));
    }

    void act(const std::string& action) {
        const std::size_t end = action.find_first_of(":?");
        const std::string verb = action.substr(0, end);
        const std::string rest = end < action.size() ? action.substr(end + 1) : "";
        if (const auto command = kCommands.find(verb); command != kCommands.end()) {
            EXPECT_TRUE(window().command(command->second));
        } else if (const auto key = kKeys.find(verb); key != kKeys.end()) {
            QTest::keyClick(&table(), key->second.key(), key->second.keyboardModifiers());
        } else if (verb == "click") {
            choose(table(), static_cast<int>(zelqColumn::Tid), rest);
        } else if (verb == "load") {
            load(b_);
        } else if (verb == "merge") {
            merge(b_);
        } else if (verb == "unload") {
            browser.unloadLog(std::stoi(rest));
            wait();
        } else {
            const auto kind = std::find_if(kKinds.begin(), kKinds.end(),
                                           [&verb](const Kind& k) { return k.name == verb; });
            filter(*kind, action[end], rest);
        }
    }

    std::string rows() {
        std::string text;
        for (int i = 0; i < table().model()->rowCount(); ++i) {
            text += (text.empty() ? "" : " ") +
                    cell(i, static_cast<int>(zelqColumn::Tid)).toStdString();
            text += table().selectionModel()->isRowSelected(i) ? "*" : "";
            text += cell(i, static_cast<int>(zelqColumn::ExpandMark)) == "-" ? "-" : "";
        }
        return text;
    }

    std::string marks() {
        std::string text;
        for (std::size_t i = 0; i < kKinds.size(); ++i) {
            const int id = zelqId::kEntryTypeFilter + static_cast<int>(i);
            const auto* const item = window().findChild<QAction*>(QString::number(id));
            text += item->isChecked() ? (text.empty() ? "" : " ") + kKinds[i].name : "";
        }
        return text;
    }

    std::string b_;  ///< the file of a second log
};

TEST_P(ScenarioTest, LeavesTheseRowsAndMarks) {
    for (const std::string& action : split(GetParam().actions, ' ')) {
        act(action);
    }
    EXPECT_EQ(rows(), GetParam().rows);
    EXPECT_EQ(marks(), GetParam().marks);
}

const Scenario kScenarios[] = {
    {"pid:1,3", "6 1 2 5", "pid"},
    {"pid:1 maj:1", "1", "pid maj"},
    {"tid:- pid:1", "", "pid tid"},
    {"time:02:00:00", "2 5", "time"},  // 26 o'clock is 2 o'clock
    {"date:01-02-27", "5", "date"},
    {"min:5", "2", "min"},
    {"det:10", "4", "det"},
    {"func:Open", "1 4", "func"},
    {"func?[],[Open],[Read],[open]", "6 1 2 3 4 5", ""},
    {"func:Open func?,[Open],Read,open", "1 4", ""},
    {"type?[TRC],[ERR],[MSG]", "6 1 2 3 4 5", ""},
    {"type:TRC,MSG", "6 5", "type"},
    {"type:- type?TRC,ERR,MSG", "", ""},
    {"type:ERR type:*", "1 2 3 4 5 6", ""},  // comes back at the end, unsorted
    {"type:ERR type:delete pid:cancel", "6 1 2 3 4 5", ""},
    {"pid:* maj:cancel tid:delete", "6 1 2 3 4 5", "pid"},
    {"pid:1 pid:cancel", "1 2", ""},
    {"pid:1 maj:1 pid:2", "3", "pid maj"},
    // What the second filter had rejected is given back to the first one's result and stays there.
    {"pid:1 maj:1 pid:2 maj:delete", "2 3 4", "pid"},
    {"pid:1 maj:1 pid:2 maj:delete tid:2,3", "2 3", "pid tid"},
    {"pid:1 maj:1 pid:delete", "6 1 3 4 5", "maj"},
    {"pid:1 maj:1 pid:delete min:0", "1", "maj min"},
    {"type:ERR maj:1 pid:1 type:*", "1 5 6", "pid maj"},
    {"pid:1 maj:1 func:cancel remove", "6 1 2 3 4 5", ""},
    {"pid:1 merge:b", "1 2 13 11", "pid"},
    {"pid:1 merge:b pid?[1],2,3,7", "1 2 13 11", ""},
    {"pid:1 maj:1 merge:b maj:delete", "1 2 13 11", "pid"},  // of b, too
    {"maj:1 load:b", "11 12", "maj"},                        // the order of the file
    {"maj:1 load:b maj:cancel", "12 11", ""},
    {"pid:1 maj:1 load:b pid?[1],2,3,7", "11", "maj"},
    {"pid:1 maj:2 merge:b unload:0 maj:delete", "13 11", "pid"},
    {"pid:1 maj:2 unload:-1 maj:delete pid:delete merge:b", "13 12 11", ""},
    {"pid:1 unload:0 remove", "", ""},
    {"click:1,3 pid:1", "1* 2", "pid"},  // rows keep their selection, those that are hidden too
    {"click:1,3 pid:1 remove", "6 1* 2 3* 4 5", ""},
    {"click:1,3 expand maj:1 remove", "6 1* 2 3* 4 5", ""},
    {"click:1 expand click:3 expand click:1 tid:1,2 remove", "6 1* 2 3- 4 5", ""},
    {"click:1,3 merge:b", "6 1* 2 3* 4 13 12 11 5", ""},
    {"/", "6* 1* 2* 3* 4* 5*", ""},
    {"/ ^\\", "6 1 2 3 4 5", ""},
    {"click:1,3 reverse ^Ins", "6* 1 2* 3 4* 5*", ""},
    {"Home sDown ^Down ^Down Space", "6* 1* 2 3* 4 5", ""},
    {"click:1 Return", "6 1*- 2 3 4 5", ""},
    {"click:1,3 selected", "1* 3*", ""},
    {"click:1,3 nonselected", "6 2 4 5", ""},
    {"click:1,3 expand selected expanded", "1*- 3*-", ""},
    {"click:1,3 expand nonselected display", "6 1* 2 3* 4 5", ""},
    {"click:1,3 expand expanded display", "6 1*- 2 3*- 4 5", ""},
    {"click:1,3 expandall nonexpanded", "", ""},
    {"click:1,3 expand nonexpanded display", "6 1* 2 3* 4 5", ""},
    // Into an empty table they come back as they were parked.
    {"click:3,4 selected / nonselected display", "6 1 2 5 3* 4*", ""},
    {"click:3,4 selected / nonselected display merge:b", "6 1 2 3* 4* 13 12 11 5", ""},
    {"click:3,4 selected pid:1,2", "1 2 3* 4*", "pid"},  // parked ones, too
    {"click:3,4 selected pid:1,2 display", "6 1 2 3* 4* 5", "pid"},
    {"click:3,4 selected unload:0 display", "", ""},
};

INSTANTIATE_TEST_SUITE_P(Scenarios, ScenarioTest, testing::ValuesIn(kScenarios),
                         [](const auto& row) { return "Row" + std::to_string(row.index); });

}  // namespace
