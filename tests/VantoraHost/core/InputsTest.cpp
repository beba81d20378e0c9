#include "VantoraHost/core/Inputs.h"

#include "tests/VantoraHost/InOwnFolder.h"
#include "tests/support/AsNobody.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;
using namespace vantora;
using testing::ElementsAre;

std::vector<std::string> placesOf(const Result<std::vector<Input>>& inputs)
{
    std::vector<std::string> places;
    for (const Input& input : *inputs) {
        places.emplace_back(input.place());
    }
    return places;
}

class Inputs : public InOwnFolder {};

TEST_F(Inputs, AreFoundBelowAFolderUnderTheNameGiven)
{
    const std::string folder = scratch.path("");
    fs::create_directories(folder + "x/y");
    fs::create_directory(folder + "cut");
    for (const char* name : {"b.pdf", "A.PDF", "x/y/c.pdf", "x/caf\xe9.pdf", "x/\xc3\xa9.pdf",
                             "x/a\\b.pdf", "x/.hidden.pdf", "x/plain.txt", "cut/b.pdf"}) {
        scratch.write(name, name);
    }
    const auto found = inputsBelow(folder + "x/..", folder + "cut");
    EXPECT_THAT(placesOf(found), ElementsAre("A.PDF", "b.pdf", "x/a\\b.pdf", "x/caf\xe9.pdf",
                                             "x/y/c.pdf", "x/\xc3\xa9.pdf"));
    for (const Input& input : *found) {
        EXPECT_EQ(input.path, folder + "x/../" + std::string(input.place()));
        EXPECT_EQ(support::readFile(input.path), std::string(input.place()));
    }
    EXPECT_EQ(placesOf(inputsBelow(folder + "cut/", folder + "cut")).size(), 1U);
    EXPECT_EQ(placesOf(inputsBelow(folder + "cut", folder)).size(), 1U);
    EXPECT_FALSE(inputsBelow(folder + "nowhere", ""));
}

TEST_F(Inputs, AreFoundInAFolderWhoseNameBeginsWithAColon)
{
    fs::create_directory(":");
    scratch.write(":/a.pdf", "a");
    EXPECT_THAT(placesOf(inputsBelow(":", "")), ElementsAre("a.pdf"));
}

TEST_F(Inputs, NameTheSubfoldersThatCannotBeRead)
{
    const std::string folder = scratch.path("in");
    fs::create_directories(folder + "/locked");
    scratch.write("in/z.pdf", "z");
    fs::permissions(folder + "/locked", fs::perms::none);
    fs::permissions(scratch.path(""), fs::perms(0755));
    {
        const support::AsNobody nobody;
        ASSERT_TRUE(nobody);
        EXPECT_THAT(placesOf(inputsBelow(folder, "")), ElementsAre("z.pdf", "locked"));
        EXPECT_FALSE(folderIsReadable(folder + "/locked"));
    }
    fs::permissions(folder + "/locked", fs::perms::owner_all);
}

// Runs of different versions and machines must agree on them.
TEST(Shares, AreFixedForEver)
{
    const std::vector<std::string> names = {"a.pdf", "b.pdf", "scans/0001.pdf", "caf\xe9.pdf", ""};
    std::vector<std::size_t> shares;
    for (const std::string& name : names) {
        for (std::size_t number = 1; number <= 7; ++number) {
            if (Share{number, 7}.holds(name)) {
                shares.push_back(number);
            }
        }
        EXPECT_TRUE(Share().holds(name));
    }
    EXPECT_THAT(shares, ElementsAre(4, 4, 1, 6, 7));
}

TEST(Shares, AreAboutOfOneSize)
{
    for (const std::size_t count : {2, 3, 8, 16}) {
        for (std::size_t number = 1; number <= count; ++number) {
            std::size_t held = 0;
            for (int page = 0; page < 16000; ++page) {
                held +=
                    Share{number, count}.holds("scans/" + std::to_string(page) + ".pdf") ? 1 : 0;
            }
            EXPECT_NEAR(static_cast<double>(held), 16000.0 / static_cast<double>(count), 350);
        }
    }
}

} // namespace
