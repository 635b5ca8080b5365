#include "cli/zelqTextOutput.h"

zelqEntryRequest zelqTextOutput::request(zelqLogReport& report) {
    zelqEntryRequest request = report.request();
    request.waiting = [this] {
        if (!text_.empty()) {
            flush();
        }
    };
    return request;
}

bool zelqTextOutput::flush() {
    const bool written = output_.open().write(text_).ok();
    text_.clear();
    return written;
}

void zelqTextOutput::complete() {
    flush();
    output_.complete(output_.open().status());
}
