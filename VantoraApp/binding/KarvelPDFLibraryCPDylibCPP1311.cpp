#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"

#include "VantoraApp/binding/Forwarding.h"

#include <algorithm>
#include <climits>
#include <dlfcn.h>
#include <stdexcept>

using binding::Function;

static_assert(sizeof(wchar_t) == 4, "the library's wide strings are UTF-32");

/// Host and plug-ins read each other's objects, whatever their builds.
class KarvelPDFLibraryCPDylibCPP1311::Layout {
    using Class = KarvelPDFLibraryCPDylibCPP1311;
    static_assert(offsetof(Class, libraryHandle) == 0);
    static_assert(offsetof(Class, instanceID) == sizeof(void*));
    static_assert(offsetof(Class, loadFailed) == sizeof(void*) + 4 && sizeof(loadFailed) == 1);
    static_assert(offsetof(Class, functionTable) == 2 * sizeof(void*));
    static_assert(sizeof(Class) == (2 + binding::functionCount) * sizeof(void*));
};

namespace {

std::string narrowed(const std::wstring& path)
{
    std::string bytes(path.size(), '\0');
    std::transform(path.begin(), path.end(), bytes.begin(),
                   [](wchar_t unit) { return static_cast<char>(unit & 0xFF); });
    return bytes;
}

int countedBytes(std::size_t units, std::size_t unitSize)
{
    if (units > INT_MAX / unitSize) {
        throw std::length_error("a text is too long for the PDF library");
    }
    return static_cast<int>(units * unitSize);
}

} // namespace

KarvelPDFLibraryCPDylibCPP1311::KarvelPDFLibraryCPDylibCPP1311(const std::wstring& libraryPath)
{
    libraryHandle = dlopen(narrowed(libraryPath).c_str(), RTLD_LAZY | RTLD_LOCAL);
    if (libraryHandle == nullptr) {
        loadFailed = true;
        return;
    }
    bindFunctions();
    if (!loadFailed) {
        instanceID = function<int()>(Function::CreateLibrary)();
    }
}

KarvelPDFLibraryCPDylibCPP1311::~KarvelPDFLibraryCPDylibCPP1311()
{
    if (instanceID > 0) {
        function<int(int)>(Function::ReleaseLibrary)(instanceID);
    }
    if (libraryHandle != nullptr) {
        dlclose(libraryHandle);
        libraryHandle = nullptr;
    }
}

void KarvelPDFLibraryCPDylibCPP1311::bindFunctions()
{
    for (int i = 0; i < binding::functionCount; ++i) {
        functionTable[i] = AttachFunction(binding::exportNames[i], false);
    }
}

bool KarvelPDFLibraryCPDylibCPP1311::LibraryLoaded() const
{
    return !loadFailed;
}

void* KarvelPDFLibraryCPDylibCPP1311::AttachFunction(const char* name, bool optional)
{
    // A null handle would let dlsym search the whole program.
    void* address = libraryHandle == nullptr ? nullptr : dlsym(libraryHandle, name);
    if (address == nullptr && !optional) {
        loadFailed = true;
    }
    return address;
}

const wchar_t* KarvelPDFLibraryCPDylibCPP1311::WideStringParm(const std::wstring& text)
{
    if (text.empty() || loadFailed) {
        return nullptr;
    }
    const int bytes = countedBytes(text.size(), sizeof(wchar_t));
    char* buffer = function<char*(int, int)>(Function::CreateBuffer)(instanceID, bytes);
    function<int(int, char*, const char*, int)>(Function::AddToBuffer)(
        instanceID, buffer, reinterpret_cast<const char*>(text.data()), bytes);
    return reinterpret_cast<const wchar_t*>(buffer);
}

const char* KarvelPDFLibraryCPDylibCPP1311::StringParm(const std::string& text, int& bufferUsed)
{
    bufferUsed = 0;
    if (loadFailed || text.find('\0') == std::string::npos) {
        return text.c_str();
    }
    const int bytes = countedBytes(text.size(), 1);
    char* buffer = function<char*(int, int)>(Function::CreateBuffer)(instanceID, bytes);
    function<int(int, char*, const char*, int)>(Function::AddToBuffer)(instanceID, buffer,
                                                                       text.data(), bytes);
    bufferUsed = 1;
    return buffer;
}

std::wstring KarvelPDFLibraryCPDylibCPP1311::WideStringResult(wchar_t* text, int length)
{
    return text == nullptr || length <= 0 ? std::wstring()
                                          : std::wstring(text, static_cast<std::size_t>(length));
}
