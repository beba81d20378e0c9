#include "KarvelPDFLibrary/objects/ObjectView.h"

#include "KarvelPDFLibrary/deletion/Referrers.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using namespace karvel;
using support::PdfBuilder;

/// A document with an object that refers to `old`, in various states of being changed so that it
/// refers to `other` instead.
struct Numbers {
    int object = 0;
    int old = 0;
    int other = 0;
    int generationOfNull = 0; // under which nothing is in use; 0 where no reference means null
};

std::string textTo(int target, const Numbers& numbers)
{
    const std::string null = numbers.generationOfNull == 0
                                 ? std::string()
                                 : " /Null " + std::to_string(numbers.other) + " " +
                                       std::to_string(numbers.generationOfNull) + " R";
    return "<< /To " + PdfBuilder::reference(target) + null + " >>";
}

std::string fileWith(Numbers& numbers)
{
    support::PagedDocument pages(1);
    numbers.old = pages.builder.add("(old)");
    numbers.other = pages.builder.add("(other)");
    numbers.object = pages.builder.add(textTo(numbers.old, numbers));
    pages.catalogEntries = "/Holds " + PdfBuilder::reference(numbers.object);
    return pages.build();
}

/// Changes the object, and returns its number.
using Change = int (*)(Document&, const Numbers&);

int leave(Document&, const Numbers& numbers)
{
    return numbers.object;
}

int changeText(Document& document, const Numbers& numbers)
{
    EXPECT_TRUE(document.changes().replaceText(QPDFObjGen(numbers.object, 0),
                                               textTo(numbers.other, numbers)));
    return numbers.object;
}

int settleText(Document& document, const Numbers& numbers)
{
    changeText(document, numbers);
    document.changes().settle();
    return numbers.object;
}

int changeObject(Document& document, const Numbers& numbers)
{
    const QPDFObjectHandle object = document.file().getObject(numbers.object, 0);
    document.changes().edit(object).replaceKey("/To", document.file().getObject(numbers.other, 0));
    return numbers.object;
}

int changeObjectAfterText(Document& document, const Numbers& numbers)
{
    changeText(document, numbers);
    document.changes().edit(document.file().getObject(numbers.object, 0));
    return numbers.object;
}

int addObject(Document& document, const Numbers& numbers)
{
    const auto value = QPDFObjectHandle::parse(&document.file(), textTo(numbers.other, numbers));
    return document.changes().add(value).getObjectID();
}

int removeObject(Document& document, const Numbers& numbers)
{
    document.changes().remove(QPDFObjGen(numbers.object, 0));
    return numbers.object;
}

int removeObjectAfterText(Document& document, const Numbers& numbers)
{
    changeText(document, numbers);
    return removeObject(document, numbers);
}

enum class Target { Old, Other, None };
enum class Text { OfFile, New, None };

struct State {
    const char* name;
    Change change;
    Target target;
    Text text; // with an index; without one there is only a new one
};

const State states[] = {
    {"unchanged", leave, Target::Old, Text::OfFile},
    {"changed by its text", changeText, Target::Other, Text::New},
    {"changed by its text, which was built", settleText, Target::Other, Text::None},
    {"changed as an object", changeObject, Target::Other, Text::None},
    {"changed as an object after its text", changeObjectAfterText, Target::Other, Text::None},
    {"added", addObject, Target::Other, Text::None},
    {"removed", removeObject, Target::None, Text::None},
    {"removed after its text was changed", removeObjectAfterText, Target::None, Text::None},
};

class ObjectViewTest : public testing::TestWithParam<bool> {
protected:
    void SetUp() override
    {
        // What stands before the header makes a file unfit for an index.
        numbers_.generationOfNull = GetParam() ? 2 : 0;
        pdf_ = (GetParam() ? "" : " ") + fileWith(numbers_);
    }

    /// Looks at a document of its own, since looking may build objects.
    template <class Look>
    void inEachState(const Look& look)
    {
        for (const State& state : states) {
            SCOPED_TRACE(state.name);
            const auto document = support::opened(pdf_);
            ASSERT_EQ(document->index() != nullptr, GetParam());
            const int object = state.change(*document, numbers_);
            look(*document, state, object);
        }
    }

    int numberOf(Target target) const
    {
        return target == Target::Old ? numbers_.old : target == Target::Other ? numbers_.other : 0;
    }

    Numbers numbers_;
    std::string pdf_;
};

TEST_P(ObjectViewTest, TellsTheReferencesThatAnObjectHasNow)
{
    inEachState([&](Document& document, const State& state, int object) {
        ObjectView view = document.objects();
        std::vector<int> found;
        for (const std::uint32_t target : view.references(object)) {
            if (target != 0) {
                found.push_back(static_cast<int>(target));
            }
        }
        const bool refersToAny = state.target != Target::None;
        EXPECT_EQ(found,
                  refersToAny ? std::vector<int>{numberOf(state.target)} : std::vector<int>());
        const bool isUnchanged = GetParam() && state.text == Text::OfFile;
        EXPECT_EQ(view.indexedReferences(object).has_value(), isUnchanged);
    });
}

TEST_P(ObjectViewTest, TellsTheTextThatAnObjectHasNow)
{
    inEachState([&](Document& document, const State& state, int object) {
        ObjectView view = document.objects();
        const bool hasText = state.text == Text::New || (GetParam() && state.text == Text::OfFile);
        const std::string expected =
            hasText ? textTo(numberOf(state.target), numbers_) : std::string();
        const std::string found(view.text(object));
        EXPECT_EQ(found.substr(0, expected.size()), expected);
        EXPECT_EQ(found.size() > expected.size(), hasText) << "a text goes on after the value";
        EXPECT_EQ(view.changedText(object) != nullptr, state.text == Text::New);
    });
}

TEST_P(ObjectViewTest, GivesTheObjectAsItIsNow)
{
    inEachState([&](Document& document, const State& state, int object) {
        QPDFObjectHandle value = document.objects().object(object);
        ASSERT_EQ(value.isNull(), state.target == Target::None);
        if (!value.isNull()) {
            EXPECT_EQ(value.getKey("/To").getObjectID(), numberOf(state.target));
        }
    });
}

TEST_P(ObjectViewTest, LetsAnObjectBeFoundFromWhatItRefersToNow)
{
    inEachState([&](Document& document, const State& state, int object) {
        ObjectView view = document.objects();
        const deletion::Referrers referrers(document, view);
        const auto refersTo = [&](int target) {
            const ObjectView::Numbers found = referrers.of(target);
            return std::count(found.begin(), found.end(), static_cast<std::uint32_t>(object)) > 0;
        };
        EXPECT_EQ(refersTo(numbers_.old), state.target == Target::Old);
        EXPECT_EQ(refersTo(numbers_.other), state.target == Target::Other);
    });
}

TEST_P(ObjectViewTest, EditsTheObjectThatIsThereNow)
{
    inEachState([&](Document& document, const State& state, int object) {
        if (state.target == Target::None) {
            return; // nobody edits what is gone
        }
        ObjectView view = document.objects();
        view.edit(view.idOf(object), {{"Added", PdfBuilder::reference(numbers_.old)}});
        QPDFObjectHandle value = view.object(object);
        EXPECT_EQ(value.getKey("/To").getObjectID(), numberOf(state.target));
        EXPECT_EQ(value.getKey("/Added").getObjectID(), numbers_.old);
        EXPECT_NE(document.changes().kind(object), std::nullopt);
    });
}

INSTANTIATE_TEST_SUITE_P(Files, ObjectViewTest, testing::Values(true, false), [](const auto& info) {
    return std::string(info.param ? "WithAnIndex" : "WithoutAnIndex");
});

struct Edit {
    const char* name;
    const char* object;
    bool isByText;
    const char* turned; // its /Rotate then
};

TEST(EditingAnObject, GoesByItsTextWhereThatTellsAll)
{
    const Edit rows[] = {
        {"without the key", "<< /A (a) >>", true, "180"},
        {"with a value", "<< /A (a) /Rotate 90 >>", true, "90"},
        {"with null", "<< /A (a) /Rotate null >>", false, "180"},
        {"with a reference to nothing", "<< /A (a) /Rotate 999 0 R >>", false, "180"},
        {"with a reference to what may be null", "<< /A (a) /Rotate 1 0 R >>", false, "90"},
        {"with the key twice", "<< /A (a) /Rotate 0 /Rotate 90 >>", false, "90"},
        {"a stream", "<< /Length 1 /Rotate 90 >>\nstream\nx\nendstream", false, "90"},
    };
    for (const Edit& row : rows) {
        SCOPED_TRACE(row.name);
        PdfBuilder builder;
        builder.add("90"); // object 1
        const int object = builder.add(row.object);
        const int page = builder.reserve();
        const int pages =
            builder.add("<< /Type /Pages /Count 1 /Kids [" + PdfBuilder::reference(page) + "] >>");
        builder.set(page, "<< /Type /Page /MediaBox [0 0 9 9] /Parent " +
                              PdfBuilder::reference(pages) + " >>");
        const auto document = support::opened(
            builder.build(builder.add("<< /Type /Catalog /Pages " + PdfBuilder::reference(pages) +
                                      " /Holds " + PdfBuilder::reference(object) + " >>")));
        ASSERT_NE(document->index(), nullptr);
        ObjectView view = document->objects();
        view.edit(view.idOf(object), {{"Rotate", "180", true}, {"B", "[7]"}});
        EXPECT_EQ(view.changedText(object) != nullptr, row.isByText);
        QPDFObjectHandle value = view.object(object);
        value = value.isStream() ? value.getDict() : value;
        EXPECT_EQ(value.getKey("/Rotate").unparseResolved(), row.turned);
        EXPECT_EQ(value.getKey("/B").unparse(), "[ 7 ]");
    }
}

} // namespace
