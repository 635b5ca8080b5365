#pragma once

#include <new>

#include "session/zelqInvariant.h"
#include "session/zelqSession.h"

// What the transitions of a session have around them. For the sources of zelqSession only.

/// The end of a transition in debug builds: everything that always has to hold holds.
class zelqSession::Transition {
public:
    explicit Transition(const zelqSession& session) noexcept : session_(session) {}
    Transition(const Transition&) = delete;
    Transition& operator=(const Transition&) = delete;
    ~Transition() {
        if constexpr (zelqInvariant::kChecked) {
            if (session_.rowChanges_ == 0) {
                try {
                    session_.checkInvariants();
                } catch (const std::bad_alloc&) {
                    return;  // there is no memory to check with, which breaks none of them
                }
            }
        }
    }

private:
    const zelqSession& session_;
};

/// Brackets a change of the shown records. Within another one it does nothing.
class zelqSession::RowsChange {
public:
    explicit RowsChange(zelqSession& session, zelqRowsView::Fate fate = zelqRowsView::Fate::Stay)
        : session_(session) {
        if (session_.rowChanges_ == 0 && session_.linesView_ != nullptr) {
            session_.linesView_->linesAboutToChange();  // entry numbers may
        }
        if (session_.rowChanges_ == 0 && session_.rowsView_ != nullptr) {
            session_.rowsView_->rowsAboutToChange(fate);
        }
        ++session_.rowChanges_;
    }
    RowsChange(const RowsChange&) = delete;
    RowsChange& operator=(const RowsChange&) = delete;
    ~RowsChange() {
        if (--session_.rowChanges_ == 0 && session_.rowsView_ != nullptr) {
            session_.rowsView_->rowsChanged();
        }
    }

private:
    zelqSession& session_;
};
