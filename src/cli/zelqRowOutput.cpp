#include "cli/zelqRowOutput.h"

#include <utility>

namespace {

constexpr std::string_view kSelected = "> ";
constexpr std::string_view kOther = "  ";
constexpr std::string_view kGap = "--\n";

}  // namespace

bool zelqRowOutput::take(const zelqWrittenEntry& entry, bool isSelected) {
    if (options_.tail > 0) {
        return takeTail(entry);
    }
    if (options_.around > 0) {
        return takeWithOthers(entry, isSelected);
    }
    appendHeader();
    writer_.append(entry, output_.text());
    return ++count_ < options_.first && output_.flushIfLarge();
}

void zelqRowOutput::finish() {
    for (const std::string& row : kept_) {
        if (options_.tail > 0) {
            appendHeader();
            output_.text() += row;
        }
    }
}

void zelqRowOutput::appendHeader() {
    if (options_.header && !hasHeader_) {
        if (options_.around > 0) {
            output_.text() += kOther;
        }
        writer_.appendHeader(output_.text());
    }
    hasHeader_ = true;
}

bool zelqRowOutput::takeTail(const zelqWrittenEntry& entry) {
    ++count_;
    std::string row;
    if (kept_.size() == options_.tail) {
        row = std::move(kept_.front());  // its memory is used again
        kept_.pop_front();
        row.clear();
    }
    writer_.append(entry, row);
    kept_.push_back(std::move(row));
    return true;
}

bool zelqRowOutput::takeWithOthers(const zelqWrittenEntry& entry, bool isSelected) {
    std::string& text = output_.text();
    if (isSelected && count_ < options_.first) {
        appendHeader();
        if (hasGap_ && count_ > 0) {
            text += kGap;
        }
        hasGap_ = false;
        for (const std::string& row : kept_) {
            text += row;
        }
        kept_.clear();
        text += kSelected;
        writer_.append(entry, text);
        after_ = options_.around;
        ++count_;
    } else if (after_ > 0) {
        text += kOther;
        writer_.append(entry, text);
        --after_;
    } else {
        if (kept_.size() == options_.around) {
            kept_.pop_front();
            hasGap_ = true;
        }
        std::string& row = kept_.emplace_back(kOther);
        writer_.append(entry, row);
    }
    return (count_ < options_.first || after_ > 0) && output_.flushIfLarge();
}
