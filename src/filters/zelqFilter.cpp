#include "filters/zelqFilter.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <array>
#include <utility>

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "widgets/zelqValueList.h"

namespace {

// The grid, in pixels. The rows in between keep prompt, list and buttons apart.
constexpr int kMargin = 10;
constexpr int kPromptHeight = 20;
constexpr int kButtonsHeight = 50;
constexpr int kColumn = 1;
constexpr int kPromptRow = 1;
constexpr int kListRow = 3;
constexpr int kButtonRow = 5;

constexpr QSize kSize{600, 300};
constexpr QSize kSmallestSize{150, 150};

}  // namespace

zelqFilter::zelqFilter(const zelqFilterContext& context, zelqFilterKind kind, int promptId)
    : QDialog(context.mainWindow), zelqFilterStage(kind), list_(new zelqValueList) {
    setObjectName(QString::number(zelqId::kFilterDialog));
    setWindowTitle(zelqResourceLibrary::text(promptId + 1));
    setUpGrid(promptId);
    setMinimumSize(kSmallestSize);
    resize(kSize);
    if (const QScreen* const screen = QGuiApplication::primaryScreen()) {
        const QRect desktop = screen->geometry();
        move(desktop.left() + desktop.width() / 2 - kSize.width() / 2,
             desktop.top() + desktop.height() / 2 - kSize.height() / 2);
    }
    list_->setFocus();
}

void zelqFilter::setUpGrid(int promptId) {
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    grid->setSpacing(0);
    for (const int between : {kPromptRow + 1, kListRow + 1}) {
        grid->setRowMinimumHeight(between, kMargin);
    }
    grid->setRowStretch(kListRow, 1);

    const int promptControl = promptId + zelqId::kFilterPromptOffset;
    auto* const prompt = new QLabel(zelqResourceLibrary::text(promptId));
    prompt->setObjectName(QString::number(promptControl));
    prompt->setMinimumSize(0, kPromptHeight);
    prompt->setBuddy(list_);
    grid->addWidget(prompt, kPromptRow, kColumn);

    list_->setObjectName(QString::number(promptControl + 1));
    list_->setAccessibleName(prompt->text());
    grid->addWidget(list_, kListRow, kColumn);
    grid->addWidget(makeButtons(), kButtonRow, kColumn);
}

QWidget* zelqFilter::makeButtons() {
    static constexpr std::array kButtons{
        std::pair{zelqId::kFilterOk, zelqId::kFilterOkText},
        std::pair{zelqId::kFilterSelectAll, zelqId::kFilterSelectAllText},
        std::pair{zelqId::kFilterDeselectAll, zelqId::kFilterDeselectAllText},
        std::pair{zelqId::kFilterDelete, zelqId::kFilterDeleteText},
        std::pair{zelqId::kFilterCancel, zelqId::kFilterCancelText}};
    auto* const canvas = new QWidget;
    canvas->setObjectName(QString::number(zelqId::kFilterButtons));
    canvas->setMinimumSize(0, kButtonsHeight);
    auto* const row = new QHBoxLayout(canvas);
    row->setContentsMargins(0, 0, 0, 0);
    for (const auto& [id, textId] : kButtons) {
        auto* const button = new QPushButton(zelqResourceLibrary::text(textId));
        button->setObjectName(QString::number(id));
        button->setDefault(id == zelqId::kFilterOk);
        connect(button, &QPushButton::clicked, this, [this, id = id] { command(id); });
        row->addWidget(button);
    }
    row->addStretch();
    return canvas;
}

bool zelqFilter::command(int id) {
    switch (id) {
        case zelqId::kFilterOk:
            takeSelection();
            done(zelqId::kAccepted);
            return true;
        case zelqId::kFilterSelectAll:
            list_->selectItems(true);
            return true;
        case zelqId::kFilterDeselectAll:
            list_->selectItems(false);
            return true;
        case zelqId::kFilterDelete:
            requestRemoval();
            done(zelqId::kCancelled);
            return true;
        case zelqId::kFilterCancel:
            done(zelqId::kCancelled);
            return true;
        default:
            return false;
    }
}

void zelqFilter::reject() {
    done(zelqId::kCancelled);
}

/// An installed filter is a dialog that stays alive out of sight. Assistive tools must not find a
/// window of it.
void zelqFilter::done(int result) {
    QDialog::done(result);
    destroy();
}
