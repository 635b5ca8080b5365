#pragma once

#include <QDialog>
#include <memory>

#include "output/zelqLocaleText.h"
#include "session/zelqFilterChain.h"

class zelqValueList;

/// What a filter dialog looks at; all must outlive it.
struct zelqFilterContext {
    const zelqLogCollection& records;
    const zelqFilterChain& activeFilters;
    const zelqLocaleText& locale;
    QWidget* mainWindow;
};

/// A filter: the modal dialog in which the user chooses what to display and, once accepted, the
/// installed filter that remembers the choice. A derived class offers the values of one attribute
/// in the list.
class zelqFilter : public QDialog, public zelqFilterStage {
    Q_OBJECT

public:
    /// Shows the dialog modally; returns kAccepted or kCancelled of zelqId.
    int showModally() { return exec(); }
    /// True if the user wants no filter of this kind any more.
    [[nodiscard]] bool removeRequested() const noexcept { return removeRequested_; }

    /// Carries out a command of the dialog's buttons. False if it is none of them.
    bool command(int id);

    /// Escape and the close box cancel.
    void reject() override;
    void done(int result) override;

protected:
    /// `promptId`: a text, from which the numbers of the title and of the controls follow.
    zelqFilter(const zelqFilterContext& context, zelqFilterKind kind, int promptId);

    /// The list, which a derived class fills.
    [[nodiscard]] zelqValueList& list() noexcept { return *list_; }
    void requestRemoval() noexcept { removeRequested_ = true; }

    /// OK was pressed: makes the test of what the list has selected.
    virtual void takeSelection() = 0;

private:
    void setUpGrid(int promptId);
    [[nodiscard]] QWidget* makeButtons();

    zelqValueList* list_;
    bool removeRequested_ = false;
};
