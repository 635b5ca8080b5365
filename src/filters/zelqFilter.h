#pragma once

#include <memory>
#include <utility>

#include "output/zelqLocaleText.h"
#include "session/zelqFilterOffer.h"
#include "widgets/zelqFormDialog.h"

class zelqValueList;

/// What a filter dialog looks at; all must outlive it.
struct zelqFilterContext {
    const zelqLogCollection& records;
    const zelqFilterChain& activeFilters;
    const zelqLocaleText& locale;
    QWidget* mainWindow;
};

/// The dialog in which the user chooses what a filter displays, from what zelqFilterOffer offers.
/// It starts from the installed filter of its kind, and makes the filter that is to take its place.
class zelqFilter : public zelqFormDialog {
    Q_OBJECT

public:
    /// The new filter, once; null unless OK ended the dialog, and if no filter is needed.
    [[nodiscard]] std::unique_ptr<zelqFilterStage> takeStage() noexcept {
        return std::move(stage_);
    }
    /// True if the user wants no filter of this kind any more.
    [[nodiscard]] bool removeRequested() const noexcept { return removeRequested_; }

    bool command(int id) override;

    /// Escape and the close box cancel.
    void reject() override;

protected:
    /// `promptId`: a text, from which the numbers of the title and of the controls follow;
    /// `standIn`: what the list shows for a value whose text is empty.
    zelqFilter(const zelqFilterContext& context, zelqFilterKind kind, int promptId,
               const QString& standIn = {});

private:
    void finish();

    zelqFilterOffer offer_;
    zelqValueList* list_;
    std::unique_ptr<zelqFilterStage> stage_;
    bool removeRequested_ = false;
};
