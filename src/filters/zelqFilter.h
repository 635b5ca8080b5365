#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "output/zelqLocaleText.h"
#include "session/zelqFilterChain.h"
#include "widgets/zelqFormDialog.h"

class zelqValueList;

/// What a filter dialog looks at; all must outlive it.
struct zelqFilterContext {
    const zelqLogCollection& records;
    const zelqFilterChain& activeFilters;
    const zelqLocaleText& locale;
    QWidget* mainWindow;
};

/// The dialog in which the user chooses what a filter displays. A derived class offers the values
/// of one attribute in the list. The dialog starts from the installed filter of its kind, and makes
/// the filter that is to take its place.
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
    /// `promptId`: a text, from which the numbers of the title and of the controls follow.
    zelqFilter(const zelqFilterContext& context, zelqFilterKind kind, int promptId);

    [[nodiscard]] zelqFilterKind kind() const noexcept { return kind_; }
    /// The list, which a derived class fills.
    [[nodiscard]] zelqValueList& list() noexcept { return *list_; }

    /// OK was pressed: the test of the new filter; nothing if it would hide nothing and is not
    /// needed. `selectedItems`: whether each item of the list is selected. The list asks for no
    /// text of an item from then on.
    [[nodiscard]] virtual std::optional<zelqRecordTest> makeTest(
        std::vector<bool> selectedItems) = 0;

private:
    void finish();

    zelqFilterKind kind_;
    zelqValueList* list_;
    std::unique_ptr<zelqFilterStage> stage_;
    bool removeRequested_ = false;
};
