#include "DeletionCase.h"
#include "Directness.h"
#include "ResidueDocument.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <qpdf/QPDF.hh>

namespace {

using namespace karvel;

constexpr int pageCount = 5;

struct Case {
    const char* name;

    /// How qpdf's command line writes the document; null for the document as it is.
    const char* qpdfOptions;

    /// What is done to the document before; null for nothing.
    std::string (*change)(const std::string& pdf);
    const char* password;
};

class Residue : public testing::TestWithParam<Case> {
protected:
    static std::string document()
    {
        const Case& given = GetParam();
        std::string pdf = support::residueDocument(pageCount).built();
        if (given.change != nullptr) {
            pdf = given.change(pdf);
        }
        return given.qpdfOptions == nullptr ? pdf : support::rewritten(pdf, given.qpdfOptions);
    }

    static std::string without(const std::string& pdf, const std::vector<int>& pages,
                               saving::Way way)
    {
        auto document = support::opened(pdf, GetParam().password);
        for (auto page = pages.rbegin(); page != pages.rend(); ++page) {
            EXPECT_TRUE(pages::deletePages(*document, {*page, 1}).has_value());
            if (way == saving::Way::CopyUnchanged) {
                support::savedIn(*document, way); // nothing that a save leaves is in the way
            }
        }
        return support::savedIn(*document, way);
    }
};

/// The words that a document without some pages must have.
std::set<std::string> wordsWithout(const std::set<std::string>& words,
                                   const std::vector<int>& removed)
{
    std::set<std::string> left;
    for (const std::string& word : words) {
        // What a later revision hid is no part of the document.
        const bool hidden = word.substr(0, 3) == "old";
        if (!hidden && std::none_of(removed.begin(), removed.end(),
                                    [&](int page) { return support::belongsTo(word, page); })) {
            left.insert(word);
        }
    }
    return left;
}

/// How a file is encrypted, as each of its passwords shows it.
std::string encryptionOf(const std::string& pdf)
{
    std::string told;
    for (const char* password : {"u", "o"}) {
        QPDF file;
        file.processMemoryFile("document", pdf.data(), pdf.size(), password);
        int revision = 0, permissions = 0, version = 0;
        QPDF::encryption_method_e streams{}, strings{}, files{};
        if (file.isEncrypted(revision, permissions, version, streams, strings, files)) {
            for (const int part : {revision, permissions, version, int{streams}, int{strings},
                                   int{file.ownerPasswordMatched()}}) {
                told += std::to_string(part) + " ";
            }
        }
    }
    return told;
}

/// The words of one set that another hasn't got.
std::vector<std::string> only(const std::set<std::string>& one, const std::set<std::string>& other)
{
    std::vector<std::string> words;
    std::set_difference(one.begin(), one.end(), other.begin(), other.end(),
                        std::back_inserter(words));
    return words;
}

TEST_P(Residue, NothingOfARemovedPageStaysAndNothingOfTheOthersIsLost)
{
    const std::string pdf = document();
    const char* password = GetParam().password;
    const std::set<std::string> before = support::ownWords(pdf, password);
    ASSERT_GT(before.size(), 75U * pageCount);
    const std::string encryption = encryptionOf(pdf);
    EXPECT_EQ(encryption.empty(), *password == 0);
    for (const std::vector<int>& removed :
         {std::vector<int>{2}, {1}, {5}, {1, 3}, {2, 3, 4}, {1, 2, 4, 5}}) {
        SCOPED_TRACE(testing::PrintToString(removed));
        const std::set<std::string> expected = wordsWithout(before, removed);
        std::string saved[2];
        for (const auto way : {saving::Way::CopyUnchanged, saving::Way::Rewrite}) {
            SCOPED_TRACE(way == saving::Way::Rewrite ? "rewritten" : "copied");
            std::string& bytes = saved[static_cast<int>(way)];
            bytes = without(pdf, removed, way);
            EXPECT_EQ(support::problems(bytes, password), "");
            EXPECT_EQ(encryptionOf(bytes), encryption);
            const std::set<std::string> after = support::ownWords(bytes, password);
            EXPECT_THAT(only(after, expected), testing::ElementsAre()) << "stayed";
            EXPECT_THAT(only(expected, after), testing::ElementsAre()) << "was lost";
            const std::string everything = support::everythingIn(bytes, password);
            for (const char* text :
                 {"All pages", "A site", "A thread", "on all pages", "attached to the document",
                  "on every page", "drawn by all pages", "shared", "choice", "kept label",
                  "kept piece", "own data", "scripted media"}) {
                EXPECT_NE(everything.find(text), std::string::npos) << text;
            }
        }
        EXPECT_EQ(support::firstDifference(saved[0], saved[1], password), "");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Deletion, Residue,
    testing::Values(
        Case{"plain", nullptr, nullptr, ""},
        Case{"incremental_update", nullptr,
             [](const std::string& pdf) { return support::withLaterRevision(pdf, pageCount); }, ""},
        Case{"hybrid_references", nullptr, support::asHybridFile, ""},
        Case{"direct_objects", nullptr, support::withDirectObjects, ""},
        Case{"indirect_objects", nullptr, support::withIndirectObjects, ""},
        Case{"object_streams", "--object-streams=generate", nullptr, ""},
        Case{"linearized", "--linearize", nullptr, ""},
        Case{"linearized_object_streams", "--linearize --object-streams=generate", nullptr, ""},
        Case{"rc4_40", "--allow-weak-crypto --encrypt u o 40 --", nullptr, "u"},
        Case{"rc4_128", "--allow-weak-crypto --encrypt u o 128 --use-aes=n --", nullptr, "u"},
        Case{"aes_128", "--object-streams=generate --encrypt u o 128 --use-aes=y --", nullptr, "u"},
        Case{"aes_256", "--object-streams=generate --encrypt u o 256 --", nullptr, "o"}),
    [](const auto& info) { return info.param.name; });

} // namespace
