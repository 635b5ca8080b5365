#include "filters/zelqFilter.h"

#include <array>
#include <utility>

#include "filters/zelqFilterTexts.h"
#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "widgets/zelqValueList.h"

namespace {

constexpr QSize kSize{600, 300};
constexpr QSize kSmallestSize{150, 150};

constexpr std::array kButtons{std::pair{zelqId::kFilterOk, zelqId::kFilterOkText},
                              std::pair{zelqId::kFilterSelectAll, zelqId::kFilterSelectAllText},
                              std::pair{zelqId::kFilterDeselectAll, zelqId::kFilterDeselectAllText},
                              std::pair{zelqId::kFilterDelete, zelqId::kFilterDeleteText},
                              std::pair{zelqId::kFilterCancel, zelqId::kFilterCancelText}};

}  // namespace

zelqFilter::zelqFilter(const zelqFilterContext& context, int promptId, const QString& standIn)
    : zelqFormDialog(context.mainWindow, {},
                     {.frame = zelqId::kFilterDialog,
                      .titleText = promptId + 1,
                      .prompt = promptId + zelqId::kFilterPromptOffset,
                      .promptText = promptId,
                      .buttons = zelqId::kFilterButtons},
                     {.margin = 10,
                      .promptHeight = 20,
                      .aboveControl = 10,
                      .belowControl = 10,
                      .buttonsHeight = 50}),
      offer_(context.offer),
      list_(new zelqValueList(zelqResourceLibrary::text(zelqId::kNoValues))) {
    setDataControl(list_, promptId + zelqId::kFilterPromptOffset + 1, SpareHeight::Control);
    list_->setItems(
        [this, &locale = context.locale](std::size_t item) {
            return zelqFilterTexts::ofItem(*offer_, item, locale);
        },
        offer_->accepted(), standIn);
    for (const auto& [id, textId] : kButtons) {
        addButton(id, textId);
    }
    setMinimumSize(kSmallestSize);
    resizeToFit(kSize);
    centreOnScreen();
}

bool zelqFilter::command(int id) {
    switch (id) {
        case zelqId::kFilterOk:
            finish();
            return true;
        case zelqId::kFilterSelectAll:
            list_->selectItems(true);
            return true;
        case zelqId::kFilterDeselectAll:
            list_->selectItems(false);
            return true;
        case zelqId::kFilterDelete:
            removeRequested_ = true;
            done(zelqId::kCancelled);
            return true;
        case zelqId::kFilterCancel:
            done(zelqId::kCancelled);
            return true;
        default:
            return false;
    }
}

/// Makes the filter and ends the dialog. A list without items, before any log is loaded, offers
/// nothing to choose: a filter made of it would hide every record that is loaded later.
void zelqFilter::finish() {
    if (list_->isEmpty()) {
        done(zelqId::kCancelled);
        return;
    }
    done(zelqId::kAccepted);
    stage_ = offer_->makeStage(list_->takeSelectedItems());
    removeRequested_ = stage_ == nullptr;
}

void zelqFilter::reject() {
    done(zelqId::kCancelled);
}
