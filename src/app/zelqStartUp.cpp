#include "app/zelqStartUp.h"

#include <QApplication>
#include <QMessageBox>
#include <QSettings>
#include <QTemporaryDir>
#include <csignal>
#include <exception>
#include <optional>

#include "app/zelqBrowser.h"
#include "output/zelqOutputFile.h"
#include "resources/zelqResourceLibrary.h"

namespace {

// The texts of the message box stand here because the library that should hold them is missing.
zelqStartUpReply askToRetry(const std::string& reason) {
    QMessageBox box(QMessageBox::Critical, QStringLiteral("RAS Log Browser"),
                    QString::fromStdString(reason), QMessageBox::Retry | QMessageBox::Cancel);
    box.setDefaultButton(QMessageBox::Retry);
    return box.exec() == QMessageBox::Retry ? zelqStartUpReply::Retry : zelqStartUpReply::Cancel;
}

}  // namespace

std::unique_ptr<zelqBrowser> createBrowser(
    const std::function<std::unique_ptr<zelqBrowser>()>& create,
    const std::function<zelqStartUpReply(const std::string& reason)>& ask) {
    for (;;) {
        try {
            return create();
        } catch (const std::exception& error) {
            if (ask(error.what()) != zelqStartUpReply::Retry) {
                return nullptr;
            }
        }
    }
}

int runBrowser(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);  // a listing may go to a pipe that its reader closes
    zelqOutputFile::removeOnSignals();
    QApplication application(argc, argv);
    QApplication::setDesktopFileName(QStringLiteral("ras-log-browser"));
    // Nothing is kept between runs; Qt's file dialogs would keep their state.
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());

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
    browser->mainWindow().show();
    if (argc > 1) {  // without Qt's own arguments, which it has taken out
        browser->setFileName(argv[1]);
        browser->loadLog();
    }
    return QApplication::exec();
}
