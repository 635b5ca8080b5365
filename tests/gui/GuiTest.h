#pragma once

#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QHeaderView>
#include <QListView>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
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

/// Calls an item of the popup menu that is open; it must be there and enabled.
inline void choose(const QString& start) {
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr) << start.toStdString();
    for (QAction* action : menu->actions()) {
        if (action->text().remove('&').startsWith(start) && action->isEnabled()) {
            action->trigger();
            menu->close();
            return;
        }
    }
    menu->close();
    ADD_FAILURE() << start.toStdString();
}

/// The smallest area outside of which two pictures of the same size are alike.
inline QRect differing(const QImage& left, const QImage& right) {
    QRect area;
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            area |= left.pixel(x, y) != right.pixel(x, y) ? QRect(x, y, 1, 1) : QRect();
        }
    }
    return area;
}

/// The program with its main window open.
class GuiTest : public testing::Test {
protected:
    GuiTest() {
        if (qEnvironmentVariableIsSet("ZELQ_TEST_ON_DEMAND")) {
            browser.setMostKept(0);
        }
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
    /// The texts of the status line, one after another.
    QString status() {
        QString text;
        for (const QWidget* part : window().statusBar()->findChildren<QWidget*>()) {
            const QString said = part->property("text").toString();
            text += part->isVisible() && !said.isEmpty() ? said + '|' : QString();
        }
        return text;
    }
    bool isChecked(int id) {
        return window().findChild<QAction*>(QString::number(id))->isChecked();
    }
    void click(int row, Qt::KeyboardModifiers keys = Qt::NoModifier) {
        const QModelIndex index = table().model()->index(row, 4);
        table().scrollTo(index);
        QTest::mouseClick(table().viewport(), Qt::LeftButton, keys,
                          table().visualRect(index).center());
    }

    /// Moves the mouse with its left button down.
    static void move(QAbstractItemView& view, const QPoint& to, Qt::KeyboardModifiers keys) {
        QMouseEvent event(QEvent::MouseMove, to, view.viewport()->mapToGlobal(to), Qt::NoButton,
                          Qt::LeftButton, keys);
        QApplication::sendEvent(view.viewport(), &event);
    }

    /// Gives a command and does something in the dialog with a list that it shows.
    void inDialog(int command, const std::function<void(QDialog&, QListView&)>& act) {
        onModalDialog([&](QDialog& dialog) {
            EXPECT_EQ(window().cursor().shape(), Qt::ArrowCursor);
            act(dialog, *dialog.findChild<QListView*>());
            EXPECT_FALSE(dialog.isVisible());
            dialog.hide();  // a test that failed must not wait for ever
        });
        EXPECT_TRUE(window().command(command));
        wait();
    }
    /// The items of a dialog's list, the selected ones in brackets.
    static QString items(const QAbstractItemView& list) {
        QStringList texts;
        for (int i = 0; i < list.model()->rowCount(); ++i) {
            const QModelIndex index = list.model()->index(i, 0);
            const QString item = index.data().toString();
            texts += list.selectionModel()->isSelected(index) ? '[' + item + ']' : item;
        }
        return texts.join(',');
    }
    static bool isBlank(const QImage& image) {
        QImage blank = image;
        blank.fill(image.pixel(image.rect().bottomRight()));
        return image == blank;
    }
    static bool has(const QImage& image, const QColor& color) {
        for (int i = 0; i < image.width() * image.height(); ++i) {
            if (image.pixelColor(i % image.width(), i / image.width()) == color) {
                return true;
            }
        }
        return false;
    }
    /// Expects to see something in each row at either end of a view that has many, and an outline
    /// of the current one.
    static void expectPainted(QAbstractItemView& view) {
        view.window()->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(view.window()));
        for (const Qt::Key key : {Qt::Key_Home, Qt::Key_End}) {
            QTest::keyClick(&view, key);
            const QImage image = view.viewport()->grab().toImage();
            int y = 1;
            while (y < image.height() && view.indexAt({1, y}).isValid()) {
                const QModelIndex index = view.indexAt({1, y});
                const QRect row = view.visualRect(index);
                y += row.height();
                EXPECT_FALSE(isBlank(image.copy(row.adjusted(1, 1, -1, -1)))) << y;
                const QRect edge(row.left() + 5, row.top(), row.width() - 10, 1);
                EXPECT_NE(isBlank(image.copy(edge)), index == view.currentIndex()) << y;
                const bool selected = view.selectionModel()->isSelected(index);
                const QColor pen =
                    view.palette().color(selected ? QPalette::HighlightedText : QPalette::Text);
                EXPECT_EQ(has(image.copy(edge), pen), index == view.currentIndex()) << y;
            }
            EXPECT_GT(y, image.height() / 2);
        }
    }

    /// Opens the menu of a cell as the right mouse button does, and returns the text of its first
    /// item without what is common to all attributes.
    static QString openMenu(zelqRecordContainer& table, int row, zelqColumn column) {
        const QModelIndex index = table.model()->index(row, table.recordModel().sectionOf(column));
        table.scrollTo(index);
        table.horizontalScrollBar()->setValue(
            table.horizontalHeader()->sectionPosition(index.column()));
        const QPoint place = table.visualRect(index).topLeft() + QPoint(2, 2);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                table.viewport()->mapToGlobal(place));
        QApplication::sendEvent(table.viewport(), &event);
        const auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return menu != nullptr ? menu->actions().front()->text().remove("Show &Only ") : QString();
    }
    std::vector<std::size_t> markedRows() {
        std::vector<std::size_t> rows;
        for (const zelqBCnrObject* record : browser.session().shown().records()) {
            if (record->isIn(zelqBCnrObject::Bookmarked)) {
                rows.push_back(browser.session().shown().rowOf(*record));
            }
        }
        return rows;
    }

    TemporaryFolder folder;
    zelqResourceLibrary library;
    zelqBrowser browser;
};
