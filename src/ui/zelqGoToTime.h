#pragma once

#include <QWidget>

#include "output/zelqTimeInput.h"

class QAction;
class QLineEdit;
class zelqElidedLabel;
class zelqLogOperations;
class zelqRecordContainer;

/// A field for a time, below the table: goes to the first row that is not before it. Without a date
/// the day is that of the current row.
class zelqGoToTime : public QWidget {
    Q_OBJECT

public:
    /// `window` gets the key that opens it. All must outlive the object.
    zelqGoToTime(QWidget& window, zelqLogOperations& operations, zelqRecordContainer& container,
                 const zelqLocaleText& locale);

    /// Shows the field, with the keyboard in it.
    void open();

signals:
    /// It is about to be seen. The window takes it then; until then it is in none.
    void opened();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void go();
    void goTo(const zelqTimeInput::Moment& moment);
    void showProblem(const QString& problem);

    zelqLogOperations& operations_;
    zelqRecordContainer& container_;
    zelqTimeInput input_;
    QString example_;
    QLineEdit* field_;
    QAction* warning_;  ///< the mark of bad input, in the field
    zelqElidedLabel* outcome_;
};
