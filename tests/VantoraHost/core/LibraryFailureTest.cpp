#include "VantoraHost/core/LibraryFailure.h"

#include <gtest/gtest.h>

namespace {

TEST(SentenceOfTheLibrary, IsWithoutTheFileThatItIsAbout)
{
    const struct {
        const char* name;
        const char* sentence;
        const char* expected;
    } rows[] = {
        {"the file in front", "a.pdf: damaged: page 1", "damaged: page 1"},
        {"twice", "a.pdf: a.pdf: damaged", "damaged"},
        {"after the action", "action \"A\": a.pdf: damaged", "action \"A\": damaged"},
        {"another file", "a.pdf.bak: exists", "a.pdf.bak: exists"},
        {"a longer name", "data.pdf: exists", "data.pdf: exists"},
        {"a part of the sentence", "the output a.pdf: no space", "the output a.pdf: no space"},
        {"no file", "damaged", "damaged"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(vantora::withoutFile(row.sentence, "a.pdf"), row.expected);
        EXPECT_EQ(vantora::withoutFile(row.sentence, ""), row.sentence);
    }
}

} // namespace
