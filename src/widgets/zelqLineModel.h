#pragma once

#include <QAbstractListModel>
#include <cstddef>
#include <span>

#include "output/zelqRecordFormatter.h"
#include "session/zelqSession.h"

/// The lines of the expanded records. Every line is rendered when it is asked for, so that a
/// million expanded records take no text.
class zelqLineModel : public QAbstractListModel, public zelqLinesView {
    Q_OBJECT

public:
    /// `session` and `locale` must outlive the model.
    zelqLineModel(const zelqSession& session, const zelqLocaleText& locale,
                  QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

    [[nodiscard]] const zelqExpandedRecords& records() const noexcept { return records_; }
    /// Where the data of the records are read that are not kept in memory.
    [[nodiscard]] const zelqDataSources& dataSources() const noexcept {
        return session_.logs().dataSources();
    }
    [[nodiscard]] const zelqLocaleText& locale() const noexcept { return locale_; }
    /// Whether a row shows what is in its record, and not why that is not here.
    [[nodiscard]] bool isHere(int row) const { return lineAt(row).state == zelqDataState::Here; }
    /// To be called when data were read that were pending.
    void showNews();
    /// Characters of the longest line that was ever shown since the model was empty.
    [[nodiscard]] int longestLine() const noexcept { return longestLine_; }

    void linesAboutToChange() noexcept override { emit recordsAboutToChange(); }
    void linesAboutToBeInserted(std::size_t first, std::size_t count,
                                zelqBCnrObject& record) override;
    void linesInserted() noexcept override;
    void linesAboutToBeRemoved(std::size_t first, std::size_t count) noexcept override;
    void linesRemoved() noexcept override;
    void linesAboutToBeReset(std::size_t longest) noexcept override;
    void linesReset() noexcept override;
    [[nodiscard]] std::size_t longestLine(std::span<zelqBCnrObject* const> records) const override;

signals:
    /// Data were read that somebody did not want to wait for.
    void dataArrived();
    /// The expanded records are about to be moved in memory; who reads them on another thread ends
    /// that. So it does before lines are inserted, removed or reset.
    void recordsAboutToChange();

private:
    [[nodiscard]] zelqRecordFormatter::Line lineAt(int row) const;
    void noteLength(const zelqBCnrObject& record);
    void forgetLengths() noexcept;

    const zelqSession& session_;
    const zelqExpandedRecords& records_;
    const zelqLocaleText& locale_;
    mutable zelqRecordFormatter formatter_;  ///< remembers the line that was asked for last
    mutable bool showsPending_ = false;      ///< a line was asked for whose data are pending
    int longestLine_ = 0;
    bool resets_ = false;  ///< lines come or go by a reset, for their numbers go too far
};
