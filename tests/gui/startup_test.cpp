#include <stdexcept>

#include "app/zelqStartUp.h"

#include "GuiTest.h"

namespace {

TEST(StartUp, AMissingLibraryIsAnErrorThatNamesIt) {
    try {
        const zelqResourceLibrary library({QStringLiteral("/nonexistent")});
        FAIL() << "opened";
    } catch (const zelqResourceError& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("ZLQUOR3U"));
    }
}

TEST(StartUp, RetriesAsOftenAsTheUserAsks) {
    int created = 0;
    std::vector<std::string> asked;
    const auto create = [&created]() -> std::unique_ptr<zelqBrowser> {
        throw std::runtime_error("attempt " + std::to_string(++created));
    };
    const auto ask = [&asked](const std::string& reason) {
        asked.push_back(reason);
        return asked.size() < 3 ? zelqStartUpReply::Retry : zelqStartUpReply::Cancel;
    };
    EXPECT_EQ(createBrowser(create, ask), nullptr);
    EXPECT_THAT(asked, testing::ElementsAre("attempt 1", "attempt 2", "attempt 3"));
}

}  // namespace
