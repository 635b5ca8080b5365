#include "app/zelqStartUp.h"

#include <QCommandLineParser>
#include <QLocale>
#include <QMessageBox>
#include <QSettings>
#include <csignal>
#include <exception>
#include <iostream>
#include <optional>

#include <malloc.h>

#include "app/zelqApplication.h"
#include "app/zelqBrowser.h"
#include "output/zelqOutputFile.h"
#include "resources/zelqIds.h"
#include "resources/zelqReadablePalette.h"
#include "resources/zelqResourceLibrary.h"

#include "version/zelqVersion.h"

namespace {

// The texts of the message box stand here because the library that should hold them is missing.
zelqStartUp::Reply askToRetry(const std::string& reason) {
    QMessageBox box(QMessageBox::Critical, QStringLiteral("RAS Log Browser"),
                    QString::fromStdString(reason), QMessageBox::Retry | QMessageBox::Cancel);
    box.setTextFormat(Qt::PlainText);  // it has names of folders
    box.setDefaultButton(QMessageBox::Retry);
    return box.exec() == QMessageBox::Retry ? zelqStartUp::Reply::Retry
                                            : zelqStartUp::Reply::Cancel;
}

/// The answer to "--help" or "--version"; nothing if that is not the only argument.
std::optional<QString> answer(int argc, char** argv) {
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("help"), QStringLiteral("Print this text and end.")});
    parser.addOption({QStringLiteral("version"), QStringLiteral("Print the version and end.")});
    // A name that looks like an option which there is not makes parse() fail.
    if (argc != 2 || !parser.parse({QString(), QString::fromLocal8Bit(argv[1])})) {
        return std::nullopt;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        return QString::fromStdString("ras-log-browser " + zelqVersion::text() + '\n');
    }
    if (!parser.isSet(QStringLiteral("help"))) {
        return std::nullopt;
    }
    const QCoreApplication application(argc, argv);  // for the program's name
    parser.setApplicationDescription(QStringLiteral(
        "Shows RAS logs as rows in the order of their times, with filters and dumps.\n"
        "The options below work only as the sole argument; Qt's own, such as\n"
        "-style and -platform, can stand before a log."));
    parser.addPositionalArgument(
        QStringLiteral("log"),
        QStringLiteral("The log to load at the start. More can be merged into the window later."),
        QStringLiteral("[log]"));
    return parser.helpText();
}

}  // namespace

std::unique_ptr<zelqBrowser> zelqStartUp::createBrowser(
    const std::function<std::unique_ptr<zelqBrowser>()>& create,
    const std::function<Reply(const std::string& reason)>& ask) {
    for (;;) {
        try {
            return create();
        } catch (const std::exception& error) {
            if (ask(error.what()) != Reply::Retry) {
                return nullptr;
            }
        }
    }
}

void zelqStartUp::giveFreeMemoryBack() {
    // NOLINTBEGIN(concurrency-mt-unsafe): there is one thread
    ::mallopt(M_TRIM_THRESHOLD, 1 << 20);
    ::mallopt(M_MMAP_THRESHOLD, 4 << 20);  // which would be low from now on, and slow
    // NOLINTEND(concurrency-mt-unsafe)
}

int zelqStartUp::run(int argc, char** argv) {
    if (const std::optional<QString> text = answer(argc, argv)) {
        return std::cout << text->toStdString() << std::flush ? 0 : 1;
    }
    giveFreeMemoryBack();
    std::signal(SIGPIPE, SIG_IGN);  // a listing may go to a pipe that its reader closes
    zelqOutputFile::removeOnSignals();
    zelqApplication application(argc, argv);
    // Qt mirrors windows only where it has texts of its own in the language, and with -reverse.
    if (QApplication::layoutDirection() == Qt::LeftToRight) {
        QApplication::setLayoutDirection(QLocale().textDirection());
    }
    QApplication::setPalette(zelqReadablePalette::from(QApplication::palette()));
    QApplication::setDesktopFileName(QStringLiteral("ras-log-browser"));
    // Nothing is kept between runs. Qt's file dialogs would keep their state, and below a device
    // no file can be made.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));

    std::optional<zelqResourceLibrary> library;
    const auto browser = createBrowser(
        [&library] {
            library.emplace();
            return std::make_unique<zelqBrowser>();
        },
        askToRetry);
    if (browser == nullptr) {
        return 0;
    }
    application.setOutOfMemoryHandler([&browser] {
        browser->mainWindow().statusLine().showOutcome(
            zelqResourceLibrary::text(zelqId::kNotEnoughMemory));
    });
    browser->mainWindow().show();
    if (argc > 1) {  // without Qt's own arguments, which it has taken out
        browser->setFileName(argv[1]);
        browser->loadLog();
    }
    return QApplication::exec();
}
