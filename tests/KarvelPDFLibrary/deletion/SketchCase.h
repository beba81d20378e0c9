#pragma once

#include "DeletionCase.h"
#include "tests/support/Sketch.h"

#include <gmock/gmock.h>

/// A case of the deletion modules: a document, the pages that go (from the highest down), and what
/// is to be found then.
namespace support {

struct SketchCase {
    const char* name;
    Sketch document;
    std::vector<int> removed;

    /// Paths for valueAt() with what is found there.
    std::vector<std::pair<std::string, std::string>> found;

    /// Texts that are nowhere in the file.
    std::vector<std::string> nowhere = {};
};

inline void PrintTo(const SketchCase& value, std::ostream* out)
{
    *out << value.name;
}

class DeletedFrom : public testing::TestWithParam<SketchCase> {};

/// Removes the pages in every way of saving and looks at the paths.
inline void expectFound(const SketchCase& given)
{
    const std::string pdf = given.document.built();
    for (const std::string& text : given.nowhere) {
        EXPECT_NE(everythingIn(pdf).find(text), std::string::npos) << text;
    }
    const std::string saved = withoutPages(pdf, given.removed);
    for (const auto& [path, value] : given.found) {
        EXPECT_EQ(valueAt(saved, path), value) << path;
    }
    const std::string everything = everythingIn(saved);
    for (const std::string& text : given.nowhere) {
        EXPECT_EQ(everything.find(text), std::string::npos) << text;
    }
    expectSameWithoutIndex(pdf, given.removed, saved);
}

} // namespace support
