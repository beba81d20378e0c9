#include "VantoraHost/verification/Patterns.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace {

using namespace vantora::verification;

// Of two letters, so that beginnings come again and patterns overlap.
std::string anyText(std::mt19937& random, std::size_t length)
{
    std::string text;
    for (std::size_t i = 0; i < length; ++i) {
        text += random() % 8 == 0 ? '\xff' : '\0';
    }
    return text;
}

TEST(Patterns, AreFoundWhereverALookAtEachPlaceFindsThem)
{
    std::mt19937 random(1);
    std::size_t hits = 0;
    for (int round = 0; round < 200; ++round) {
        const std::string text = anyText(random, random() % 200);
        Patterns patterns;
        std::set<std::size_t> expected;
        for (std::size_t id = 0; id < 30; ++id) {
            const std::string pattern = anyText(random, 12 + random() % 9);
            ASSERT_TRUE(patterns.add(pattern, id));
            if (text.find(pattern) != std::string::npos) {
                expected.insert(id);
            }
        }
        std::set<std::size_t> found;
        patterns.findIn(text, [&](std::size_t id) { found.insert(id); });
        EXPECT_EQ(found, expected) << round;
        hits += expected.size();
    }
    EXPECT_GT(hits, 20U) << "some have to be there";
}

TEST(Patterns, AreFoundAtBothEndsAndRefusedWhereTheyTellNothing)
{
    Patterns patterns;
    EXPECT_FALSE(patterns.add("eleven char", 1)) << "too short";
    EXPECT_TRUE(patterns.add("at the beginning", 2));
    EXPECT_TRUE(patterns.add("at the end of it", 3));
    std::set<std::size_t> found;
    patterns.findIn("at the beginning, at the end of it",
                    [&](std::size_t id) { found.insert(id); });
    EXPECT_EQ(found, (std::set<std::size_t>{2, 3}));
    patterns.findIn("at the begin", [](std::size_t) { ADD_FAILURE() << "a beginning is not all"; });
    std::size_t taken = 0;
    for (std::size_t id = 0; id < 1000; ++id) {
        taken += patterns.add("begins alike " + std::to_string(id), id) ? 1 : 0;
    }
    EXPECT_LT(taken, 1000U) << "looking for them would take ever longer";
}

TEST(ContentStrings, AreWhatTheContentShows)
{
    const std::pair<const char*, const char*> rows[] = {
        {"BT (Hello) Tj ET", "Hello"},
        {"[(He) -20 (llo)] TJ", "Hello"},
        {"(a\\(b\\)c\\\\d (nested)) Tj", "a(b)c\\d (nested)"},
        {"(\\101\\60\\7x) Tj", "A0\ax"},
        {"<48656c6C 6f> Tj", "Hello"},
        {"<4865 7> Tj", "Hep"},
        {"/P << /MCID 3 /A (x) >> BDC (Hel) Tj EMC /P <</MCID 4>> BDC (lo) Tj EMC", "xHello"},
        {"(never shown)", ""},
        {"(breaks off Tj", "breaks off Tj"},
        {"(and so \\", "" /* no operator shows it */},
    };
    for (const auto& [content, strings] : rows) {
        EXPECT_EQ(stringsIn(content), strings) << content;
    }
}

TEST(Texts, AreCountedAndComparedWithoutWhatIsBetweenTheirCharacters)
{
    EXPECT_EQ(squeezed(std::string_view("\xfe\xff\0A\0 \0b \n", 11)), "\xfe\xff"
                                                                      "Ab");
    EXPECT_EQ(characters("caf\xc3\xa9 \xe2\x82\xac"), 6U);
}

} // namespace
