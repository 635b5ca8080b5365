#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <vector>

#include "filters/zelqFilterChain.h"
#include "output/zelqLocaleText.h"

class QListView;

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

    /// Fills the list; `text(i)` and `selected(i)` tell of item i. Call once.
    void setItems(std::size_t count, std::function<QString(std::size_t)> text,
                  const std::function<bool(std::size_t)>& selected);
    /// Whether each item is selected.
    [[nodiscard]] std::vector<bool> selectedItems() const;
    void requestRemoval() noexcept { removeRequested_ = true; }

    /// OK was pressed: makes the test of what the list has selected.
    virtual void takeSelection() = 0;

private:
    void setUpGrid(int promptId);
    [[nodiscard]] QWidget* makeButtons();

    QListView* list_;
    bool removeRequested_ = false;
};
