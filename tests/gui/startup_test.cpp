#include <QProcess>
#include <new>

#include "app/zelqApplication.h"
#include "app/zelqStartUp.h"

#include "GuiTest.h"

namespace {

QString text(const std::string& bytes) {
    return QString::fromStdString(bytes);
}

TEST(StartUp, RetriesAsOftenAsTheUserAsks) {
    int created = 0;
    int asked = 0;
    const auto create = [&created]() -> std::unique_ptr<zelqBrowser> {
        if (++created == 5) {
            return std::make_unique<zelqBrowser>();
        }
        const zelqResourceLibrary library({QStringLiteral("/nonexistent")});
        ADD_FAILURE() << "opened";
        return nullptr;
    };
    const auto ask = [&asked](const std::string& reason) {
        EXPECT_THAT(reason, testing::HasSubstr("ZLQUOR3U"));
        return ++asked < 3 ? zelqStartUp::Reply::Retry : zelqStartUp::Reply::Cancel;
    };
    EXPECT_EQ(zelqStartUp::createBrowser(create, ask), nullptr);
    EXPECT_EQ(asked, 3);
    asked = 0;
    const zelqResourceLibrary library;
    EXPECT_NE(zelqStartUp::createBrowser(create, ask), nullptr);
    EXPECT_EQ(asked, 1);
}

TEST(Application, SurvivesThatThereIsNoMemoryForAnEvent) {
    struct Object : QObject {
        bool event(QEvent* /*event*/) override { throw std::bad_alloc(); }
    } object;
    QEvent event(QEvent::User);
    EXPECT_THROW(QCoreApplication::sendEvent(&object, &event), std::bad_alloc);
    auto& application = dynamic_cast<zelqApplication&>(*qApp);
    int told = 0;
    application.setOutOfMemoryHandler([&told] {
        ++told;
        throw std::bad_alloc();
    });
    EXPECT_TRUE(QCoreApplication::sendEvent(&object, &event));  // nobody else is to handle it
    EXPECT_EQ(told, 1);
    application.setOutOfMemoryHandler({});
}

void compile(const TemporaryFolder& folder, const std::string& name, const std::string& context,
             const std::string& message, const QStringList& options) {
    const std::string source = folder.write(
        "texts.ts", "<TS version=\"2.1\"><context><name>" + context + "</name><message " + message +
                        "</translation></message></context></TS>");
    ASSERT_EQ(QProcess::execute(LRELEASE, options + QStringList{"-silent", text(source), "-qm",
                                                                text(folder.file(name))}),
              0);
}

/// Compiled texts, the first of which is to be as long as memory. Qt follows that out of the file.
std::string damaged(std::string image) {
    const std::size_t text = image.find(std::string("\x03\0\0\0", 4));
    EXPECT_NE(text, std::string::npos);
    return text == std::string::npos ? image : image.replace(text + 1, 1, 1, '\x40');
}

TEST(ResourceLibrary, SpeaksTheUsersLanguageOverItsOwnAndQtsBeneath) {
    const TemporaryFolder folder;
    const QStringList folders{text(folder.file(""))};
    const QString original = zelqResourceLibrary::dataFolders()[0] + "/ZLQUOR3U.qm";
    ASSERT_TRUE(QFile::copy(original, text(folder.file("ZLQUOR3U.qm"))));
    compile(folder, "ZLQUOR3U_de.qm", "", "id=\"10703\"><source/><translation>Datum", {"-idbased"});
    compile(folder, "qtbase_de.qm", "QPlatformTheme", "><source>Cancel</source><translation>Halt",
            {});
    for (const auto& [language, expected] : std::map<QString, QStringList>{
             {"de_AT", {"Datum", "Time", "Halt"}}, {"fr_FR", {"Date", "Time", "Cancel"}}}) {
        QLocale::setDefault(QLocale(language));
        const zelqResourceLibrary library(folders, folders[0]);
        EXPECT_EQ(zelqResourceLibrary::text(zelqId::kHeadingDate), expected[0]);
        EXPECT_EQ(zelqResourceLibrary::text(zelqId::kHeadingTime), expected[1]);
        EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), expected[2]);
    }
    const std::string german = folder.file("ZLQUOR3U_de.qm");
    ASSERT_EQ(folder.write("ZLQUOR3U_de.qm", damaged(contentOf(german))), german);
    QLocale::setDefault(QLocale(QLocale::German));
    const zelqResourceLibrary library(folders, folders[0]);
    EXPECT_EQ(zelqResourceLibrary::text(zelqId::kHeadingDate), "Date");
    QLocale::setDefault(QLocale::c());
}

TEST(ResourceLibrary, SaysWhyItCannotBeUsed) {
    const TemporaryFolder folder;
    const auto problem = [&folder] {
        try {
            const zelqResourceLibrary library({text(folder.file(""))});
        } catch (const zelqResourceError& error) {
            return std::string(error.what());
        }
        return std::string();
    };
    EXPECT_THAT(problem(), testing::HasSubstr("is missing"));
    const std::string file = folder.write("ZLQUOR3U.qm", "");
    EXPECT_THAT(problem(), testing::HasSubstr(file + " is damaged"));
    const std::string image =
        contentOf(zelqResourceLibrary::dataFolders()[0].toStdString() + "/ZLQUOR3U.qm");
    for (const std::string& bytes : {image.substr(0, 17) /* no text */, damaged(image)}) {
        ASSERT_EQ(folder.write("ZLQUOR3U.qm", bytes), file);
        EXPECT_THAT(problem(), testing::HasSubstr(file + " is damaged"));
    }
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    EXPECT_THAT(problem(), testing::HasSubstr(file + " cannot be opened: "));
}

/// The program in a process of its own, with no display to connect to.
class Program : public testing::Test {
protected:
    Program() {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
            environment.remove(name);
        }
        process_.setProcessEnvironment(environment);
    }
    ~Program() override {
        process_.kill();
        process_.waitForFinished();
    }
    /// What the program printed, or nothing unless it ended with status 0.
    QString output(const QString& argument) {
        process_.start(BROWSER_PROGRAM, {argument});
        const bool ended = process_.waitForFinished() &&
                           process_.exitStatus() == QProcess::NormalExit &&
                           process_.exitCode() == 0;
        return ended ? process_.readAllStandardOutput() : QString();
    }

    QProcess process_;
};

TEST_F(Program, AnswersWithoutADisplay) {
    EXPECT_THAT(output("--version").toStdString(),
                testing::MatchesRegex("ras-log-browser " VERSION_PATTERN "\n"));
    EXPECT_THAT(output("--help").toStdString(),
                testing::AllOf(testing::StartsWith("Usage: "), testing::HasSubstr("[log]"),
                               testing::HasSubstr("--version")));
    EXPECT_EQ(output("-help"), "");  // a log, and no display to show it on
}

TEST_F(Program, LoadsTheFirstFileOfItsArgumentsWhateverItBeginsWith) {
    // What cannot be read is named on standard error.
    for (const QString name : {"-nosuch", "--help", "--", "--version=2"}) {
        QStringList arguments{"-platform", "offscreen", name, "-style", "fusion", "second"};
        if (name == "-nosuch") {
            arguments.removeLast();
        }
        process_.start(BROWSER_PROGRAM, arguments);
        QString messages;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                messages += process_.readAllStandardError();
                return messages.contains(name + ": cannot be opened");
            },
            20000))
            << messages.toStdString();
        EXPECT_FALSE(messages.contains("second"));
        process_.kill();
        process_.waitForFinished();
    }
}

}  // namespace
