#include "VantoraHost/core/actions/Sequence.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/documents/PdfLibrary.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace vantora;
using testing::HasSubstr;

StepRequest scripted(std::vector<std::pair<std::string, std::string>> options)
{
    return {"Scripted", std::move(options)};
}

Sequence sequenceOf(const std::vector<StepRequest>& requests)
{
    auto sequence = Sequence::of(requests, ActionCatalog::of({SCRIPTED_ACTION_FOLDER}));
    EXPECT_TRUE(sequence) << sequence.error().sentence;
    return sequence.value();
}

class RunningASequence : public testing::Test {
protected:
    RunningASequence()
    {
        library = loadPdfLibrary(PDF_LIBRARY).value();
        library->LoadFromString(support::documentOfPages(3), L"");
    }

    std::unique_ptr<KarvelPDFLibraryCPDylibCPP1311> library;
    support::ScratchFolder scratch;
};

TEST_F(RunningASequence, CallsEachOperationInItsTurn)
{
    const std::string log = scratch.path("log");
    Sequence sequence = sequenceOf({scripted({{"log", log}}), scripted({{"log", log}})});
    ASSERT_TRUE(sequence.begin(*library));
    ASSERT_TRUE(sequence.process(*library));
    ASSERT_TRUE(sequence.process(*library));
    ASSERT_TRUE(sequence.end(*library));
    EXPECT_EQ(support::readFile(log), "begin\nbegin\nwork\nwork\nwork\nwork\nend\nend\n");
}

TEST_F(RunningASequence, StopsAtTheFirstStepThatFails)
{
    const std::string log = scratch.path("log");
    Sequence sequence = sequenceOf({scripted({{"work", "fail"}}), scripted({{"log", log}})});
    EXPECT_FALSE(sequence.process(*library));
    EXPECT_EQ(support::readFile(log), "");
}

TEST_F(RunningASequence, EndsWhatHasBegunWhenAStepRefusesToBegin)
{
    const std::string log = scratch.path("log");
    Sequence sequence = sequenceOf(
        {scripted({{"log", log}}), scripted({{"begin", "fail"}}), scripted({{"log", log}})});
    const Outcome begun = sequence.begin(*library);
    ASSERT_FALSE(begun);
    EXPECT_THAT(begun.error().sentence, HasSubstr("step 2, action \"Scripted\": "));
    EXPECT_EQ(support::readFile(log), "begin\nend\n");
}

TEST_F(RunningASequence, GivesAnActionTheOptionsLastSet)
{
    const Sequence sequence = sequenceOf({scripted({{"a", "1"}, {"b", "x=y"}, {"a", "2"}})});
    const PreferencesMap& preferences = sequence.steps().front().preferences;
    EXPECT_EQ(preferences.value("a").toString(), "2");
    EXPECT_EQ(preferences.value("b").toString(), "x=y");
    EXPECT_EQ(preferences.value("ActionName").toString(), "Scripted");
}

struct Case {
    const char* name;
    const char* how;
    const char* said; ///< a part of the sentence
};

class FailingAction : public RunningASequence, public testing::WithParamInterface<Case> {};

TEST_P(FailingAction, IsNoticedWhileWorking)
{
    Sequence sequence = sequenceOf({scripted({{"work", GetParam().how}})});
    const Outcome outcome = sequence.process(*library);
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().reason, Reason::ActionFailed);
    EXPECT_THAT(outcome.error().sentence, HasSubstr("action \"Scripted\": "));
    EXPECT_THAT(outcome.error().sentence, HasSubstr(GetParam().said));
}

TEST_P(FailingAction, IsNoticedAtTheBeginningAndAtTheEnd)
{
    Sequence sequence =
        sequenceOf({scripted({{"begin", GetParam().how}, {"end", GetParam().how}})});
    EXPECT_FALSE(sequence.begin(*library));
    EXPECT_FALSE(sequence.end(*library));
}

INSTANTIATE_TEST_SUITE_P(
    Ways, FailingAction,
    testing::Values(Case{"a_result_without_a_message", "fail", "with result 1 and no message"},
                    Case{"a_result_with_a_message", "complain and fail", "Scripted error"},
                    Case{"a_message_alone", "complain", "Scripted error"},
                    Case{"an_exception", "throw", "it broke"},
                    Case{"any_exception", "throw a number", "threw an exception"},
                    Case{"a_refusal_of_the_library", "ask the library for the impossible", "page"}),
    [](const auto& info) { return info.param.name; });

TEST_F(RunningASequence, ForgetsWhatWentWrongBefore)
{
    library->DeletePages(0, 1);
    ASSERT_NE(library->LastErrorCode(), 0);
    Sequence sequence = sequenceOf({scripted({})});
    EXPECT_TRUE(sequence.process(*library));
}

} // namespace
