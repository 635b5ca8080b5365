#pragma once

#include <QTimer>
#include <QWidget>
#include <cstddef>
#include <optional>

#include "session/zelqSearchPattern.h"

class QAction;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QToolButton;
class zelqElidedLabel;

/// The bar below what is searched: what to look for, the way to the next and the previous match,
/// and what was found. It only asks and shows; zelqFinder searches.
class zelqFindBar : public QWidget {
    Q_OBJECT

public:
    /// What is in it to be selected.
    enum class Matches { Selectable, NotSelectable };

    explicit zelqFindBar(Matches matches, QWidget* parent = nullptr);

    [[nodiscard]] zelqSearchPattern::Query query() const;
    [[nodiscard]] bool hasText() const;

    /// Shows the bar and puts the keyboard into its field, whose text is selected.
    void open();

    enum class Search { Running, Stopped, Complete };
    /// What was found so far. `current`: the number of the match that is the current record,
    /// counted from 1; 0 if that is none.
    void showFound(std::size_t current, std::size_t matches, Search search);
    /// The text is empty again, or what was found is not known any more.
    void showNothing();
    /// Something to say besides, such as that the search has gone past the end; until the next
    /// step or query.
    void showNotice(const QString& notice);
    /// Why there is nothing to be found: marks the field, until the next query.
    void showProblem(const QString& problem);
    /// How much of how much is searched. It is seen only if it takes a while.
    void showProgress(std::size_t done, std::size_t total);
    void hideProgress();

signals:
    /// What to look for is another. Comes a moment after the last key.
    void queryChanged();
    void stepWanted(bool forward);
    void selectAllWanted();
    void stopWanted();
    /// The key for copying was pressed in the field, where nothing is selected: what was found is
    /// meant.
    void copyWanted();
    /// The bar was closed by the user, and is hidden by now.
    void closed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void setUpQuery();
    void setUpSteps();
    void setUpOutcome(Matches matches);
    void noteQuery(int delay);
    void showOutcome();
    void closeBar();

    QLineEdit* field_;
    QAction* warning_;  ///< the mark of bad input, in the field
    QComboBox* kind_;
    QCheckBox* matchCase_;
    QToolButton* previous_;
    QToolButton* next_;
    QPushButton* selectAll_;
    QProgressBar* progress_;
    QPushButton* stop_;
    zelqElidedLabel* outcome_;
    QToolButton* close_;
    QTimer queryDelay_;
    QTimer progressDelay_;
    QString counter_;
    QString notice_;
    QString problem_;
};
