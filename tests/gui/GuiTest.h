#pragma once

#include <QApplication>
#include <QDialog>
#include <QHeaderView>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "app/zelqBrowser.h"
#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "support/LogImage.h"

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

/// Calls `act` with the next modal dialog that is shown. Call before what opens the dialog.
inline void onModalDialog(const std::function<void(QDialog&)>& act) {
    auto* const timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, act] {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog != nullptr && dialog->isActiveWindow()) {
            timer->deleteLater();
            timer->stop();
            act(*dialog);
        }
    });
    timer->start(10);
}

inline void press(QDialog& dialog, int button) {
    QTest::mouseClick(dialog.findChild<QPushButton*>(QString::number(button)), Qt::LeftButton);
}

/// The program with its main window open.
class GuiTest : public testing::Test {
protected:
    GuiTest() {
        window().show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
    }

    zelqBWindow& window() { return browser.mainWindow(); }
    zelqRecordContainer& table() { return window().container(); }

    std::string write(const std::string& name, const std::vector<TestEntry>& entries) {
        return folder.write(name, logImage(entries));
    }
    void load(const std::string& file) {
        browser.setFileName(file);
        browser.loadLog();
        wait();
    }
    void merge(const std::string& file) {
        browser.setFileName(file);
        browser.mergeLog();
        wait();
    }
    void unload(int slot) {
        browser.unloadLog(slot);
        wait();
    }
    void wait() {
        ASSERT_TRUE(QTest::qWaitFor([this] { return !browser.isBusy(); }, 20000));
    }

    std::vector<QString> headings() {
        std::vector<QString> texts;
        for (int i = 0; i < table().model()->columnCount(); ++i) {
            texts.push_back(table().model()->headerData(i, Qt::Horizontal).toString());
        }
        return texts;
    }
    QString cell(int row, int column) {
        return table().model()->index(row, column).data().toString();
    }
    std::vector<QString> row(int number) {
        std::vector<QString> texts;
        for (int i = 0; i < table().model()->columnCount(); ++i) {
            texts.push_back(cell(number, i));
        }
        return texts;
    }
    /// All cells of a column, from the first row on.
    std::vector<QString> column(zelqColumn which) {
        std::vector<QString> texts;
        for (int i = 0; i < table().model()->rowCount(); ++i) {
            texts.push_back(cell(i, table().recordModel().sectionOf(which)));
        }
        return texts;
    }
    void click(int row, Qt::KeyboardModifiers keys = Qt::NoModifier) {
        const QModelIndex index = table().model()->index(row, 4);
        table().scrollTo(index);
        QTest::mouseClick(table().viewport(), Qt::LeftButton, keys,
                          table().visualRect(index).center());
    }

    TemporaryFolder folder;
    zelqResourceLibrary library;
    zelqBrowser browser;
};
