#include "VantoraHost/core/outputs/OutputGroup.h"

#include "tests/support/Inspect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;
using namespace vantora;
using karvel::io::Existing;
using karvel::io::OutputFile;

class OutputsOfAGroup : public testing::Test {
protected:
    Target targetNamed(const std::string& name, bool replace = false) const
    {
        Target target;
        target.name = name;
        target.path = scratch.path(name);
        target.replaced = replace ? versionAt(target.path) : std::nullopt;
        return target;
    }

    FileIdentity add(std::size_t number, const Target& target)
    {
        const auto existing = target.replaced ? Existing::Replace : Existing::Refuse;
        OutputFile file = OutputFile::create(target.path, existing).value();
        file.write("new", 3);
        EXPECT_TRUE(file.prepare());
        DocumentReport report;
        report.input = "input" + std::to_string(number);
        report.output = target.name;
        report.status = DocumentStatus::Done;
        report.pagesAfter = 1;
        report.bytesAfter = 3;
        const auto identity = *identityOf(file.descriptor());
        group.add(number, report, {std::move(file), target, identity});
        return identity;
    }

    std::size_t files() const
    {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(scratch.path("")), fs::directory_iterator()));
    }

    support::ScratchFolder scratch;
    OutputGroup group;
};

TEST_F(OutputsOfAGroup, HaveTheirNamesOncePlacedAndAreTheFilesThatWereAnnounced)
{
    fs::create_directory(scratch.path("sub"));
    std::vector<FileIdentity> identities;
    for (std::size_t i = 0; i < 10; ++i) {
        const std::string name = (i % 2 == 0 ? "" : "sub/") + std::to_string(i) + ".pdf";
        identities.push_back(add(i, targetNamed(name)));
        EXPECT_FALSE(fs::exists(scratch.path(name)));
    }
    const auto entries = group.place();
    ASSERT_EQ(entries.size(), identities.size());
    EXPECT_TRUE(group.empty());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(entries[i].number, i);
        EXPECT_TRUE(entries[i].asWritten);
        EXPECT_EQ(support::readFile(scratch.path(entries[i].report.output)), "new");
        EXPECT_TRUE(identityOf(scratch.path(entries[i].report.output)) == identities[i]);
    }
    EXPECT_EQ(files(), 6U) << "temporary files?";
}

TEST_F(OutputsOfAGroup, AreNeverThereWhenTheyAreNotPlaced)
{
    {
        OutputGroup forgotten;
        std::swap(group, forgotten);
        add(0, targetNamed("a.pdf"));
        std::swap(group, forgotten);
    }
    EXPECT_EQ(files(), 0U);
}

TEST_F(OutputsOfAGroup, FailOneByOne)
{
    add(0, targetNamed("a.pdf"));
    add(1, targetNamed("b.pdf"));
    scratch.write("a.pdf", "somebody else's");
    const auto entries = group.place();
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_FALSE(entries[0].asWritten);
    EXPECT_EQ(entries[0].report.status, DocumentStatus::Failed);
    ASSERT_TRUE(entries[0].report.error);
    EXPECT_EQ(entries[0].report.error->reason, Reason::OutputExists);
    EXPECT_EQ(entries[0].report.error->sentence, "the output a.pdf: the file exists");
    EXPECT_EQ(entries[0].report.error->file, "input0");
    EXPECT_FALSE(entries[0].report.pagesAfter || entries[0].report.bytesAfter);
    EXPECT_EQ(support::readFile(scratch.path("a.pdf")), "somebody else's");
    EXPECT_EQ(entries[1].report.status, DocumentStatus::Done);
    EXPECT_EQ(files(), 2U) << "temporary files?";
}

TEST_F(OutputsOfAGroup, TakeCopyNamesWhereTheyMay)
{
    Target target = targetNamed("a.pdf");
    target.number = true;
    add(0, target);
    scratch.write("a.pdf", "somebody else's");
    const auto entries = group.place();
    EXPECT_EQ(entries[0].report.status, DocumentStatus::Done);
    EXPECT_FALSE(entries[0].asWritten);
    EXPECT_NE(entries[0].report.output, "a.pdf");
    EXPECT_EQ(support::readFile(entries[0].report.output), "new");
    EXPECT_EQ(support::readFile(scratch.path("a.pdf")), "somebody else's");
}

TEST_F(OutputsOfAGroup, KeepTheOriginalsThatTheyReplace)
{
    for (const char* name : {"a.pdf", "b.pdf"}) {
        scratch.write(name, std::string("original of ") + name);
        Target target = targetNamed(name, true);
        target.backup = target.path + ".bak";
        add(0, target);
    }
    scratch.write("b.pdf.bak", "older");
    const auto entries = group.place();
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(support::readFile(scratch.path("a.pdf")), "new");
    EXPECT_EQ(support::readFile(scratch.path("a.pdf.bak")), "original of a.pdf");
    ASSERT_TRUE(entries[1].report.error);
    EXPECT_EQ(entries[1].report.error->reason, Reason::BackupExists);
    EXPECT_EQ(support::readFile(scratch.path("b.pdf")), "original of b.pdf");
    EXPECT_EQ(support::readFile(scratch.path("b.pdf.bak")), "older");
    EXPECT_EQ(files(), 4U);
}

TEST_F(OutputsOfAGroup, LeaveNoBackupOfWhatTheyCouldNotReplace)
{
    scratch.write("a.pdf", "original");
    Target target = targetNamed("a.pdf", true);
    target.inPlace = true;
    target.backup = target.path + ".bak";
    add(0, target);
    scratch.write("newer", "newer");
    fs::rename(scratch.path("newer"), scratch.path("a.pdf"));
    const auto entries = group.place();
    ASSERT_TRUE(entries[0].report.error);
    EXPECT_EQ(entries[0].report.error->reason, Reason::ChangedMeanwhile);
    EXPECT_EQ(entries[0].report.error->sentence,
              "was changed while it was being processed; nothing was replaced");
    EXPECT_EQ(support::readFile(scratch.path("a.pdf")), "newer");
    EXPECT_EQ(files(), 1U);
}

TEST_F(OutputsOfAGroup, AreFullBeforeTheyAreTooMany)
{
    std::size_t count = 0;
    for (; count < 1000 && !group.isFull(); ++count) {
        add(count, targetNamed(std::to_string(count) + ".pdf"));
    }
    EXPECT_GT(count, 1U);
    EXPECT_LT(count, 1000U);
}

} // namespace
