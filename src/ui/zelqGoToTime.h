#pragma once

#include <QWidget>

#include "output/zelqTimeInput.h"

class QAction;
class QLineEdit;
class zelqElidedLabel;
class zelqRecordContainer;
class zelqSession;

/// A field for a time, below the table: goes to the first row that is not before it. Without a date
/// the day is that of the current row.
class zelqGoToTime : public QWidget {
    Q_OBJECT

public:
    /// `window` gets the key that opens it. All must outlive the object.
    zelqGoToTime(QWidget& window, const zelqSession& session, zelqRecordContainer& container,
                 const zelqLocaleText& locale);

    /// Shows the field, with the keyboard in it.
    void open();

signals:
    void opened();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void go();
    void showProblem(const QString& problem);

    const zelqSession& session_;
    zelqRecordContainer& container_;
    zelqTimeInput input_;
    QString example_;
    QLineEdit* field_;
    QAction* warning_;  ///< the mark of bad input, in the field
    zelqElidedLabel* outcome_;
};
