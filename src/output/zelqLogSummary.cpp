#include "output/zelqLogSummary.h"

#include "output/zelqIsoTime.h"

void zelqLogSummary::add(const zelqBCnrObject& record, std::uint64_t bytes) {
    ++entries_;
    bytes_ += bytes;
    ++types_[static_cast<std::size_t>(record.icon())];
    const bool isError = record.icon() == zelqRecordIcon::Error;
    if (zelqIsoTime::hasDate(record.timestamp())) {
        times_.add(zelqIsoTime::seconds(record.timestamp()), isError);
    } else {
        ++withoutDate_;
    }
    pids_.add(record.pid());
    if (isError) {
        majorErrors_.add(record.majorError());
        minorErrors_.add(record.minorError());
    }
    const zelqText name = record.function();
    if (name.end.empty()) {
        if (!name.start.empty()) {
            functions_.add(name.start);
        }
        return;
    }
    function_.clear();
    name.appendTo(function_);
    functions_.add(std::string_view(function_));
}

void zelqLogSummary::merge(const zelqLogSummary& other) {
    entries_ += other.entries_;
    bytes_ += other.bytes_;
    findings_ += other.findings_;
    withoutDate_ += other.withoutDate_;
    for (std::size_t i = 0; i < types_.size(); ++i) {
        types_[i] += other.types_[i];
    }
    times_.merge(other.times_);
    functions_.merge(other.functions_);
    pids_.merge(other.pids_);
    majorErrors_.merge(other.majorErrors_);
    minorErrors_.merge(other.minorErrors_);
}
