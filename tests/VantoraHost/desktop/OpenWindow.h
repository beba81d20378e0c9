#pragma once

#include "VantoraHost/desktop/MainWindow.h"
#include "tests/support/Inspect.h"
#include "tests/support/ModalDialogs.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/ScratchHome.h"

#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace vantora::desktop {

inline Installation installation()
{
    Installation found = installationOf(BUILT_PROGRAM, nullptr);
    found.program = BUILT_PROGRAM;
    return found;
}

/// A window of its own home, and a folder with documents.
class OpenWindow : public testing::Test {
protected:
    OpenWindow()
    {
        std::filesystem::create_directory(scratch.path("in"));
        std::filesystem::create_directory(scratch.path("out"));
        open();
    }

    void open()
    {
        window.reset();
        window = std::make_unique<MainWindow>(installation());
        window->show();
        part<QLineEdit>("folderEdit").setText(QString::fromStdString(scratch.path("out")));
    }

    QString write(const std::string& name, const std::string& bytes) const
    {
        return QString::fromStdString(scratch.write("in/" + name, bytes));
    }

    template <class Part>
    Part& part(const char* name)
    {
        return *window->findChild<Part*>(name);
    }

    std::string shownIn(const char* label) { return part<QLabel>(label).text().toStdString(); }

    void press(const char* button) { QTest::mouseClick(&part<QWidget>(button), Qt::LeftButton); }

    void choose(const char* combo, int index) { part<QComboBox>(combo).setCurrentIndex(index); }

    static void wait(const std::function<bool()>& until)
    {
        ASSERT_TRUE(QTest::qWaitFor(until, longestWait));
    }

    Workbench& bench() { return window->workbench(); }

    DocumentState stateOf(int row)
    {
        return bench().list.documents().at(static_cast<std::size_t>(row)).state;
    }

    void add(const QStringList& files)
    {
        const int before = bench().list.rowCount();
        window->open(files);
        wait([&] {
            const auto& all = bench().list.documents();
            return all.size() >= static_cast<std::size_t>(before + files.size()) &&
                   std::none_of(all.begin(), all.end(), [](const Document& document) {
                       return document.state == DocumentState::Reading;
                   });
        });
    }

    /// Waits until it is said what a run would do, and that is `text`.
    void waitForPlan(const std::string& text)
    {
        wait([&] { return shownIn("planLabel").find(text) != std::string::npos; });
    }

    /// Runs once that can be pressed: what was said of a run before may still stand there.
    void waitForRun()
    {
        wait([&] { return part<QWidget>("runButton").isEnabled(); });
        bool over = false;
        const auto connection =
            QObject::connect(&bench().runs, &RunController::finished, [&over] { over = true; });
        press("runButton");
        wait([&] { return over; });
        QObject::disconnect(connection);
    }

    /// Pages 1 and 2 of a document of two pages, of which none would be left, and of one of four.
    void runInPlaceWhereTheFirstFails()
    {
        add({write("short.pdf", support::documentOfPages(2)),
             write("long.pdf", support::documentOfPages(4))});
        bench().markForAll("1-2");
        choose("placeCombo", 2); // in place
        waitForPlan("4 ");
        waitForRun();
    }

    int pagesOf(const std::string& name) const
    {
        const std::string path = scratch.path(name);
        EXPECT_EQ(support::problems(support::readFile(path)), "") << path;
        return static_cast<int>(support::pageTexts(support::readFile(path)).size());
    }

    ScratchHome home;
    support::ScratchFolder scratch;
    std::unique_ptr<MainWindow> window;
};

} // namespace vantora::desktop
