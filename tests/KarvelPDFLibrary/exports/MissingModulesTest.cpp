#include "exports.h"
#include "tests/support/Inspect.h"
#include "tests/support/Sketch.h"

#include <dlfcn.h>
#include <filesystem>
#include <gmock/gmock.h>

namespace {

using testing::StartsWith;

/// The library in a folder where nothing lies beside it.
class LibraryAlone {
public:
    LibraryAlone()
    {
        const std::string file = scratch_.path("Library.dylib");
        std::filesystem::copy_file(PDF_LIBRARY, file);
        library_ = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
        instance = function<decltype(KPLCreateLibrary)>("KPLCreateLibrary")();
    }

    template <class Function>
    Function* function(const char* name) const
    {
        return reinterpret_cast<Function*>(dlsym(library_, name));
    }

    void load(const std::string& pdf) const
    {
        const auto fromString = function<decltype(KPLLoadFromString)>("KPLLoadFromString");
        ASSERT_GT(fromString(instance, pdf.c_str(), nullptr), 0);
    }

    std::wstring lastError() const
    {
        return function<decltype(KPLLastErrorText)>("KPLLastErrorText")(instance);
    }

    int instance = 0;

private:
    const support::ScratchFolder scratch_;
    void* library_ = nullptr;
};

void listFonts(const LibraryAlone& library)
{
    library.function<decltype(KPLGetInstalledFontsByCharset)>("KPLGetInstalledFontsByCharset")(
        library.instance, 2, 0);
}

void readText(const LibraryAlone& library)
{
    library.function<decltype(KPLGetPageText)>("KPLGetPageText")(library.instance, 1, 1);
}

void readProperty(const LibraryAlone& library)
{
    library.function<decltype(KPLGetXmpProperty)>("KPLGetXmpProperty")(library.instance, nullptr,
                                                                       nullptr);
}

void deletePage(const LibraryAlone& library)
{
    library.function<decltype(KPLDeletePages)>("KPLDeletePages")(library.instance, 1, 1);
    library.function<decltype(KPLSaveToString)>("KPLSaveToString")(library.instance);
}

struct Need {
    const char* name;
    const char* packet;
    void (*use)(const LibraryAlone& library);
    std::wstring failure; // how it begins
};

TEST(WithoutItsModules, TheLibraryDoesWhatNeedsNoneAndSaysWhichOneIsMissing)
{
    const char* const plain = "<x:xmpmeta xmlns:x='adobe:ns:meta/'/>";
    const char* const picture = "<x xmlns:xmp='http://ns.adobe.com/xap/1.0/'><xmp:Thumbnails/></x>";
    const std::wstring packets = L"KarvelPDFLibraryXmp.so cannot be loaded: ";
    const Need rows[] = {
        {"fonts", plain, listFonts, L"KarvelPDFLibraryFonts.so cannot be loaded: "},
        {"text", plain, readText, L"KarvelPDFLibraryViewer.so cannot be loaded: "},
        {"property", plain, readProperty, packets},
        {"property of no packet", "", readProperty, L""},
        {"page of a document with a picture of it", picture, deletePage,
         L"data in memory: " + packets},
        {"page of a document without", plain, deletePage, L""}};
    const LibraryAlone library;
    for (const Need& row : rows) {
        SCOPED_TRACE(row.name);
        library.load(support::Sketch{
            {"", ""}, "/Metadata @xmp", {{"xmp", std::string("/Type /Metadata|") + row.packet}}}
                         .built());
        library.function<decltype(KPLClearLastError)>("KPLClearLastError")(library.instance);
        row.use(library);
        if (row.failure.empty()) {
            EXPECT_EQ(library.lastError(), L"");
        } else {
            EXPECT_THAT(library.lastError(), StartsWith(row.failure));
        }
    }
}

} // namespace
