#include "VantoraHost/core/choices/RangesFile.h"
#include "VantoraHost/core/choices/InputRanges.h"

#include "tests/VantoraHost/InOwnFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;
using namespace vantora;
using testing::ElementsAre;
using testing::HasSubstr;

std::string readBack(const std::string& text)
{
    const auto ranges = documentRangesOf(text);
    if (!ranges) {
        return "error: " + ranges.error();
    }
    std::string all;
    for (const DocumentRange& one : *ranges) {
        all += std::to_string(one.line) + "[" + one.path + "](" + one.range + ")";
    }
    return all;
}

TEST(RangesFile, IsReadWithTabsOrCommasWithOrWithoutAHeader)
{
    const struct {
        const char* name;
        std::string text;
        const char* read;
    } rows[] = {
        {"nothing", "", ""},
        {"empty lines", "\n\r\n\n", ""},
        {"a tab between", "a.pdf\t1,4-6\n", "1[a.pdf](1,4-6)"},
        {"no end of the last line", "a.pdf\t1\nb.pdf\t2", "1[a.pdf](1)2[b.pdf](2)"},
        {"lines that end as on other systems", "a.pdf\t1\r\n\r\nb.pdf\t2\r",
         "1[a.pdf](1)3[b.pdf](2)"},
        {"a comma in a path before a tab", "a,b.pdf\t1,2\n", "1[a,b.pdf](1,2)"},
        {"a comma between", "a.pdf,1\nb.pdf,\"1,2\"\n", "1[a.pdf](1)2[b.pdf](1,2)"},
        {"a header", "path,range\na.pdf,3\n", "2[a.pdf](3)"},
        {"a header in quotes and capitals", "\"File\"\t\"PAGES\"\na.pdf\t3\n", "2[a.pdf](3)"},
        {"a document that is called so", "range\t1\npages\t2\n", "1[range](1)2[pages](2)"},
        {"a mark of the byte order",
         "\xef\xbb\xbf"
         "a.pdf\t1\n",
         "1[a.pdf](1)"},
        {"the same mark in quotes",
         "\"\xef\xbb\xbf"
         "a.pdf\"\t1\n",
         "1[\xef\xbb\xbf"
         "a.pdf](1)"},
        {"no pages", "a.pdf\t\nb.pdf\t  \n", "1[a.pdf]()2[b.pdf]()"},
        {"a range with a loose end", "a.pdf\t 1, 4-6 ,\n", "1[a.pdf](1, 4-6)"},
        {"what a quote joins", "\"a\nb\tc\"\"d\r\n.pdf\"\t1\ne.pdf\t2\n",
         "1[a\nb\tc\"d\r\n.pdf](1)4[e.pdf](2)"},
        {"a tab in quotes before a comma", "\"a\tb\",1\n", "1[a\tb](1)"},
        {"a quote within a name", "5\" disk.pdf\t1\n", "1[5\" disk.pdf](1)"},
        {"spaces of a name", " a \t1\n", "1[ a ](1)"},
        {"bytes that are no text", "caf\xe9.pdf\t1\n", "1[caf\xe9.pdf](1)"},
        {"a return within a name", "a\rb.pdf\t1\n", "1[a\rb.pdf](1)"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(readBack(row.text), row.read) << row.name;
    }
}

TEST(RangesFile, NamesTheLineThatIsWrong)
{
    using namespace std::string_literals;
    const struct {
        const char* name;
        std::string text;
        const char* says;
    } rows[] = {
        {"no range", "a.pdf\t1\nb.pdf\n", "line 2 has no range"},
        {"a range without quotes", "a.pdf,1,2\n", "line 1 has more than a path and a range"},
        {"a comma where tabs are", "a.pdf\t1\nb.pdf,1\n", "line 2 has no range"},
        {"no document", "\t1\n", "line 1 names no document"},
        {"a document twice", "a.pdf\t1\n\nb.pdf\t1\n\"a.pdf\"\t2\n",
         "line 4 names \"a.pdf\", as line 1"},
        {"a range that goes down", "a.pdf\t6-4\n",
         "line 1 has the page range \"6-4\", which goes down"},
        {"a range of words", "a.pdf\tlast\n", "line 1 has the page range \"last\""},
        {"a header in the middle", "a.pdf\t1\npath\trange\n",
         "line 2 has the page range \"range\""},
        {"a quote without end", "a.pdf\t1\n\"b.pdf\t2\n",
         "line 2 opens a quote that nothing closes"},
        {"text after a quote", "\"a\".pdf\t1\n", "line 1 has text after a quote"},
        {"a zero byte", "a\0b\t1\n"s, "line 1 names a document by what is no path"},
        {"a name that is none", std::string(5000, 'a') + "\t1\n",
         "line 1 names a document by what"},
        {"a range without end", "a\t" + std::string(longestDocumentRange + 1, '1'),
         "line 1 has a range of more than 1048576 characters"},
        {"a list without end", std::string(longestRangesText + 1, '\n'), "is larger than 64 MiB"},
    };
    for (const auto& row : rows) {
        const auto ranges = documentRangesOf(row.text);
        ASSERT_FALSE(ranges) << row.name;
        EXPECT_THAT(ranges.error(), HasSubstr(row.says)) << row.name;
    }
}

const std::string hostileNames[] = {
    "a.pdf",        "tab\there.pdf", "new\nline.pdf",    "\r\n",        "quo\"te.pdf",
    "\"a\",b.pdf",  "com,ma.pdf",    "-dash.pdf",        "caf\xe9.pdf", " lead and trail ",
    "\xef\xbb\xbf", "path",          "line end\r",       "\"",          "<b>&amp;</b>",
    "#a",           "=1+1",          "\xe2\x80\xae.pdf", "\\n\\t.pdf",
};

TEST(RangesFile, IsReadAsItWasWrittenWhateverDocumentsAreCalled)
{
    // Each in the first line, too, which decides what separates.
    for (const std::string& first : hostileNames) {
        std::string text = rangesLine(first, "1,2");
        for (const std::string& name : hostileNames) {
            text += name == first ? "" : rangesLine(name, "");
        }
        const auto ranges = documentRangesOf(text);
        ASSERT_TRUE(ranges) << first << ": " << ranges.error();
        ASSERT_EQ(ranges->size(), std::size(hostileNames)) << first;
        EXPECT_EQ(ranges->front().path, first);
        EXPECT_EQ(ranges->front().range, "1,2");
    }
}

class InputRanges : public InOwnFolder {
protected:
    InputRanges()
    {
        fs::create_directories("in/x");
        for (const char* name : {"a.pdf", "in/a.pdf", "in/x/b.pdf"}) {
            scratch.write(name, "");
        }
    }

    static Result<RangesList> read(const std::string& path)
    {
        return readRangesList(path, [] { return false; });
    }

    static std::string found(const Result<std::vector<Input>>& inputs)
    {
        if (!inputs) {
            return inputs.error().file + ": " + inputs.error().sentence;
        }
        std::string all;
        for (const Input& input : *inputs) {
            all += input.path + "(" + input.range.value_or("none") + ")";
        }
        return all;
    }

    static std::string assigned(const RangesList& list, const std::vector<std::string>& names)
    {
        std::vector<Input> inputs;
        for (const std::string& name : names) {
            inputs.push_back(inputNamed(name));
        }
        const Outcome done = assignRanges(list, inputs);
        return found(done ? Result<std::vector<Input>>(inputs)
                          : tl::unexpected<Error>(done.error()));
    }
};

TEST_F(InputRanges, BelongToPathsThatAreRelativeToTheList)
{
    const std::string whole = fs::current_path().string();
    scratch.write("in/list", "a.pdf\t1\nx/b.pdf\t\n");
    const auto list = read("in/list");
    ASSERT_TRUE(list) << list.error().sentence;
    EXPECT_EQ(found(inputsOf(*list)), "in/a.pdf(1)in/x/b.pdf()");
    fs::create_directory_symlink("in", "link");
    EXPECT_EQ(assigned(*list, {"./in//a.pdf", "a.pdf", whole + "/in/x/b.pdf"}),
              "./in//a.pdf(1)a.pdf(none)" + whole + "/in/x/b.pdf()");
    EXPECT_EQ(assigned(*list, {"link/a.pdf", "link/x/../x/b.pdf"}),
              "link/a.pdf(1)link/x/../x/b.pdf()");
    EXPECT_EQ(assigned(*list, {"in/a.pdf", "a.pdf"}),
              "in/list: line 2 names \"x/b.pdf\", which is none of the inputs");
}

TEST_F(InputRanges, AreTakenFromPipesAsFromTheFolderWhereOneIs)
{
    ASSERT_EQ(::mkfifo("in/pipe", 0600), 0);
    const int writer = ::open("in/pipe", O_RDWR | O_CLOEXEC);
    const std::string text = "a.pdf\t1\n-\t2\n";
    ASSERT_EQ(::write(writer, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    const int reader = ::open("in/pipe", O_RDONLY | O_CLOEXEC);
    ::close(writer);
    const auto list = readRangesList(reader, [] { return false; });
    ::close(reader);
    ASSERT_TRUE(list) << list.error().sentence;
    EXPECT_EQ(assigned(*list, {"-", "a.pdf", "in/a.pdf"}), "-(2)a.pdf(1)in/a.pdf(none)");
    EXPECT_EQ(assigned(*list, {"./-", "a.pdf"}),
              "-: line 2 names \"-\", which is none of the inputs");
    EXPECT_THAT(found(inputsOf(*list)), HasSubstr("line 2 names \"-\", which is standard input"));
}

TEST_F(InputRanges, AreRefusedWhereTheListIsWrong)
{
    const struct {
        const char* text;
        const char* says;
    } rows[] = {
        {"a.pdf\t1\nb.pdf\t1\n", "list: line 2 names \"b.pdf\", which is not there"},
        {"in\t1\n", "list: line 1 names \"in\", which is a folder"},
        {"a.pdf\t1\nin/../a.pdf\t2\n",
         "list: line 2 names \"in/../a.pdf\", which line 1 names, too"},
        {"a.pdf/\t1\n", "list: line 1 names \"a.pdf/\", which can't be looked at: Not a directory"},
    };
    for (const auto& [text, says] : rows) {
        scratch.write("list", text);
        const auto list = read("list");
        ASSERT_TRUE(list) << text;
        EXPECT_EQ(found(inputsOf(*list)), says);
    }
    EXPECT_EQ(read("nowhere").error().reason, Reason::InputMissing);
    EXPECT_EQ(read(".").error().reason, Reason::InputUnreadable);
    EXPECT_THAT(read("/dev/zero").error().sentence, HasSubstr("is larger than"));
    const auto interrupted = readRangesList("/dev/zero", [] { return true; });
    EXPECT_EQ(interrupted.error().reason, Reason::Interrupted);
}

} // namespace
