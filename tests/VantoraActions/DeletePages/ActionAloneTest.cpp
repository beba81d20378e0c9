#include "VantoraActions/DeletePages/deletepages.h"
#include "VantoraActions/OptionsDialog.h"
#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraApp/errors/CErrorHandler.h"
#include "VantoraApp/errors/ErrorLog.h"
#include "tests/VantoraApp/binding/Recording.h"

#include <QtCore/QLibrary>

#include <gmock/gmock.h>

// The action without its plug-in, with other things around it than it has there.

namespace {

std::vector<std::string> reports;
std::string messages;
std::string_view dialogFile;

void keepMessage(QtMsgType, const QMessageLogContext&, const QString& text)
{
    messages += text.toStdString() + '\n';
}

} // namespace

void StoreErrorToLog(const char* report)
{
    reports.push_back(report);
}

std::string_view EmbeddedDialog()
{
    return dialogFile;
}

namespace {

TEST(DeletePagesAlone, HandsTheReportOfAnExceptionToTheLog)
{
    QLibrary library{RECORDING_LIBRARY};
    Recording* const record = reinterpret_cast<Recording* (*)()>(library.resolve("recording"))();
    *record = Recording();
    record->answers["PageCount"] = {5, 5, 4};
    record->throws = true;
    const std::string path = RECORDING_LIBRARY;
    KarvelPDFLibraryCPDylibCPP1311 binding({path.begin(), path.end()});
    CErrorHandler errors;
    PreferencesMap preferences = {{"byPageRangeTextEdit", QString("2,4")}};
    WorkProcInfoStruct info{&binding, &errors, {}, &preferences};
    EXPECT_EQ(DeletePages().WorkProc(&info), 1);
    EXPECT_EQ(errors.GetLast(), "Delete pages error");
    EXPECT_EQ(reports, std::vector<std::string>{"==============================\n"
                                                "Exception handled: system\n"
                                                "File: VantoraActions/DeletePages/deletepages\n"
                                                "Function: WorkProc\n"
                                                "Line: 135\n"});
}

TEST(DeletePagesAlone, SaysWhyItsDialogCannotBeLoaded)
{
    dialogFile = "no shared library";
    PreferencesMap preferences = {{"byPageRangeTextEdit", QString("2")}};
    const PreferencesMap before = preferences;
    DialogLoadStruct load{};
    load.pPrefs = &preferences;
    const QtMessageHandler usual = qInstallMessageHandler(keepMessage);
    EXPECT_EQ(DeletePages().ShowDialogProc(nullptr, &load), 0);
    qInstallMessageHandler(usual);
    EXPECT_EQ(preferences, before);
    EXPECT_THAT(messages, testing::StartsWith("the dialog of Delete Pages can't be loaded: "));
    EXPECT_THAT(messages, testing::HasSubstr("file too short"));
}

} // namespace
