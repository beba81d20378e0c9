#include "Terminal.h"

#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// What a person typed, or a script that takes names from others, comes back in messages.
namespace {

using testing::HasSubstr;
using testing::Not;

/// Sets the title of the window and the colour, turns the line round, ends it, and hides tags.
const std::string nasty = "\x1b]0;t\x07\x1b[31m\xc2\x9b\u202e\u061c\u2028\u2029\U000e0041z\xff";
/// But for the last byte, which is no UTF-8 and may be told as a wrong character.
const std::string asShown = "\\x1b]0;t\\x07\\x1b[31m\\x9b\\u202e\\u061c\\u2028\\u2029\\U000e0041z";

class UsageErrors : public InOwnFolder {
protected:
    const std::string input = scratch.write("a.pdf", support::documentOfPages(3));
};

TEST_F(UsageErrors, ShowArgumentsThatATerminalWouldObey)
{
    const struct {
        const char* name;
        const char* line; ///< with "@" for the argument
        int status;
    } rows[] = {
        {"an unknown command", "@", 2},
        {"an unknown option", "run -p 1 a.pdf -n --@", 2},
        {"an unknown short option", "run -p 1 a.pdf -n -@", 2},
        {"an option's unknown value", "run -p 1 a.pdf -n --if-empty @", 2},
        {"a range", "run -p @ a.pdf -n", 2},
        {"a range with a good beginning", "run -p 1,@ a.pdf -n", 2},
        {"a number of workers", "run -p 1 a.pdf -n -j @", 2},
        {"a time", "run -p 1 a.pdf -n --timeout @", 2},
        {"a size", "run -p 1 a.pdf -n --memory-limit @", 2},
        {"a share", "run -p 1 a.pdf -n --shard @", 2},
        {"a kind of failure", "run -p 1 a.pdf -n --accept-failures @", 2},
        {"a template of names", "run -p 1 a.pdf -d out --name {@}", 2},
        {"an unknown action", "run --action @ a.pdf -n", 2},
        {"an option of an action that is no pair", "run --action A --set @ a.pdf -n", 2},
        {"an option that an action doesn't have", "run --action 'Delete Pages' --set @=1 a.pdf -n",
         2},
        {"a choice of pages", "run --choose @ a.pdf -n", 2},
        {"a choice of pages by an unknown size", "run --choose size:@ a.pdf -n", 2},
        {"an action list that isn't there", "run --list @ a.pdf -n", 2},
        {"a favourite that isn't there", "run --favourite @ a.pdf -n", 2},
        {"a settings file that isn't there", "run --settings @ a.pdf -n", 1},
        {"a command to get help for", "help @", 2},
        {"an argument of a command without", "actions @", 2},
        {"a window to be shown in", "configure A --inside @", 2},
        {"a list to show", "lists show @", 2},
        {"a missing document", "run -p 1 @.pdf -n", 1},
        {"a missing document to tell about", "info @.pdf", 1},
        {"a range of pages to verify", "verify a.pdf a.pdf -p @", 2},
        {"a missing document to verify", "verify @.pdf a.pdf -p 1", 1},
        {"a missing list of documents", "run -p 1 --files-from @ -n", 1},
        {"a missing file of passwords", "run -p 1 a.pdf -n --password-file @", 1},
        {"a missing folder of documents", "run -p 1 -r @ -n", 1},
        {"an output whose folder is missing", "run -p 1 a.pdf -o @/b.pdf", 1},
        {"a report whose folder is missing", "run -p 1 a.pdf -n --report @/r", 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<std::string> arguments = terminal::words(row.line);
        for (std::string& argument : arguments) {
            if (const auto at = argument.find('@'); at != std::string::npos) {
                argument.replace(at, 1, nasty);
            }
        }
        const auto answer = terminal::run(arguments);
        EXPECT_EQ(answer.status, row.status);
        EXPECT_THAT(answer.err, HasSubstr(asShown));
        const std::string all = answer.out + answer.err;
        for (const char* raw : {"\x1b", "\x07", "\xc2\x9b", "\u202e", "\u061c", "\u2028", "\u2029",
                                "\U000e0041", "\xff"}) {
            EXPECT_THAT(all, Not(HasSubstr(raw)));
        }
    }
}

} // namespace
