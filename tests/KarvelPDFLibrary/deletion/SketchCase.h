#pragma once

#include "DeletionCase.h"
#include "tests/support/Sketch.h"

#include <gmock/gmock.h>

namespace support {

/// A case of the deletion modules: a document, and what is to be found when pages have gone.
struct SketchCase {
    const char* name;
    Sketch document;

    /// Paths for valueAt() with what is found there.
    std::vector<std::pair<std::string, std::string>> found;

    /// Texts that are nowhere in the file.
    std::vector<std::string> nowhere = {};

    /// The pages that go, from the highest down; empty for those of the module's other cases.
    std::vector<int> removed = {};
};

/// Removes pages in every way of saving and looks at the paths.
inline void expectFound(const SketchCase& given, const std::vector<int>& usuallyRemoved = {1})
{
    const std::vector<int>& removed = given.removed.empty() ? usuallyRemoved : given.removed;
    const std::string pdf = given.document.built();
    for (const std::string& text : given.nowhere) {
        EXPECT_NE(everythingIn(pdf).find(text), std::string::npos) << text;
    }
    const std::string saved = withoutPages(pdf, removed);
    for (const auto& [path, value] : given.found) {
        EXPECT_EQ(valueAt(saved, path), value) << path;
    }
    const std::string everything = everythingIn(saved);
    for (const std::string& text : given.nowhere) {
        EXPECT_EQ(everything.find(text), std::string::npos) << text;
    }
    expectSameWithoutIndex(pdf, removed, saved);
}

template <std::size_t count>
void expectFound(const SketchCase (&cases)[count], const std::vector<int>& usuallyRemoved = {1})
{
    for (const SketchCase& given : cases) {
        SCOPED_TRACE(given.name);
        expectFound(given, usuallyRemoved);
    }
}

} // namespace support
