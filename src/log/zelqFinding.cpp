#include "log/zelqFinding.h"

namespace {

std::string number(std::uint64_t value) {
    return std::to_string(value);
}

}  // namespace

std::string zelqFinding::text() const {
    return "entry " + number(entry) + ", offset " + number(offset) + ": " + what();
}

std::string zelqFinding::what() const {
    switch (kind) {
        case Kind::EntryTooShort:
            return "entry length " + number(value) +
                   " is under 8; the entry is kept and the rest of the file is not read";
        case Kind::HeaderTooShort:
            return "header length " + number(value) +
                   " is under 4; the entry has no header fields of its own";
        case Kind::HeaderTooLong:
            return "header length " + number(value) +
                   " is over 256; the bytes past the first 256 are skipped";
        case Kind::EntryEndsInHeader:
            return "entry length " + number(value) + " ends inside the header of " + number(limit) +
                   " bytes; the entry has no expansion data";
        case Kind::FileEndsInEntry:
            return "the file ends after " + number(value) + " of the entry's " + number(limit) +
                   " bytes; the entry is built from them";
        case Kind::FileEndsBehindEntry:
            return "the file ends inside the last block; bytes behind the entry that are not "
                   "read: " +
                   number(value);
        case Kind::BlockEmpty:
            return "block length is 0; the blocks behind it are not counted";
        case Kind::BlockTooShort:
            return "block length " + number(value) + " is under 8; the block is kept as it stands";
        case Kind::BlockPastEntry:
            return "block length " + number(value) + " runs past the " + number(limit) +
                   " bytes left in the entry; the block is cut there";
        case Kind::LogChanged:
            return "the log has changed on disk since it was read; data that are not what they "
                   "were are not shown";
        case Kind::LogUnreadable:
            return "the log cannot be read again; data that cannot be read are not shown";
    }
    return {};
}
