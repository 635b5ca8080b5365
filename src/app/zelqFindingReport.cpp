#include "app/zelqFindingReport.h"

#include <QLoggingCategory>
#include <utility>

#include "widgets/zelqPlainText.h"

namespace {

Q_LOGGING_CATEGORY(lcLog, "zelq.log")

/// A log of random bytes has millions of findings; past these they are only counted.
constexpr std::uint64_t kMostFindings = 100;

}  // namespace

zelqFindingReport::zelqFindingReport(std::string fileName) : fileName_(std::move(fileName)) {}

void zelqFindingReport::add(const zelqFinding& finding) {
    if (++count_ <= kMostFindings) {
        write(fileName_, finding.text());
    }
}

void zelqFindingReport::finish(const zelqStatus& status) const {
    if (count_ > kMostFindings) {
        write(fileName_, std::to_string(count_ - kMostFindings) + " more findings");
    }
    if (!status.ok()) {
        write(fileName_, status.text);
    }
}

void zelqFindingReport::write(const std::string& fileName, const std::string& text) {
    // The messages may go to a terminal, which would obey what a name holds.
    qCWarning(lcLog).noquote().nospace() << zelqPlainText::ofFileName(fileName) << ": "
                                         << zelqPlainText::visible(QString::fromStdString(text));
}
