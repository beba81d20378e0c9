#include "LoaderSpy.h"

extern "C" {
void* __real_dlopen(const char* path, int flags);
void* __real_dlsym(void* handle, const char* name);
int __real_dlclose(void* handle);

void* __wrap_dlopen(const char* path, int flags)
{
    loaderSpy().opened.push_back({path, flags});
    return __real_dlopen(path, flags);
}

void* __wrap_dlsym(void* handle, const char* name)
{
    loaderSpy().lookups.emplace_back(name);
    return loaderSpy().hidden == name ? nullptr : __real_dlsym(handle, name);
}

int __wrap_dlclose(void* handle)
{
    ++loaderSpy().closed;
    return __real_dlclose(handle);
}
}

LoaderSpy& loaderSpy()
{
    static LoaderSpy spy;
    return spy;
}
