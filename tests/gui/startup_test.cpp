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
    int succeedsAt = 100;
    const auto create = [&created, &succeedsAt]() -> std::unique_ptr<zelqBrowser> {
        if (++created == succeedsAt) {
            return std::make_unique<zelqBrowser>();
        }
        throw std::runtime_error("attempt " + std::to_string(created));
    };
    const auto ask = [&asked](const std::string& reason) {
        asked.push_back(reason);
        return asked.size() < 3 ? zelqStartUpReply::Retry : zelqStartUpReply::Cancel;
    };
    EXPECT_EQ(createBrowser(create, ask), nullptr);
    EXPECT_THAT(asked, testing::ElementsAre("attempt 1", "attempt 2", "attempt 3"));
    asked.clear();
    succeedsAt = 5;
    const zelqResourceLibrary library;
    EXPECT_NE(createBrowser(create, ask), nullptr);
    EXPECT_THAT(asked, testing::ElementsAre("attempt 4"));
}

}  // namespace
