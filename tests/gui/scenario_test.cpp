#include <QAction>
#include <map>

#include "GuiTest.h"

namespace {

/// Actions, one word after another, and the rows afterwards: the TIDs, with "*" if selected, "-" if
/// expanded and "_" if the mark is blank. A word is a filter and
/// what is chosen in its dialog: values, "*" for all, "-" for none, "cancel" or "delete";
/// "pid?1,2" expects these values on offer, in brackets the selected ones, and cancels. Other
/// words: "load:b", "merge:b", "unload:0", "click:1,3" on rows, and the names of commands and keys.
struct Scenario {
    const char* actions;
    const char* rows;
    const char* marks;  ///< the filters whose items are checked
};

const std::map<QString, int> kCommands{
    {"remove", zelqId::kRemoveAllFilters},      {"reverse", zelqId::kReverseSelections},
    {"expand", zelqId::kExpandSelected},        {"unexpand", zelqId::kUnexpandSelected},
    {"expandnon", zelqId::kExpandNonSelected},  {"unexpandnon", zelqId::kUnexpandNonSelected},
    {"expandall", zelqId::kExpandAll},          {"display", zelqId::kDisplayAll},
    {"selected", zelqId::kDisplayOnlySelected}, {"nonselected", zelqId::kDisplayOnlyNonSelected},
    {"expanded", zelqId::kDisplayOnlyExpanded}, {"nonexpanded", zelqId::kDisplayOnlyNonExpanded},
};

const std::map<QString, QKeyCombination> kKeys{
    {"/", Qt::Key_Slash},
    {"^Back", Qt::CTRL | Qt::Key_Backslash},
    {"^Ins", Qt::CTRL | Qt::Key_Insert},
    {"Return", Qt::Key_Return},
    {"Home", Qt::Key_Home},
    {"sEnd", Qt::SHIFT | Qt::Key_End},
    {"Right", Qt::Key_Right},
    {"sDown", Qt::SHIFT | Qt::Key_Down},
    {"^Down", Qt::CTRL | Qt::Key_Down},
    {"Space", Qt::CTRL | Qt::Key_Space},
};

void PrintTo(const Scenario& scenario, std::ostream* out) {
    *out << scenario.actions;
}

/// In the order of their commands.
const QStringList kFilters{"type", "time", "date", "pid", "tid", "maj", "min", "det", "func"};

class ScenarioTest : public GuiTest, public testing::WithParamInterface<Scenario> {
protected:
    ScenarioTest() {
        const zelqDate later{.year = 2027, .month = 1, .day = 2};
        const TestEntry one{.hour = 1, .pid = 1, .tid = 1, .majorError = 1, .name = "Open"};
        const TestEntry two{
            .hour = 2, .pid = 1, .tid = 2, .majorError = 2, .minorError = 5, .name = "Read"};
        const TestEntry three{.hour = 3, .pid = 2, .tid = 3, .majorError = 1, .name = "open"};
        const TestEntry four{
            .hour = 4, .pid = 2, .tid = 4, .majorError = 2, .detectPoint = 10, .name = "Open"};
        const TestEntry five{.type = 5, .date = later, .hour = 26, .pid = 3, .tid = 5};
        const TestEntry six{.type = 0x2002, .hour = 0, .pid = 3, .tid = 6};
        load(write("a", {one, two, three, four, five, six}));
        const TestEntry cut{.hour = 7, .pid = 1, .tid = 13, .majorError = 2, .entryLength = 32};
        b_ = write("b", {{.hour = 9, .pid = 1, .tid = 11, .majorError = 1},
                         {.hour = 8, .pid = 7, .tid = 12, .majorError = 1},
                         cut});
    }

    /// Selects the items or rows with these texts by clicks.
    static void choose(QAbstractItemView& list, int column, const QString& values) {
        Qt::KeyboardModifiers keys = Qt::NoModifier;
        for (const QString& value : values.split(',')) {
            const QModelIndexList found =
                list.model()->match(list.model()->index(0, column), Qt::DisplayRole, value, 1,
                                    Qt::MatchExactly | Qt::MatchCaseSensitive);
            ASSERT_EQ(found.size(), 1) << value.toStdString();
            QTest::mouseClick(list.viewport(), Qt::LeftButton, keys,
                              list.visualRect(found[0]).center());
            keys = Qt::ControlModifier;
        }
    }

    void filter(int number, bool offers, const QString& values) {
        inDialog(zelqId::kEntryTypeFilter + number, [&](QDialog& dialog, QListView& list) {
            if (offers) {
                EXPECT_EQ(items(list).replace(' ', '_'), values);
                QTest::keyClick(&dialog, Qt::Key_Escape);
            } else if (values == "cancel" || values == "delete") {
                press(dialog, values == "cancel" ? zelqId::kFilterCancel : zelqId::kFilterDelete);
            } else {
                press(dialog, zelqId::kFilterDeselectAll);
                if (values == "*") {
                    press(dialog, zelqId::kFilterSelectAll);
                } else if (values != "-") {
                    choose(list, 0, values);
                }
                press(dialog, zelqId::kFilterOk);
            }
        });
    }

    void act(const QString& action) {
        const bool offers = action.contains('?');
        const QString verb = action.section(offers ? '?' : ':', 0, 0);
        const QString rest = action.mid(verb.size() + 1);
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
            unload(rest.toInt());
        } else {
            filter(static_cast<int>(kFilters.indexOf(verb)), offers, rest);
        }
    }

    QString rows() {
        QStringList texts;
        for (int i = 0; i < table().model()->rowCount(); ++i) {
            const QString mark = cell(i, static_cast<int>(zelqColumn::ExpandMark));
            texts += cell(i, static_cast<int>(zelqColumn::Tid)) +
                     (table().selectionModel()->isRowSelected(i) ? "*" : "") +
                     (mark == "-"   ? "-"
                      : mark == " " ? "_"
                                    : "");
        }
        return texts.join(' ');
    }

    QString marks() {
        QStringList texts;
        for (int i = 0; i < kFilters.size(); ++i) {
            const QString id = QString::number(zelqId::kEntryTypeFilter + i);
            texts += window().findChild<QAction*>(id)->isChecked() ? kFilters[i] : QString();
        }
        texts.removeAll("");
        return texts.join(' ');
    }

    std::string b_;  ///< the file of a second log
};

TEST_P(ScenarioTest, LeavesTheseRowsAndMarks) {
    for (const QString& action : QString(GetParam().actions).split(' ')) {
        act(action);
    }
    EXPECT_EQ(rows(), GetParam().rows);
    EXPECT_EQ(marks(), GetParam().marks);
}

const Scenario kScenarios[] = {
    {"pid:1 maj:1", "1", "pid maj"},
    {"tid:- pid:1", "", "pid tid"},
    {"time:02:00:00", "2 5", "time"},  // 26 o'clock is 2 o'clock
    {"date:01-02-27", "5", "date"},
    {"min:5 func:Read", "2", "min func"},
    {"det:10 type:ERR", "4", "type det"},
    {"func:Open func:delete", "1 4 2 3 5 6", ""},
    {"func?[(no_name)],[Open],[Read],[open]", "6 1 2 3 4 5", ""},
    {"func:Open func?(no_name),[Open],Read,open", "1 4", ""},
    {"type?[TRC],[ERR],[MSG]", "6 1 2 3 4 5", ""},
    {"type:ERR type:*", "1 2 3 4 5 6", ""},  // comes back at the end, unsorted
    {"type:ERR type:delete pid:cancel", "6 1 2 3 4 5", ""},
    {"pid:1 pid:cancel", "1 2", ""},
    {"pid:1 merge:b pid?[1],2,3,7", "1 2 13 11", ""},
    {"pid:1 maj:1 load:b pid?[1],2,3,7", "11", "maj"},
    {"click:1,3 pid:1 remove", "6 1* 2 3* 4 5", ""},
    {"/ ^Back", "6 1 2 3 4 5", ""},
    {"click:1,3 reverse ^Ins", "6* 1 2* 3 4* 5*", ""},
    {"Home sDown ^Down ^Down Space", "6* 1* 2 3* 4 5", ""},
    {"click:3 sEnd Right", "6 1 2 3* 4* 5*", ""},
    {"click:1 Return", "6 1*- 2 3 4 5", ""},
    {"click:1 Return Return", "6 1* 2 3 4 5", ""},
    {"click:1,2 expandnon expand unexpandnon", "6 1*- 2*- 3 4 5", ""},
    {"click:1,2 expandall unexpand", "6- 1* 2* 3- 4- 5-", ""},
    {"merge:b click:13 Return", "6 1 2 3 4 13* 12 11 5", ""},  // has nothing to expand
    {"click:1,3 expand selected expanded", "1*- 3*-", ""},
    {"click:3,4 selected / nonselected display", "6 1 2 5 3* 4*", ""},
};

INSTANTIATE_TEST_SUITE_P(Scenarios, ScenarioTest, testing::ValuesIn(kScenarios),
                         [](const auto& row) { return "Row" + std::to_string(row.index); });

}  // namespace
