#include "sample/zelqSampleLog.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "output/zelqOutputFile.h"

using std::chrono::milliseconds;
using zelqFormat::EntryKind;
using zelqFormat::NameCut;

namespace {

struct TypeShare {
    std::uint16_t type;
    std::uint32_t share;  ///< in a thousand entries
};

/// Stands for any of kUnknownTypes.
constexpr std::uint16_t kUnknownType = 0;

constexpr std::array kTypeShares{
    TypeShare{0x0015, 440}, TypeShare{0x0013, 160},    TypeShare{0x0005, 150},
    TypeShare{0x0003, 70},  TypeShare{0x2002, 50},     TypeShare{0x2003, 20},
    TypeShare{0x2004, 20},  TypeShare{0x2005, 18},     TypeShare{0x2022, 15},
    TypeShare{0x2025, 14},  TypeShare{0x2026, 13},     TypeShare{0x2027, 12},
    TypeShare{0x2028, 11},  TypeShare{kUnknownType, 7}};

constexpr std::array<std::uint16_t, 6> kUnknownTypes{0x0001, 0x0004, 0x0006,
                                                     0x1001, 0x2029, 0x7F00};

constexpr std::array<std::uint32_t, 12> kMajorErrors{0,    2,     5,     12,    22,   110,
                                                     1205, 10048, 20533, 65535, 4711, 0x80040005U};

/// Entry, Exit, API Call and DEBUG, each repeated by its frequency.
constexpr std::array<std::uint32_t, 16> kDetectPointCodes{1, 2, 1, 2, 1, 2, 1, 2,
                                                          1, 2, 3, 3, 3, 4, 4, 4};
constexpr std::uint32_t kNamelessDetectPointCode = 9;

constexpr std::array<std::uint8_t, 16> kBlockCounts{0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 4, 5};

constexpr std::size_t blocksOf(std::size_t data) {
    return (data + zelqSampleTexts::kLongestText - 1) / zelqSampleTexts::kLongestText;
}

/// The largest entries, with room for the longest name.
static_assert(256 + 5 * (zelqFormat::kBlockHeaderSize + zelqSampleTexts::kLongestText) <=
              zelqFormat::kLongestEntry);
static_assert(256 + blocksOf(zelqSampleLog::kMostData) * zelqFormat::kBlockHeaderSize +
                  zelqSampleLog::kMostData <=
              zelqFormat::kLongestEntry);

}  // namespace

zelqSampleLog::zelqSampleLog(std::uint64_t seed, unsigned log, zelqSampleTime::Time start,
                             std::optional<std::size_t> data)
    : random_(seed * 100 + log),
      functions_(zelqSampleFunction::all()),
      texts_(random_),
      start_(start),
      clock_(start),
      data_(data) {
    makeThreads();
}

void zelqSampleLog::makeThreads() {
    constexpr int kProcesses = 28;
    std::uint32_t pid = 300;
    std::uint32_t tid = 0;
    for (int process = 0; process < kProcesses; ++process) {
        pid += 1 + random_.below(700);
        const std::uint32_t threads = 2 + random_.below(6);
        for (std::uint32_t i = 0; i < threads; ++i) {
            tid += 1 + random_.below(9);
            threads_.push_back({.pid = pid, .tid = tid});
        }
    }
    thread_ = threads_.front();
}

std::span<const std::byte> zelqSampleLog::next() {
    const Moment moment = advance();
    if (random_.onceIn(3)) {
        thread_ = threads_[random_.below(static_cast<std::uint32_t>(threads_.size()))];
    }
    const std::uint16_t type = pickType();

    entry_.clear();
    entry_.put16(0);
    entry_.put16(sequence_++);
    entry_.put16(0);
    entry_.put16(type);
    putHeader(zelqFormat::entryLayout(type), moment);
    entry_.set16(zelqFormat::kHeaderOffset, entry_.size() - zelqFormat::kHeaderOffset);
    putBlocks();
    entry_.set16(0, entry_.size());
    return entry_.bytes();
}

zelqStatus zelqSampleLog::write(zelqOutputFile& output, std::uint64_t count) {
    constexpr std::size_t kPiece = std::size_t{1} << 20;
    std::string piece;
    piece.reserve(kPiece + zelqFormat::kLongestEntry);
    for (std::uint64_t i = 0; i < count && output.status().ok(); ++i) {
        const std::span<const std::byte> entry = next();
        piece.append(reinterpret_cast<const char*>(entry.data()), entry.size());
        if (piece.size() >= kPiece) {
            output.write(piece);
            piece.clear();
        }
    }
    return output.write(piece);
}

zelqSampleLog::Moment zelqSampleLog::advance() {
    const std::uint32_t pace = random_.below(10);
    if (pace < 7) {
        clock_ += milliseconds{random_.below(40)};
    } else if (pace < 9) {
        clock_ += milliseconds{40 + random_.below(460)};
    } else {
        clock_ += milliseconds{500 + random_.below(2500)};
    }
    zelqSampleTime::Time time = clock_;
    if (random_.onceIn(64)) {  // a thread that was slow to write its entry
        time = std::max(start_, clock_ - milliseconds{1000 + random_.below(7000)});
    }
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date{day};
    const auto ms = static_cast<std::uint32_t>((time - day).count());
    return {.year = static_cast<std::uint16_t>(static_cast<int>(date.year())),
            .month = static_cast<std::uint8_t>(static_cast<unsigned>(date.month())),
            .day = static_cast<std::uint8_t>(static_cast<unsigned>(date.day())),
            .hour = static_cast<std::uint8_t>(ms / 3'600'000),
            .minute = static_cast<std::uint8_t>(ms / 60'000 % 60),
            .second = static_cast<std::uint8_t>(ms / 1000 % 60),
            .fraction = static_cast<std::uint8_t>(ms / 10 % 100)};
}

std::uint16_t zelqSampleLog::pickType() {
    std::uint32_t share = random_.below(1000);
    std::size_t row = 0;
    while (share >= kTypeShares[row].share) {
        share -= kTypeShares[row].share;
        ++row;
    }
    if (kTypeShares[row].type != kUnknownType) {
        return kTypeShares[row].type;
    }
    return kUnknownTypes[random_.below(kUnknownTypes.size())];
}

void zelqSampleLog::putHeader(const zelqFormat::EntryLayout& layout, const Moment& moment) {
    if (layout.convertsYear) {
        putDated(layout, moment);
    } else if (layout.numberCount > 0) {
        putNumbers(layout.numberCount, moment);
    } else {
        putUnconverted(moment);
    }
}

void zelqSampleLog::putDated(const zelqFormat::EntryLayout& layout, const Moment& moment) {
    entry_.put8(moment.day);
    entry_.put8(moment.month);
    entry_.put16(moment.year);
    entry_.put8(moment.hour);
    entry_.put8(moment.minute);
    entry_.put8(moment.second);
    entry_.put8(moment.fraction);
    entry_.put32(thread_.pid);
    entry_.put32(thread_.tid);

    // The first functions are called most.
    const std::uint32_t end = 1 + random_.below(static_cast<std::uint32_t>(functions_.size()));
    const std::uint32_t function = random_.below(end);
    if (layout.kind == EntryKind::Error) {
        putErrorCodes();
    }
    if (layout.kind != EntryKind::Message) {
        putDetectPoint(function);
    }
    putName(layout, functions_[function]);
}

void zelqSampleLog::putErrorCodes() {
    entry_.put32(kMajorErrors[random_.below(kMajorErrors.size())]);
    const std::uint32_t minor = random_.below(200);
    entry_.put32(random_.onceIn(20) ? 0U - minor : minor);  // some errors are negative numbers
}

void zelqSampleLog::putDetectPoint(std::uint32_t function) {
    entry_.put32(100 + 10 * function + random_.below(10));
    const std::uint32_t code = kDetectPointCodes[random_.below(kDetectPointCodes.size())];
    entry_.put32(random_.onceIn(50) ? kNamelessDetectPointCode : code);
}

void zelqSampleLog::putName(const zelqFormat::EntryLayout& layout,
                            const zelqSampleFunction& function) {
    std::string_view name = function.signature;
    if (layout.nameCut == NameCut::ShortName) {
        name = function.name;
        if (random_.below(3) > 0) {
            name = name.substr(0, zelqFormat::kShortNameSize);
        }
    }
    entry_.putBytes(std::as_bytes(std::span(name)));
    do {
        entry_.put8(0);
    } while (entry_.size() % 4 != 0);
}

/// The reader converts these numbers to host order, and the record takes date and time from the
/// bytes of the result. Most entries get the numbers that show the moment at which they are
/// written.
void zelqSampleLog::putNumbers(unsigned count, const Moment& moment) {
    if (random_.onceIn(32)) {
        entry_.put32(random_.below(5000));
        entry_.put32(static_cast<std::uint32_t>(random_.next() & 0xFFFFFFFF));
    } else {
        entry_.put16(moment.year);
        entry_.put8(moment.month);
        entry_.put8(moment.day);
        entry_.put8(moment.fraction);
        entry_.put8(moment.second);
        entry_.put8(moment.minute);
        entry_.put8(moment.hour);
    }
    entry_.put32(thread_.pid);
    if (count > 3) {
        entry_.put32(thread_.tid);
    } else {
        entry_.putLittle32(thread_.tid);  // the reader converts the first `count` numbers only
    }
    for (unsigned i = 4; i < count; ++i) {
        entry_.put32(random_.below(100'000));
    }
}

/// The reader converts none of this, so it is written in little-endian order.
void zelqSampleLog::putUnconverted(const Moment& moment) {
    entry_.put8(moment.day);
    entry_.put8(moment.month);
    if (random_.onceIn(32)) {
        entry_.put16(moment.year);
    } else {
        entry_.putLittle16(moment.year);
    }
    entry_.put8(moment.hour);
    entry_.put8(moment.minute);
    entry_.put8(moment.second);
    entry_.put8(moment.fraction);
    entry_.putLittle32(thread_.pid);
    entry_.putLittle32(thread_.tid);
}

void zelqSampleLog::putBlocks() {
    if (data_) {
        unsigned block = 0;
        for (std::size_t left = *data_; left != 0;) {
            const std::size_t size = std::min(left, zelqSampleTexts::kLongestText);
            putBlock(block++, size);
            left -= size;
        }
        return;
    }
    const unsigned blocks = kBlockCounts[random_.below(kBlockCounts.size())];
    for (unsigned block = 0; block < blocks; ++block) {
        const std::uint32_t kind = random_.below(100);
        std::size_t size = 0;
        if (kind < 57) {
            size = 1 + random_.below(48);
        } else if (kind < 88) {
            size = 16 + random_.below(161);
        } else if (kind < 97) {
            size = 64 + random_.below(193);
        } else if (kind < 98) {
            size = 256 + random_.below(zelqSampleTexts::kLongestText - 256);
        }
        putBlock(block, size);
    }
}

void zelqSampleLog::putBlock(unsigned number, std::size_t size) {
    std::uint32_t address = 0x2000'0000 + 16 * random_.below(0x40'0000);
    if (!random_.onceIn(3)) {
        address += random_.below(16);
    }
    entry_.put16(zelqFormat::kBlockHeaderSize + size);
    entry_.put16(number + 1);
    entry_.put32(address);
    putData(size);
}

void zelqSampleLog::putData(std::size_t size) {
    const std::uint32_t kind = random_.below(8);
    if (kind < 3) {
        entry_.putBytes(texts_.pick(zelqSampleTexts::Encoding::Ascii, size, random_));
        return;
    }
    if (kind < 5) {
        entry_.putBytes(texts_.pick(zelqSampleTexts::Encoding::Ebcdic, size, random_));
        return;
    }
    const bool counts = kind < 7;
    while (size > 0) {
        std::array<std::byte, 8> piece{};
        if (counts) {
            zelqByteOrder::storeBig32(piece.data(), counter_++);
            zelqByteOrder::storeBig32(piece.data() + 4, 0x100 * counter_);
        } else {
            const std::uint64_t noise = random_.next();
            zelqByteOrder::storeBig32(piece.data(), static_cast<std::uint32_t>(noise >> 32));
            zelqByteOrder::storeBig32(piece.data() + 4,
                                      static_cast<std::uint32_t>(noise & 0xFFFFFFFF));
        }
        const std::size_t part = std::min(size, piece.size());
        entry_.putBytes(std::span(piece).first(part));
        size -= part;
    }
}
