#include "KarvelPDFLibrary/base/Module.h"

#include "KarvelPDFLibrary/fonts/InstalledFonts.h"
#include "tests/support/Inspect.h"

#include <filesystem>
#include <future>
#include <gmock/gmock.h>
#include <vector>

namespace {

using namespace karvel;
using testing::HasSubstr;
using testing::StartsWith;

using Fonts = Module<fonts::InstalledFonts>;

TEST(Module, SaysWhyItCannotBeLoaded)
{
    const support::ScratchFolder scratch;
    const std::pair<std::string, const char*> rows[] = {
        {"Missing.so", "Missing.so: cannot open shared object file"},
        {scratch.write("Text.so", "no library"), "file too short"},
        {"libz.so.1", "undefined symbol: karvelModule"}};
    for (const auto& [file, reason] : rows) {
        SCOPED_TRACE(file);
        const auto loaded = Fonts(file.c_str()).loaded();
        ASSERT_FALSE(loaded.has_value());
        EXPECT_EQ(loaded.error().code, ErrorCode::LibraryFailed);
        EXPECT_THAT(loaded.error().text, StartsWith(file + " cannot be loaded: "));
        EXPECT_THAT(loaded.error().text, HasSubstr(reason));
    }
}

TEST(Module, IsTriedAgainAfterAFailure)
{
    const support::ScratchFolder scratch;
    const std::string file = scratch.path("Late.so");
    Fonts module(file.c_str());
    EXPECT_FALSE(module.loaded().has_value());
    std::filesystem::copy_file(FONTS_MODULE, file);
    ASSERT_TRUE(module.loaded().has_value()) << module.loaded().error().text;
    EXPECT_FALSE((*module.loaded())->mayBeEmbedded(file, 0)) << "no font";
}

TEST(Module, IsTheSameOneForEveryThread)
{
    std::vector<std::future<Result<fonts::InstalledFonts*>>> threads;
    for (int i = 0; i < 8; ++i) {
        threads.push_back(std::async(std::launch::async, fonts::loadedFonts));
    }
    for (auto& thread : threads) {
        EXPECT_EQ(thread.get().value(), fonts::loadedFonts().value());
    }
}

} // namespace
