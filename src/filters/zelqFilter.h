#pragma once

#include <memory>
#include <utility>

#include "output/zelqLocaleText.h"
#include "session/zelqFilterOffer.h"
#include "widgets/zelqFormDialog.h"

class zelqValueList;

/// What a filter dialog is made of.
struct zelqFilterContext {
    std::shared_ptr<zelqFilterOffer> offer;  ///< of the filter's kind; the dialog uses it up
    const zelqLocaleText& locale;            ///< this and the window must outlive the dialog
    QWidget* mainWindow;
};

/// The dialog in which the user chooses what a filter displays, from what is on offer. It starts
/// from the installed filter of its kind, and makes the filter that is to take its place.
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
    zelqFilter(const zelqFilterContext& context, int promptId, const QString& standIn = {});

private:
    void finish();

    std::shared_ptr<zelqFilterOffer> offer_;
    zelqValueList* list_;
    std::unique_ptr<zelqFilterStage> stage_;
    bool removeRequested_ = false;
};
