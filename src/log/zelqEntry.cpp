#include "log/zelqEntry.h"

const zelqBCnrObject& zelqEntry::record() const {
    if (!record_.has_value()) {
        const zelqTextTable::Place text = text_.set(zelqBCnrObject::textOf(header.buffer).text);
        record_.emplace(header.buffer, origin, text);
        record_->setEntryIndex(static_cast<std::int32_t>(place.number));
    }
    return *record_;
}
