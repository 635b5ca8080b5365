#include "ui/zelqRowMenu.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLocale>
#include <QMenu>
#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <utility>

#include "filters/zelqFilterTexts.h"
#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "session/zelqFilterOffer.h"
#include "ui/zelqBWindow.h"
#include "ui/zelqRowCopy.h"
#include "ui/zelqRowMarks.h"
#include "widgets/zelqPlainText.h"

namespace {

/// Characters of a value in the menu; a function's name can have hundreds.
constexpr qsizetype kLongestValue = 40;

struct Attribute {
    zelqColumn column;
    zelqFilterKind kind;
    int nameId;
};

constexpr std::array kAttributes{
    Attribute{zelqColumn::EntryType, zelqFilterKind::EntryType, zelqId::kEntryTypeAttribute},
    Attribute{zelqColumn::Time, zelqFilterKind::Time, zelqId::kHeadingTime},
    Attribute{zelqColumn::Date, zelqFilterKind::Date, zelqId::kHeadingDate},
    Attribute{zelqColumn::Pid, zelqFilterKind::Pid, zelqId::kHeadingPid},
    Attribute{zelqColumn::Tid, zelqFilterKind::Tid, zelqId::kHeadingTid},
    Attribute{zelqColumn::MajorError, zelqFilterKind::MajorError, zelqId::kHeadingMajorError},
    Attribute{zelqColumn::MinorError, zelqFilterKind::MinorError, zelqId::kHeadingMinorError},
    Attribute{zelqColumn::DetectPoint, zelqFilterKind::DetectPoint, zelqId::kHeadingDetectPoint},
    Attribute{zelqColumn::Function, zelqFilterKind::Function, zelqId::kHeadingFunction},
};

/// A value in the text of a menu's item, where "&" would make a mnemonic.
QString itemText(const QString& value) {
    QString text = zelqPlainText::visible(value);
    if (text.isEmpty()) {
        text = zelqResourceLibrary::text(zelqId::kNoFunctionName);
    } else if (text.size() > kLongestValue) {
        text = text.left(kLongestValue - 1) + QChar(0x2026);
    }
    return text.replace(u'&', QStringLiteral("&&"));
}

/// The rows from the first one on whose records have the value that a record has.
void selectSame(zelqFilterKind kind, const zelqBCnrObject& record,
                std::span<zelqBCnrObject* const> shown, zelqRowSelection::Rows& rows) {
    const auto select = [&rows, shown](const auto& isSame) {
        for (std::size_t row = 0; row < rows.size(); ++row) {
            rows.set(row, isSame(*shown[row]));
        }
    };
    if (kind == zelqFilterKind::EntryType) {
        const auto category = zelqEntryTypeTest::categoryOf(record.entryType());
        select([category](const zelqBCnrObject& other) {
            return zelqEntryTypeTest::categoryOf(other.entryType()) == category;
        });
    } else if (kind == zelqFilterKind::Function) {
        const std::string name = record.function().string();
        select([&name](const zelqBCnrObject& other) { return other.function() == name; });
    } else {
        const std::uint32_t value = zelqValueTest::valueOf(kind, record);
        select([kind, value](const zelqBCnrObject& other) {
            return zelqValueTest::valueOf(kind, other) == value;
        });
    }
}

}  // namespace

zelqRowMenu::zelqRowMenu(zelqBWindow& window, zelqLogOperations& operations, zelqRowMarks& marks)
    : QObject(&window), window_(window), operations_(operations), marks_(marks) {
    connect(&window.container(), &zelqRecordContainer::menuWanted, this,
            [this](const QPoint& where, int section) {
                window_.attempt([this, &where, section] { popUp(where, section); });
            });
}

std::optional<zelqFilterKind> zelqRowMenu::kindFor(int section) const {
    const zelqRecordContainer& table = window_.container();
    const bool byKey = section < 0;
    const zelqColumn column =
        table.recordModel().columnAt(byKey ? table.currentIndex().column() : section);
    for (const Attribute& attribute : kAttributes) {
        if (attribute.column == column) {
            return attribute.kind;
        }
    }
    return byKey ? std::optional(zelqFilterKind::EntryType) : std::nullopt;
}

void zelqRowMenu::popUp(const QPoint& where, int section) {
    const zelqBCnrObject* const record = window_.container().cursoredRecord();
    if (record == nullptr) {
        return;
    }
    auto* const menu = new QMenu(&window_);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // What the menu is about may be gone when the rows have changed.
    connect(window_.container().model(), &QAbstractItemModel::modelAboutToBeReset, menu,
            &QMenu::close);
    fill(*menu, *record, kindFor(section));
    menu->popup(where);
}

void zelqRowMenu::fill(QMenu& menu, const zelqBCnrObject& record,
                       std::optional<zelqFilterKind> kind) {
    const auto add = [this, &menu](int textId, std::function<void()> act) {
        QAction* const action = menu.addAction(zelqResourceLibrary::text(textId));
        connect(action, &QAction::triggered, this,
                [this, act = std::move(act)] { operations_.whenSettled(act); });
        return action;
    };
    if (kind.has_value()) {
        addFilters(menu, record, *kind);
        menu.addSeparator();
    }
    add(zelqId::kExpand, [this] {
        window_.command(zelqId::kExpand);
    })->setEnabled(record.opensToExpand());
    add(zelqId::kUnexpand, [this] {
        window_.command(zelqId::kUnexpand);
    })->setEnabled(record.expanded());
    menu.addSeparator();
    add(zelqId::kCopyRows, [this] { copy(Copies::Rows); });
    add(zelqId::kCopyRowsWithData, [this] { copy(Copies::RowsAndData); });
    menu.addSeparator();
    const bool isMarked = record.isIn(zelqBCnrObject::Bookmarked);
    add(isMarked ? zelqId::kClearMark : zelqId::kSetMark, [this] {
        marks_.toggle();
    })->setShortcut(Qt::CTRL | Qt::Key_F2);
    add(zelqId::kSelectMarked, [this] {
        marks_.selectMarked();
    })->setEnabled(!operations_.session().bookmarked().empty());
    if (!window_.container().actions().empty()) {
        menu.addSeparator();
        menu.addActions(window_.container().actions());
    }
}

void zelqRowMenu::addFilters(QMenu& menu, const zelqBCnrObject& record, zelqFilterKind kind) {
    const auto* const attribute = std::ranges::find(kAttributes, kind, &Attribute::kind);
    const QString name = zelqResourceLibrary::text(attribute->nameId);
    const QString value = itemText(
        kind == zelqFilterKind::EntryType
            ? zelqFilterTexts::ofCategory(zelqEntryTypeTest::categoryOf(record.entryType()))
            : zelqRecordColumns::text(record, attribute->column, window_.locale()));
    const auto add = [&](int textId, std::function<void()> act) {
        connect(menu.addAction(zelqResourceLibrary::text(textId).arg(name, value)),
                &QAction::triggered, this,
                [this, act = std::move(act)] { operations_.whenSettled(act); });
    };
    add(zelqId::kShowOnly, [this, kind] { filter(kind, Shows::Only); });
    add(zelqId::kHide, [this, kind] { filter(kind, Shows::Others); });
    add(zelqId::kSelectAllWith, [this, kind] { selectAllWith(kind); });
}

/// Does what the filter's dialog does when OK is pressed after all other items were deselected, or
/// this one.
void zelqRowMenu::filter(zelqFilterKind kind, Shows shows) {
    const zelqBCnrObject* const record = window_.container().cursoredRecord();
    if (record == nullptr) {
        return;
    }
    const zelqWaitPointer pointer(window_);
    // Nothing else is done until both parts are.
    const auto stage = std::make_shared<std::unique_ptr<zelqFilterStage>>();
    const auto isMade = std::make_shared<bool>(false);
    const auto makeStage = [this, kind, shows, record, stage, isMade](const std::stop_token&) {
        const zelqSession& session = operations_.session();
        if (!session.logs().has(*record)) {
            return;  // an operation before this one has unloaded it
        }
        zelqFilterOffer offer(kind, session.logs(), session.filters());
        std::vector<bool> items =
            shows == Shows::Others ? offer.accepted() : std::vector<bool>(offer.accepted().size());
        items[offer.itemOf(*record)] = shows == Shows::Only;
        *stage = offer.makeStage(std::move(items));
        *isMade = true;
    };
    operations_.lookUp(makeStage, [this, kind, stage, isMade] {
        if (*isMade) {
            const bool removes = *stage == nullptr;
            window_.applyChoice(kind, std::move(*stage), removes);
        }
    });
}

void zelqRowMenu::selectAllWith(zelqFilterKind kind) {
    const zelqBCnrObject* const record = window_.container().cursoredRecord();
    if (record == nullptr) {
        return;
    }
    const zelqWaitPointer pointer(window_);
    const auto rows = std::make_shared<zelqRowSelection::Rows>();
    const std::size_t most = window_.container().rowLimit();
    const auto select = [this, kind, record, rows, most](const std::stop_token&) {
        const zelqSession& session = operations_.session();
        if (session.logs().has(*record)) {  // an operation before this one may have unloaded it
            rows->resize(std::min(session.shown().size(), most));
            selectSame(kind, *record, session.shown().records(), *rows);
        }
    };
    operations_.lookUp(select, [this, rows] {
        if (!rows->empty()) {
            window_.container().selectRows(std::move(*rows));
        }
    });
}

/// Copies the selected rows if the current one is among them, else that one alone.
void zelqRowMenu::copy(Copies what) {
    const zelqRecordContainer& table = window_.container();
    zelqBCnrObject* const record = table.cursoredRecord();
    if (record == nullptr) {
        return;
    }
    const zelqWaitPointer pointer(window_);
    const auto number = [](std::size_t value) {
        return QLocale().toString(static_cast<qulonglong>(value));
    };
    const auto row = static_cast<std::size_t>(table.currentIndex().row());
    const bool copiesSelection =
        row < table.rowsSelected().size() && table.rowsSelected().test(row);
    const std::size_t count = copiesSelection ? table.selectionSummary().count : 1;
    if (count > zelqRowCopy::kMostRows) {
        window_.statusLine().showOutcome(zelqResourceLibrary::text(zelqId::kTooManyRows)
                                             .arg(number(count), number(zelqRowCopy::kMostRows)));
        return;
    }
    const std::vector<zelqBCnrObject*> records =
        copiesSelection ? table.selectedRecords() : std::vector<zelqBCnrObject*>{record};
    const zelqRowCopy rows(records, table.recordModel(), window_.locale());
    const QString copied = zelqResourceLibrary::text(zelqId::kRowsCopied).arg(number(count));
    if (what == Copies::Rows) {
        QGuiApplication::clipboard()->setText(rows.text());
        window_.statusLine().showOutcome(copied);
        return;
    }
    std::optional<zelqRowCopy::WithData> copy = rows.withData(operations_.session());
    if (!copy.has_value()) {
        window_.statusLine().showOutcome(zelqResourceLibrary::text(zelqId::kTooManyLines)
                                             .arg(number(count), number(zelqRowCopy::kMostLines)));
    } else if (copy->needsReading) {
        operations_.copy({.text = [copy = std::move(*copy)](
                                      auto& formatter,
                                      const auto& goesOn) { return copy.text(formatter, goesOn); },
                          .total = static_cast<qint64>(count),
                          .outcome = copied});
    } else {
        zelqRecordFormatter formatter(window_.locale());
        QGuiApplication::clipboard()->setText(
            copy->text(formatter, [](qint64 /*done*/) { return true; }));
        window_.statusLine().showOutcome(copied);
    }
}
