#include "KarvelPDFLibrary/base/Module.h"

#include <dlfcn.h>
#include <link.h>

namespace karvel {

namespace {

/// Beside the library that this code is part of; where the system looks, when that is the program.
std::string placeOf(const char* file)
{
    Dl_info here = {};
    link_map* loaded = nullptr;
    if (dladdr1(reinterpret_cast<void*>(&placeOf), &here, reinterpret_cast<void**>(&loaded),
                RTLD_DL_LINKMAP) == 0) {
        return file;
    }
    std::string path = loaded->l_name; // empty for the program
    path.erase(path.rfind('/') + 1);
    return path + file;
}

} // namespace

Result<void*> moduleEntryIn(const char* file)
{
    void* module = dlopen(placeOf(file).c_str(), RTLD_NOW | RTLD_LOCAL);
    void* entry = module == nullptr ? nullptr : dlsym(module, moduleEntry);
    if (entry == nullptr) {
        const char* reason = dlerror();
        return fail(ErrorCode::LibraryFailed, std::string(file) + " cannot be loaded: " +
                                                  (reason == nullptr ? "no reason given" : reason));
    }
    return entry;
}

} // namespace karvel
