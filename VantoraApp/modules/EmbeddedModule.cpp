#include "VantoraApp/modules/EmbeddedModule.h"

#include <dlfcn.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace {

tl::unexpected<std::string> systemFault(int error)
{
    return tl::unexpected<std::string>(std::generic_category().message(error));
}

tl::unexpected<std::string> loaderFault()
{
    const char* const fault = dlerror();
    return tl::unexpected<std::string>(fault != nullptr ? fault : "unknown");
}

/// A file in memory with these bytes; the error is the system's number.
tl::expected<int, int> fileInMemory(const char* name, std::string_view bytes)
{
    const int descriptor = memfd_create(name, MFD_CLOEXEC);
    if (descriptor < 0)
        return tl::unexpected<int>(errno);
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            const int error = errno;
            close(descriptor);
            return tl::unexpected<int>(error);
        }
        bytes.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    return descriptor;
}

} // namespace

EmbeddedModule::~EmbeddedModule()
{
    if (handle_ != nullptr)
        dlclose(handle_);
    if (descriptor_ >= 0)
        close(descriptor_);
    if (sharedHandle_ != nullptr)
        dlclose(sharedHandle_);
}

tl::expected<void*, std::string> EmbeddedModule::Load()
{
    if (handle_ != nullptr)
        return handle_;
    // From here it is found by the run path of the module that this code was linked into.
    if (sharedHandle_ == nullptr)
        sharedHandle_ = dlopen(sharedCode_, RTLD_NOW);
    if (sharedHandle_ == nullptr)
        return loaderFault();
    if (descriptor_ < 0) {
        const auto file = fileInMemory(name_, file_);
        if (!file)
            return systemFault(file.error());
        descriptor_ = *file;
    }
    handle_ = dlopen(("/proc/self/fd/" + std::to_string(descriptor_)).c_str(), RTLD_NOW);
    if (handle_ == nullptr)
        return loaderFault();
    return handle_;
}

tl::expected<void*, std::string> EmbeddedModule::Function(const char* symbol)
{
    const auto handle = Load();
    if (!handle)
        return handle;
    void* const function = dlsym(*handle, symbol);
    if (function == nullptr)
        return loaderFault();
    return function;
}
