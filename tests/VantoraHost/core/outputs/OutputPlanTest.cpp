#include "VantoraHost/core/outputs/OutputPlan.h"

#include "tests/VantoraHost/InOwnFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using namespace vantora;

/// In a folder with inputs and with outputs of every kind that is in the way.
class OutputFolder : public InOwnFolder {
protected:
    OutputFolder()
    {
        fs::create_directories("sub");
        fs::create_directories("out/folder.pdf");
        for (const char* name :
             {"a.pdf", "b.pdf", "sub/a.pdf", "sub/b.pdf", "out/b.pdf", "b.pdf.bak", "plain"}) {
            scratch.write(name, name);
        }
        fs::create_symlink("a.pdf", "link.pdf");
        fs::create_hard_link("a.pdf", "hard.pdf");
        fs::create_symlink("../a.pdf", "out/link-to-a.pdf");
        fs::create_symlink("b.pdf", "out/link-to-b.pdf");
        fs::create_symlink("nowhere.pdf", "out/dangling.pdf");
        fs::create_hard_link("a.pdf", "out/hard-a.pdf");
        ::mkfifo("out/pipe.pdf", 0600);
        fs::create_directory_symlink("../sub", "out/elsewhere");
        fs::create_hard_link("plain", "plain.bak");
        scratch.write("sub/b.pdf.bak", "sub/b.pdf"); // a copy
    }
};

struct Case {
    const char* name;
    const char* inputs; ///< with commas between
    Destination destination;
    TakenName taken;
    const char* expected; ///< per input a path below the folder, or a reason's name
};

/// An input's place begins after a double slash, or is its file name.
std::vector<Input> inputsCalled(const std::string& list)
{
    std::vector<Input> inputs;
    std::istringstream paths(list);
    for (std::string path; std::getline(paths >> std::ws, path, ',');) {
        inputs.push_back(inputNamed(path));
        if (const std::size_t mark = path.find("//"); mark != std::string::npos) {
            inputs.back().placeAt = mark + 2;
        }
    }
    return inputs;
}

std::string described(const Result<Target>& target)
{
    if (!target) {
        return reasonName(target.error().reason);
    }
    const fs::path path = target->standardOutput ? target->name : target->path;
    return path.is_absolute() ? path.lexically_relative(fs::canonical(".")).string()
                              : path.string();
}

class Plan : public OutputFolder, public testing::WithParamInterface<Case> {};

TEST_P(Plan, Says)
{
    const auto targets =
        planOutputs(inputsCalled(GetParam().inputs), GetParam().destination, GetParam().taken);
    ASSERT_TRUE(targets) << targets.error().sentence;
    std::string got;
    for (const auto& target : *targets) {
        got += (got.empty() ? "" : ", ") + described(target);
    }
    EXPECT_EQ(got, GetParam().expected);
}

constexpr TakenName refuse = TakenName::Refuse;
constexpr TakenName replace = TakenName::Replace;
constexpr TakenName number = TakenName::Number;

const ToFolder toOut{"out", {}};
const ToFolder toItself{"sub/..", {}};
const ToFolder toNumbered{"out", *OutputName::of("{number} {name}-cut{ext}")};
const ToFolder toOneName{"out", *OutputName::of("same.pdf")};
const InPlace inPlace;
const InPlace withBackup{true};

const std::vector<Case> cases = {
    {"a_new_file", "a.pdf", ToFile{"new.pdf"}, refuse, "new.pdf"},
    {"a_new_file_elsewhere", "a.pdf", ToFile{"out/new.pdf"}, refuse, "out/new.pdf"},
    {"an_existing_file", "a.pdf", ToFile{"out/b.pdf"}, refuse, "output-exists"},
    {"an_existing_file_to_replace", "a.pdf", ToFile{"out/b.pdf"}, replace, "out/b.pdf"},
    {"a_dangling_link_exists", "a.pdf", ToFile{"out/dangling.pdf"}, refuse, "output-exists"},
    {"a_link_is_followed", "a.pdf", ToFile{"out/link-to-b.pdf"}, replace, "out/b.pdf"},
    {"a_folder", "a.pdf", ToFile{"out"}, replace, "output-not-a-file"},
    {"a_name_that_ends_in_a_slash", "a.pdf", ToFile{"new/"}, replace, "output-not-a-file"},
    {"a_pipe", "a.pdf", ToFile{"out/pipe.pdf"}, replace, "output-not-a-file"},
    {"a_device", "a.pdf", ToFile{"/dev/null"}, replace, "output-not-a-file"},
    {"a_missing_folder", "a.pdf", ToFile{"nowhere/new.pdf"}, refuse, "output-folder-missing"},
    {"a_file_as_folder", "a.pdf", ToFile{"plain/new.pdf"}, refuse, "output-folder-missing"},
    {"the_input", "a.pdf", ToFile{"a.pdf"}, replace, "output-is-input"},
    {"the_input_by_another_name", "a.pdf", ToFile{"sub/../a.pdf"}, replace, "output-is-input"},
    {"the_input_through_a_link", "link.pdf", ToFile{"a.pdf"}, replace, "output-is-input"},
    {"a_link_to_the_input", "a.pdf", ToFile{"out/link-to-a.pdf"}, replace, "output-is-input"},
    {"a_hard_link_of_the_input", "a.pdf", ToFile{"out/hard-a.pdf"}, replace, "output-is-input"},
    {"standard_output", "a.pdf", ToStandardOutput{}, refuse, "-"},
    {"from_standard_input", "-", ToFile{"new.pdf"}, refuse, "new.pdf"},

    {"a_folder_of_outputs", "a.pdf, b.pdf", toItself, replace, "output-is-input, output-is-input"},
    {"one_output_exists", "a.pdf, b.pdf", toOut, refuse, "out/a.pdf, output-exists"},
    {"two_inputs_of_one_name", "a.pdf, b.pdf, sub/a.pdf", toOut, replace,
     "output-clash, out/b.pdf, output-clash"},
    {"an_output_that_is_another_input", "a.pdf, sub/b.pdf, b.pdf", toItself, replace,
     "output-is-input, output-clash, output-clash"},
    {"a_folder_that_mirrors_another", "tree//a.pdf, tree//x/a.pdf, tree//x/y/a.pdf", toOut, refuse,
     "out/a.pdf, out/x/a.pdf, out/x/y/a.pdf"},
    {"a_mirrored_folder_that_is_a_file", "tree//b.pdf/a.pdf", toOut, refuse,
     "output-folder-missing"},
    {"a_mirrored_folder_that_is_a_link", "tree//elsewhere/a.pdf, tree//elsewhere/x/b.pdf", toOut,
     replace, "output-folder-is-link, output-folder-is-link"},
    {"a_link_in_the_place_of_an_output", "sub//link-to-b.pdf, sub//link-to-a.pdf, x//dangling.pdf",
     toOut, replace, "out/link-to-b.pdf, out/link-to-a.pdf, out/dangling.pdf"},
    {"a_link_in_the_place_of_an_output_exists", "sub//dangling.pdf", toOut, refuse,
     "output-exists"},
    {"names_of_a_template", "a.pdf, tree//x/b.PDF, plain", toNumbered, refuse,
     "out/1 a-cut.pdf, out/x/2 b-cut.PDF, out/3 plain-cut"},
    {"one_name_for_all", "a.pdf, b.pdf", toOneName, replace, "output-clash, output-clash"},
    {"copy_names", "b.pdf, sub/b.pdf, a.pdf, sub/a.pdf, tree//b.pdf", toOut, number,
     "out/b (1).pdf, out/b (2).pdf, out/a.pdf, out/a (1).pdf, out/b (3).pdf"},
    {"a_copy_name_of_a_file", "a.pdf", ToFile{"plain"}, number, "plain (1)"},
    {"a_copy_name_beside_an_input", "a.pdf", ToFile{"a.pdf"}, number, "a (1).pdf"},
    {"a_folder_has_a_dot_and_the_name_none", "plain, tree//x.y/plain", toOut, number,
     "out/plain, out/x.y/plain"},

    {"in_place", "a.pdf, b.pdf", inPlace, refuse, "a.pdf, b.pdf"},
    {"in_place_through_a_link", "link.pdf", inPlace, refuse, "a.pdf"},
    {"in_place_twice", "b.pdf, b.pdf", inPlace, refuse, "output-clash, output-clash"},
    {"in_place_twice_through_a_link", "a.pdf, link.pdf", inPlace, replace,
     "output-clash, output-clash"},
    {"in_place_twice_through_a_hard_link", "a.pdf, b.pdf, hard.pdf", inPlace, replace,
     "output-clash, b.pdf, output-clash"},
    {"in_place_with_backup", "a.pdf", withBackup, refuse, "a.pdf"},
    {"a_backup_that_exists", "b.pdf", withBackup, refuse, "backup-exists"},
    {"a_backup_is_never_replaced", "b.pdf", withBackup, replace, "backup-exists"},
    {"a_backup_of_this_very_file", "plain, sub/b.pdf", withBackup, refuse, "plain, sub/b.pdf"},
    {"a_backup_that_is_an_input", "b.pdf, b.pdf.bak", withBackup, replace,
     "output-is-input, b.pdf.bak"},
    {"in_place_of_a_missing_file", "missing.pdf", inPlace, refuse, "missing.pdf"},
};

INSTANTIATE_TEST_SUITE_P(Outputs, Plan, testing::ValuesIn(cases),
                         [](const auto& info) { return info.param.name; });

TEST_F(OutputFolder, IsOneErrorForTheWholeRun)
{
    for (const char* folder : {"nowhere", "plain"}) {
        const auto targets = planOutputs(inputsCalled("a.pdf"), ToFolder{folder, {}}, replace);
        ASSERT_FALSE(targets) << folder;
        EXPECT_EQ(targets.error().reason, Reason::OutputFolderMissing);
        EXPECT_EQ(targets.error().file, folder);
    }
}

TEST_F(OutputFolder, KeepsThePlacesOfInputsThatAreLeftAlone)
{
    std::vector<Input> inputs = inputsCalled("b.pdf, a.pdf, sub/a.pdf");
    inputs[0].leftAlone = inputs[1].leftAlone = true;
    EXPECT_EQ(described(planOutputs(inputs, toOut, refuse)->at(2)), "output-clash");
    EXPECT_EQ(described(planOutputs(inputs, toOut, number)->at(2)), "out/a (1).pdf");
}

TEST_F(OutputFolder, IsNotMadeThroughALinkThatCameSinceThePlan)
{
    auto targets = *planOutputs(inputsCalled("tree//x/y/a.pdf"), toOut, refuse);
    fs::create_directory_symlink("../sub", "out/x");
    makeFolders({"tree//x/y/a.pdf"}, targets);
    EXPECT_EQ(described(targets[0]), "output-folder-is-link");
    EXPECT_FALSE(fs::exists("sub/y"));
}

TEST_F(OutputFolder, IsTheOneThatWasPlannedOrNone)
{
    auto targets = *planOutputs(inputsCalled("tree//x/a.pdf, a.pdf"), toOut, refuse);
    fs::rename("out", "moved");
    fs::create_directory_symlink("sub", "out");
    makeFolders({"tree//x/a.pdf", "a.pdf"}, targets);
    for (const auto& target : targets) {
        ASSERT_FALSE(target);
        EXPECT_THAT(target.error().sentence, testing::HasSubstr("out was exchanged for another"));
    }
    EXPECT_FALSE(fs::exists("sub/x"));
}

TEST_F(OutputFolder, IsMadeWhereItCanBe)
{
    auto targets = *planOutputs(inputsCalled("tree//x/y/a.pdf, tree//plain/a.pdf"), toOut, refuse);
    std::ofstream("out/plain") << "in the way since the outputs were planned";
    makeFolders({"tree//x/y/a.pdf", "tree//plain/a.pdf"}, targets);
    EXPECT_TRUE(fs::is_directory("out/x/y"));
    EXPECT_EQ(described(targets[0]), "out/x/y/a.pdf");
    EXPECT_EQ(described(targets[1]), "output-not-writable");
}

TEST(OutputNamed, LikeACopyOfWhatIsPlannedWhereNamesAreNumbered)
{
    const struct {
        const char* output;
        TakenName taken;
        bool mayBe;
    } rows[] = {
        {"out/a.pdf", refuse, true},
        {"out/b.pdf", refuse, false},
        {"out/a (1).pdf", refuse, false},
        {"out/a (1).pdf", number, true},
        {"out/a (12).pdf", number, true},
        {"out/a (0).pdf", number, false},
        {"out/a (01).pdf", number, false},
        {"out/a (x).pdf", number, false},
        {"elsewhere/a (1).pdf", number, false},
        {"", number, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(mayBeNamed(row.output, "out/a.pdf", row.taken), row.mayBe) << row.output;
    }
}

class BackupName : public OutputFolder {};

TEST_F(BackupName, StandsBesideTheFileBehindTheLink)
{
    const auto targets = planOutputs(inputsCalled("sub/../link.pdf"), withBackup, refuse);
    ASSERT_TRUE(targets && targets->front());
    EXPECT_EQ(targets->front()->backup, fs::canonical("a.pdf").string() + ".bak");
}

} // namespace
