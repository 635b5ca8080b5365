#include "output/zelqListingWriter.h"

#include <algorithm>
#include <new>

#include "output/zelqRecordFormatter.h"

namespace {

constexpr std::size_t kBatchBytes = std::size_t{192} << 10;
/// What one entry needs at most.
constexpr std::size_t kMostOfEntry = zelqFormat::kLongestEntry + zelqTextTable::kMostPut;
static_assert(2 * kMostOfEntry < kBatchBytes);

}  // namespace

zelqListingWriter::zelqListingWriter(const zelqLocaleText& locale, zelqOutputFile& output)
    : locale_(locale), pipeline_(output, [this](std::size_t slot, zelqTextBuffer& text) {
          zelqRecordFormatter formatter(locale_);
          for (const zelqBCnrObject& record : batches_[slot].records) {
              formatter.appendListing(record, zelqAddressForm::Reversed, text);
          }
      }) {
    batches_.resize(pipeline_.slotCount());
}

bool zelqListingWriter::begin() {
    const std::optional<std::size_t> slot = pipeline_.nextSlot();
    if (!slot.has_value()) {
        return false;
    }
    batch_ = &batches_[*slot];
    if (batch_->bytes == nullptr) {
        batch_->bytes.reset(static_cast<std::byte*>(std::malloc(kBatchBytes)));
        if (batch_->bytes == nullptr) {
            throw std::bad_alloc();
        }
    }
    batch_->records.clear();
    batch_->used = 0;
    batch_->textSize = 0;
    return true;
}

bool zelqListingWriter::add(const zelqEntry& entry) {
    if (batch_ == nullptr && !begin()) {
        return false;
    }
    Batch& batch = *batch_;
    std::byte* const place = batch.bytes.get() + batch.used;
    zelqBCnrObject::Origin origin = entry.origin;
    std::ranges::copy(entry.data(), place);
    origin.data = zelqDataPlace(place);
    const std::string_view text = zelqBCnrObject::textOf(entry.header.buffer).text;
    char* const textPlace = reinterpret_cast<char*>(place + origin.expansionLength);
    batch.used += origin.expansionLength + zelqTextTable::put(text, textPlace);
    batch.records.emplace_back(entry.header.buffer, origin, textPlace);
    batch.textSize += zelqRecordFormatter::mostListingText(batch.records.back());
    if (batch.textSize >= zelqTextPipeline::kPieceSize || batch.used + kMostOfEntry > kBatchBytes) {
        submit();
    }
    return true;
}

void zelqListingWriter::submit() {
    batch_ = nullptr;
    pipeline_.submit();
}

const zelqStatus& zelqListingWriter::flush() {
    if (batch_ != nullptr) {
        submit();
    }
    return pipeline_.flush();
}
