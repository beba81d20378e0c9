#include "KarvelPDFLibrary/viewer/Viewer.h"

#include <dlfcn.h>
#include <string>

namespace karvel::viewer {

namespace {

/// Beside the library that this code is part of; else wherever the system looks.
void* openModule()
{
    Dl_info here = {};
    if (dladdr(reinterpret_cast<void*>(&openModule), &here) != 0 && here.dli_fname != nullptr) {
        std::string path = here.dli_fname;
        path.erase(path.rfind('/') + 1);
        if (void* module = dlopen((path + moduleFile).c_str(), RTLD_NOW | RTLD_LOCAL)) {
            return module;
        }
    }
    return dlopen(moduleFile, RTLD_NOW | RTLD_LOCAL);
}

Result<Viewer*> load()
{
    void* module = openModule();
    const auto entry =
        module == nullptr ? nullptr : reinterpret_cast<ModuleEntry>(dlsym(module, moduleEntry));
    if (entry == nullptr) {
        const char* reason = dlerror();
        return fail(ErrorCode::LibraryFailed, std::string(moduleFile) + " cannot be loaded: " +
                                                  (reason == nullptr ? "no reason given" : reason));
    }
    return entry();
}

} // namespace

Result<Viewer*> loadedViewer()
{
    static const Result<Viewer*> viewer = load();
    return viewer;
}

} // namespace karvel::viewer
