#pragma once

#include <QAbstractListModel>
#include <cstddef>
#include <vector>

#include "output/zelqRecordFormatter.h"

#include "session/zelqExpandedRecords.h"

/// The lines of the expanded records. Every line is rendered when it is asked for, so that a
/// million expanded records take no text.
class zelqLineModel : public QAbstractListModel {
    Q_OBJECT

public:
    /// `locale` must outlive the model.
    explicit zelqLineModel(const zelqLocaleText& locale, QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

    [[nodiscard]] const zelqExpandedRecords& records() const noexcept { return records_; }
    /// Characters of the longest line that was ever shown since the model was empty.
    [[nodiscard]] int longestLine() const noexcept { return longestLine_; }

    void insert(zelqBCnrObject& record);
    void insertAll(std::vector<zelqBCnrObject*> records);
    void remove(const zelqBCnrObject& record);
    /// Removes the records that are not marked as expanded any more.
    void removeCollapsed();
    void clear();
    void refreshKeys() noexcept { records_.refreshKeys(); }

private:
    void noteLength(const zelqBCnrObject& record);

    zelqExpandedRecords records_;
    mutable zelqRecordFormatter formatter_;  ///< remembers the line that was asked for last
    int longestLine_ = 0;
};
