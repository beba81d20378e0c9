#include "LoaderSpy.h"

namespace {

// None before the program's own objects are made: sanitizers look for functions even earlier.
LoaderSpy* spyAtWork = nullptr;

} // namespace

extern "C" {
void* __real_dlopen(const char* path, int flags);
void* __real_dlsym(void* handle, const char* name);
int __real_dlclose(void* handle);

void* __wrap_dlopen(const char* path, int flags)
{
    if (spyAtWork != nullptr) {
        spyAtWork->opened.push_back({path, flags});
    }
    return __real_dlopen(path, flags);
}

void* __wrap_dlsym(void* handle, const char* name)
{
    if (spyAtWork != nullptr) {
        spyAtWork->lookups.emplace_back(name);
    }
    const bool isHidden = spyAtWork != nullptr && spyAtWork->hidden == name;
    return isHidden ? nullptr : __real_dlsym(handle, name);
}

int __wrap_dlclose(void* handle)
{
    if (spyAtWork != nullptr) {
        ++spyAtWork->closed;
    }
    return __real_dlclose(handle);
}
}

LoaderSpy& loaderSpy()
{
    static LoaderSpy spy;
    return spy;
}

namespace {

[[maybe_unused]] const bool isAtWork = (spyAtWork = &loaderSpy()) != nullptr;

} // namespace
