#include "VantoraHost/core/OutputPlan.h"

#include "tests/support/Inspect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using namespace vantora;

/// A folder, made the current one, with inputs and with outputs of every kind that is in the way.
class Places {
public:
    Places() : before(fs::current_path())
    {
        fs::current_path(fs::path(scratch.path("")));
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
    }
    ~Places() { fs::current_path(before); }

private:
    support::ScratchFolder scratch;
    fs::path before;
};

struct Case {
    const char* name;
    std::vector<std::string> inputs;
    Destination destination;
    bool overwrite;
    std::vector<std::string> expected; ///< per input: a path below the folder, or a reason's name
};

std::string described(const Result<Target>& target)
{
    if (!target) {
        return reasonName(target.error().reason);
    }
    const fs::path path = target->standardOutput ? target->name : target->path;
    return path.is_absolute() ? path.lexically_relative(fs::canonical(".")).string()
                              : path.string();
}

class Plan : public testing::TestWithParam<Case> {};

TEST_P(Plan, Says)
{
    const Places places;
    const auto targets =
        planOutputs(GetParam().inputs, GetParam().destination, GetParam().overwrite);
    ASSERT_TRUE(targets) << targets.error().sentence;
    std::vector<std::string> got;
    for (const auto& target : *targets) {
        got.push_back(described(target));
    }
    EXPECT_EQ(got, GetParam().expected);
}

const std::vector<Case> cases = {
    {"a_new_file", {"a.pdf"}, ToFile{"new.pdf"}, false, {"new.pdf"}},
    {"a_new_file_elsewhere", {"a.pdf"}, ToFile{"out/new.pdf"}, false, {"out/new.pdf"}},
    {"an_existing_file", {"a.pdf"}, ToFile{"out/b.pdf"}, false, {"output-exists"}},
    {"an_existing_file_to_replace", {"a.pdf"}, ToFile{"out/b.pdf"}, true, {"out/b.pdf"}},
    {"a_dangling_link_exists", {"a.pdf"}, ToFile{"out/dangling.pdf"}, false, {"output-exists"}},
    {"a_link_is_followed", {"a.pdf"}, ToFile{"out/link-to-b.pdf"}, true, {"out/b.pdf"}},
    {"a_folder", {"a.pdf"}, ToFile{"out"}, true, {"output-not-a-file"}},
    {"a_name_that_ends_in_a_slash", {"a.pdf"}, ToFile{"new/"}, true, {"output-not-a-file"}},
    {"a_pipe", {"a.pdf"}, ToFile{"out/pipe.pdf"}, true, {"output-not-a-file"}},
    {"a_device", {"a.pdf"}, ToFile{"/dev/null"}, true, {"output-not-a-file"}},
    {"a_missing_folder", {"a.pdf"}, ToFile{"nowhere/new.pdf"}, false, {"output-folder-missing"}},
    {"a_file_as_folder", {"a.pdf"}, ToFile{"plain/new.pdf"}, false, {"output-folder-missing"}},
    {"the_input", {"a.pdf"}, ToFile{"a.pdf"}, true, {"output-is-input"}},
    {"the_input_by_another_name", {"a.pdf"}, ToFile{"sub/../a.pdf"}, true, {"output-is-input"}},
    {"the_input_through_a_link", {"link.pdf"}, ToFile{"a.pdf"}, true, {"output-is-input"}},
    {"a_link_to_the_input", {"a.pdf"}, ToFile{"out/link-to-a.pdf"}, true, {"output-is-input"}},
    {"a_hard_link_of_the_input", {"a.pdf"}, ToFile{"out/hard-a.pdf"}, true, {"output-is-input"}},
    {"standard_output", {"a.pdf"}, ToStandardOutput{}, false, {"-"}},
    {"from_standard_input", {"-"}, ToFile{"new.pdf"}, false, {"new.pdf"}},

    {"a_folder_of_outputs",
     {"a.pdf", "b.pdf"},
     ToFolder{"sub/.."},
     true,
     {"output-is-input", "output-is-input"}},
    {"one_output_exists",
     {"a.pdf", "b.pdf"},
     ToFolder{"out"},
     false,
     {"out/a.pdf", "output-exists"}},
    {"two_inputs_of_one_name",
     {"a.pdf", "b.pdf", "sub/a.pdf"},
     ToFolder{"out"},
     true,
     {"output-clash", "out/b.pdf", "output-clash"}},
    {"an_output_that_is_another_input",
     {"a.pdf", "sub/b.pdf", "b.pdf"},
     ToFolder{"."},
     true,
     {"output-is-input", "output-clash", "output-clash"}},

    {"in_place", {"a.pdf", "b.pdf"}, InPlace{}, false, {"a.pdf", "b.pdf"}},
    {"in_place_through_a_link", {"link.pdf"}, InPlace{}, false, {"a.pdf"}},
    {"in_place_twice", {"b.pdf", "b.pdf"}, InPlace{}, false, {"output-clash", "output-clash"}},
    {"in_place_twice_through_a_link",
     {"a.pdf", "link.pdf"},
     InPlace{},
     true,
     {"output-clash", "output-clash"}},
    {"in_place_twice_through_a_hard_link",
     {"a.pdf", "b.pdf", "hard.pdf"},
     InPlace{},
     true,
     {"output-clash", "b.pdf", "output-clash"}},
    {"in_place_with_backup", {"a.pdf"}, InPlace{true}, false, {"a.pdf"}},
    {"a_backup_that_exists", {"b.pdf"}, InPlace{true}, false, {"backup-exists"}},
    {"a_backup_to_replace", {"b.pdf"}, InPlace{true}, true, {"b.pdf"}},
    {"a_backup_that_is_an_input",
     {"b.pdf", "b.pdf.bak"},
     InPlace{true},
     true,
     {"output-is-input", "b.pdf.bak"}},
    {"in_place_of_a_missing_file", {"missing.pdf"}, InPlace{}, false, {"missing.pdf"}},
};

INSTANTIATE_TEST_SUITE_P(Outputs, Plan, testing::ValuesIn(cases),
                         [](const auto& info) { return info.param.name; });

TEST(OutputFolder, IsOneErrorForTheWholeRun)
{
    const Places places;
    for (const char* folder : {"nowhere", "plain"}) {
        const auto targets = planOutputs({"a.pdf", "b.pdf"}, ToFolder{folder}, true);
        ASSERT_FALSE(targets) << folder;
        EXPECT_EQ(targets.error().reason, Reason::OutputFolderMissing);
        EXPECT_EQ(targets.error().file, folder);
    }
}

TEST(Backup, StandsBesideTheFileBehindTheLink)
{
    const Places places;
    const auto targets = planOutputs({"sub/../link.pdf"}, InPlace{true}, false);
    ASSERT_TRUE(targets && targets->front());
    EXPECT_EQ(targets->front()->backup, fs::canonical("a.pdf").string() + ".bak");
}

} // namespace
