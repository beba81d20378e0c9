#include "KarvelPDFLibrary/saving/EscapedNames.h"
#include "tests/KarvelPDFLibrary/deletion/DeletionCase.h"
#include "tests/support/Sketch.h"

namespace {

using namespace karvel;

TEST(EscapedNames, AreReadBackAsTheyWere)
{
    for (const char* name : {"/Plain", "/A#42", "/A#B", "/#", "/a b/(c)", "/\xEB\x82\xA8"}) {
        EXPECT_EQ(QPDFObjectHandle::parse(saving::nameText(name)).getName(), name);
    }
}

/// A catalog that is written anew when page 1 goes, and an object that is not changed.
const char* const catalog = "/OpenAction [@p1 /Fit] /X#2342 [/V#2342 @other @name]";

std::string document()
{
    return support::Sketch{
        {"", ""}, catalog, {{"other", "<< /K#23 [<< /W /W#230 >>] >>"}, {"name", "/N#23"}}}
        .built();
}

TEST(EscapedNames, StayTheSameInBothWaysOfSaving)
{
    const std::string saved = support::withoutPages(document(), {1});
    EXPECT_EQ(support::valueAt(saved, "Root/OpenAction"), "nothing");
    for (const auto& [path, value] :
         {std::pair("Root/X#42/0", "/V#42"), std::pair("Root/X#42/1/K#/0/W", "/W#0"),
          std::pair("Root/X#42/2", "/N#")}) {
        EXPECT_EQ(support::valueAt(saved, path), value) << path;
    }
}

TEST(EscapedNames, StayTheSameHoweverOftenADocumentIsSaved)
{
    const auto opened = support::opened(document());
    support::savedIn(*opened, saving::Way::Rewrite);
    const std::string again = support::savedIn(*opened, saving::Way::Rewrite);
    EXPECT_EQ(support::firstDifference(document(), again), "");
}

} // namespace
