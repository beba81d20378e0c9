#include "KarvelPDFLibrary/fonts/InstalledFonts.h"
#include "tests/support/Inspect.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <sstream>

namespace {

using namespace karvel;
using namespace karvel::fonts;

using Names = std::vector<std::string>;

Names installed(CharacterSet set, FontFilter filter)
{
    return loadedFonts().value()->names(set, filter).value();
}

bool mayBeEmbedded(const std::string& path)
{
    return loadedFonts().value()->mayBeEmbedded(path, 0);
}

bool has(const Names& names, const std::string& name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// What fc-list says, sorted and without repeats.
Names listedBy(const std::string& arguments)
{
    std::istringstream lines(support::runCommand("fc-list " + arguments).output);
    std::set<std::string> names;
    for (std::string line; std::getline(lines, line);) {
        names.insert(line);
    }
    return Names(names.begin(), names.end());
}

FontFilter families()
{
    FontFilter filter;
    filter.familyNames = true;
    return filter;
}

TEST(InstalledFonts, AreAllFamiliesThatFontconfigLists)
{
    const Names expected = listedBy("--format '%{family[0]}\\n'");
    ASSERT_TRUE(has(expected, "DejaVu Sans"));
    EXPECT_EQ(installed(CharacterSet::Any, families()), expected);
}

TEST(InstalledFonts, AreSingleFontsWithoutTheOption)
{
    const Names names = installed(CharacterSet::Any, {});
    EXPECT_TRUE(has(names, "DejaVu Sans Bold"));
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
    EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
}

TEST(InstalledFonts, AreFilteredByWidthAndKind)
{
    FontFilter filter = families();
    filter.fixedWidth = true;
    EXPECT_EQ(installed(CharacterSet::Any, filter),
              listedBy("--format '%{family[0]}\\n' :spacing=mono"));
    EXPECT_FALSE(has(installed(CharacterSet::Any, filter), "DejaVu Sans"));
    filter = families();
    filter.scalable = true;
    EXPECT_EQ(installed(CharacterSet::Any, filter),
              listedBy("--format '%{family[0]}\\n' :scalable=true"));
    filter.embeddable = true;
    EXPECT_TRUE(has(installed(CharacterSet::Any, filter), "DejaVu Sans"));
}

TEST(InstalledFonts, CoverTheCharacterSet)
{
    for (const CharacterSet set :
         {CharacterSet::Western, CharacterSet::CentralEuropean, CharacterSet::Cyrillic,
          CharacterSet::Greek, CharacterSet::Turkish, CharacterSet::Baltic,
          CharacterSet::Vietnamese}) {
        EXPECT_TRUE(has(installed(set, families()), "DejaVu Sans")) << static_cast<int>(set);
    }
    for (const CharacterSet set : {CharacterSet::Symbol, CharacterSet::Thai, CharacterSet::Japanese,
                                   CharacterSet::SimplifiedChinese,
                                   CharacterSet::TraditionalChinese, CharacterSet::Korean}) {
        EXPECT_FALSE(has(installed(set, families()), "DejaVu Sans")) << static_cast<int>(set);
    }
}

TEST(Embedding, IsNotAllowedForWhatIsNoFont)
{
    const support::ScratchFolder scratch;
    EXPECT_FALSE(mayBeEmbedded(scratch.path("missing.ttf")));
    EXPECT_FALSE(mayBeEmbedded(scratch.write("text.ttf", "no font")));
}

struct Licence {
    const char* name;
    int bits;
    bool embeddable;
};

TEST(Licences, Decide)
{
    const Licence rows[] = {{"installable", 0, true},
                            {"restricted", 2, false},
                            {"preview and print", 4, true},
                            {"editable", 8, true},
                            {"restricted but editable", 10, true},
                            {"bitmaps only", 0x200, false},
                            {"no subsets", 0x100, true}};
    for (const Licence& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string found = support::runCommand("fc-match -f '%{file}' 'DejaVu Sans'").output;
        std::string font = support::readFile(found);
        ASSERT_EQ(font.substr(0, 4), std::string("\0\1\0\0", 4));
        // The table directory has 16 bytes an entry: tag, checksum, offset, length.
        std::size_t entry = 12;
        while (font.compare(entry, 4, "OS/2") != 0) {
            entry += 16;
        }
        std::size_t offset = 0;
        for (std::size_t i = 8; i < 12; ++i) {
            offset = offset * 256 + static_cast<unsigned char>(font[entry + i]);
        }
        font[offset + 8] = static_cast<char>(row.bits >> 8);
        font[offset + 9] = static_cast<char>(row.bits & 0xFF);
        const support::ScratchFolder scratch;
        EXPECT_EQ(mayBeEmbedded(scratch.write("a.ttf", font)), row.embeddable);
    }
}

} // namespace
