#include "tests/VantoraHost/cli/Terminal.h"

#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/PdfBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

/// A folder with a document and with everything that can be wrong with one.
class Desk : public InOwnFolder {
protected:
    Desk()
    {
        const std::string document = support::documentOfPages(10);
        scratch.write("in.pdf", document);
        scratch.write("second.pdf", document);
        scratch.write("exists.pdf", "somebody's work");
        scratch.write("in.pdf.bak", "an older original");
        scratch.write("empty.pdf", "");
        scratch.write("text.pdf", "Dear reader,\nthis is not what you think.\n");
        scratch.write("header.pdf", "%PDF-1.7\n");
        scratch.write("cut.pdf", document.substr(0, 40));
        scratch.write("locked.pdf", support::rewritten(document, "--encrypt user owner 256 --"));
        scratch.write("limited.pdf",
                      support::rewritten(document, "--encrypt '' owner 256 --modify=none --"));
        scratch.write("wrong-password", "guess\n");
        scratch.write("wrong-passwords", "guess\nsecond guess\n");
        fs::create_directory("folder");
        fs::create_directory("folder.pdf");
        fs::create_symlink("in.pdf", "link.pdf");
        fs::create_symlink("nowhere.pdf", "dangling.pdf");
        ::mkfifo("pipe.pdf", 0600);
    }
};

struct Case {
    const char* name;
    const char* arguments; ///< after "run"
    const char* file;      ///< what the line names
    const char* sentence;  ///< a part of it
    const char* remedy;    ///< a part of it
    int status = 1;
};

class BadInput : public Desk, public testing::WithParamInterface<Case> {};

TEST_P(BadInput, GetsOneClearLineAndLeavesEverythingAsItWas)
{
    const auto before = terminal::contents(".");
    const auto answer = terminal::run(std::string("run ") + GetParam().arguments);
    EXPECT_EQ(answer.status, GetParam().status);
    EXPECT_EQ(answer.out, "");
    EXPECT_EQ(terminal::lines(answer.err).size(), 1U) << answer.err;
    EXPECT_THAT(answer.err, HasSubstr(GetParam().file));
    EXPECT_THAT(answer.err, HasSubstr(GetParam().sentence));
    EXPECT_THAT(answer.err, HasSubstr(GetParam().remedy));
    EXPECT_EQ(terminal::contents("."), before);
}

const std::vector<Case> cases = {
    {"a_missing_file", "-p 1 gone.pdf -o out.pdf", "gone.pdf", "no such file", "check the name"},
    {"a_folder", "-p 1 folder.pdf -o out.pdf", "folder.pdf", "is a folder", "name a PDF file"},
    {"a_pipe", "-p 1 pipe.pdf -o out.pdf", "pipe.pdf", "pipe", "- for standard input"},
    {"an_empty_file", "-p 1 empty.pdf -o out.pdf", "empty.pdf", "is empty", "undamaged copy"},
    {"nothing_on_standard_input", "-p 1 - -o out.pdf", "standard input: ", "is empty",
     "undamaged copy"},
    {"another_kind_of_file", "-p 1 text.pdf -o out.pdf", "text.pdf", "is no PDF",
     "name a PDF file"},
    {"a_header_and_nothing_else", "-p 1 header.pdf -o out.pdf", "header.pdf",
     "damaged beyond repair", "undamaged copy"},
    {"damage_that_cannot_be_repaired", "-p 1 cut.pdf -o out.pdf", "cut.pdf", "", "undamaged copy"},
    {"a_missing_password", "-p 1 locked.pdf -o out.pdf", "locked.pdf", "needs a password",
     "--password-file"},
    {"a_wrong_password", "-p 1 locked.pdf -o out.pdf --password-file wrong-password", "locked.pdf",
     "the password given does not open it", "check the password file"},
    {"several_wrong_passwords", "-p 1 locked.pdf -o out.pdf --password-file wrong-passwords",
     "locked.pdf", "none of the 2 passwords", "check the password file"},
    {"a_missing_password_file", "-p 1 locked.pdf -o out.pdf --password-file gone", "gone",
     "password file", "check the name"},
    {"a_folder_as_password_file", "-p 1 locked.pdf -o out.pdf --password-file folder", "folder",
     "Is a directory", ""},
    {"no_permission", "-p 1 limited.pdf -o out.pdf", "limited.pdf", "does not permit",
     "owner's password"},
    {"an_output_that_exists", "-p 1 in.pdf -o exists.pdf", "exists.pdf", "exists", "--overwrite"},
    {"an_output_that_is_a_dangling_link", "-p 1 in.pdf -o dangling.pdf", "dangling.pdf", "exists",
     "--overwrite"},
    {"an_output_that_is_the_input", "-p 1 in.pdf -o ./in.pdf --overwrite", "in.pdf",
     "the input itself", "--in-place"},
    {"an_output_that_leads_to_the_input", "-p 1 in.pdf -o link.pdf --overwrite", "link.pdf",
     "the input itself", "--in-place"},
    {"a_folder_as_output", "-p 1 in.pdf -o folder", "folder", "is a folder", "-d"},
    {"a_device_as_output", "-p 1 in.pdf -o /dev/null --overwrite", "/dev/null", "device",
     "- for standard output"},
    {"an_output_in_a_missing_folder", "-p 1 in.pdf -o gone/out.pdf", "gone", "not there",
     "mkdir -p"},
    {"a_missing_output_folder", "-p 1 in.pdf second.pdf -d gone", "gone", "not there", "mkdir -p"},
    {"a_file_as_output_folder", "-p 1 in.pdf -d exists.pdf", "exists.pdf", "not a folder",
     "name another"},
    {"an_output_where_nothing_can_be_written", "-p 1 in.pdf -o /sys/out.pdf", "/sys/out.pdf",
     "Permission denied", "another place"},
    {"a_backup_that_exists", "-p 1 in.pdf -i --backup", "in.pdf.bak", "exists", "move it away"},
    {"a_descending_range", "-p 6-4 in.pdf -o out.pdf", "6-4", "goes down", "1,4-6,9-15,21", 2},
    {"an_empty_range", "-p '' in.pdf -o out.pdf", "\"\"", "names no page", "1,4-6,9-15,21", 2},
    {"a_range_that_looks_like_an_option", "-p -3 in.pdf -o out.pdf", "-3", "write 1-3",
     "1,4-6,9-15,21", 2},
    {"an_action_without_its_range", "--action 'Delete Pages' in.pdf -o out.pdf", "\"\"",
     "names no page", "1,4-6,9-15,21", 2},
    {"a_misspelt_option", "--action 'Delete Pages' --set byPageRangTextEdit=1 in.pdf -o out.pdf",
     "\"byPageRangTextEdit\"", "but has byPageRangeTextEdit", "vantora configure", 2},
    {"an_unknown_action", "--action 'Add Pages' in.pdf -o out.pdf", "Add Pages", "Delete Pages",
     "vantora actions", 2},
};

INSTANTIATE_TEST_SUITE_P(Table, BadInput, testing::ValuesIn(cases),
                         [](const auto& info) { return info.param.name; });

class DamageThatShowsWhenSaving : public Desk {};

TEST_F(DamageThatShowsWhenSaving, NamesTheFileOnce)
{
    std::string document = support::documentOfPages(10);
    const auto content = document.rfind(" obj", document.find("\nstream"));
    document.replace(content, 4, " xxx");
    scratch.write("lost.pdf",
                  document.substr(0, document.rfind("startxref")) + "startxref\n1\n%%EOF\n");
    const auto answer = terminal::run("run -p 2 lost.pdf -o out.pdf");
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(terminal::lines(answer.err).back(),
                testing::StartsWith("vantora: error: lost.pdf: damaged: the content of page 1 "));
}

class TwoInputsForOneOutput : public Desk {};

TEST_F(TwoInputsForOneOutput, AreBothRefusedAndTheOthersDone)
{
    scratch.write("folder/in.pdf", support::documentOfPages(3));
    fs::create_directory("out");
    const auto answer = terminal::run("run -p 1 in.pdf second.pdf folder/in.pdf -d out");
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(terminal::lines(answer.err),
                testing::ElementsAre(
                    HasSubstr("error: in.pdf: folder/in.pdf would be written to out/in.pdf, too"),
                    HasSubstr("error: folder/in.pdf: in.pdf would be written to out/in.pdf, too"),
                    HasSubstr("1 of 3 documents done, 2 failed")));
    EXPECT_FALSE(fs::exists("out/in.pdf"));
    EXPECT_TRUE(fs::exists("out/second.pdf"));
}

class AnIncompleteInstallation : public Desk {};

TEST_F(AnIncompleteInstallation, IsSaidToBeOne)
{
    terminal::Setting setting;
    setting.actionFolders = {"nowhere"};
    const auto withoutActions = terminal::run("run -p 1 in.pdf -o out.pdf", setting);
    EXPECT_EQ(withoutActions.status, 1);
    EXPECT_THAT(withoutActions.err,
                HasSubstr("no action is installed; the installation is incomplete"));

    terminal::Setting without;
    without.library = scratch.path("nowhere.dylib");
    const auto withoutLibrary = terminal::run("run -p 1 in.pdf -o out.pdf", without);
    EXPECT_EQ(withoutLibrary.status, 1);
    EXPECT_THAT(withoutLibrary.err, HasSubstr("nowhere.dylib: the PDF library can't be loaded"));
}

} // namespace
