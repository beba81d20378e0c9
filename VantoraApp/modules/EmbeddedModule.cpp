#include "VantoraApp/modules/EmbeddedModule.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace {

/// A file in memory, which nobody else sees, until the end of this object.
class FileInMemory {
public:
    explicit FileInMemory(const char* name) : descriptor_(memfd_create(name, MFD_CLOEXEC)) {}
    ~FileInMemory()
    {
        if (descriptor_ >= 0)
            close(descriptor_);
    }
    FileInMemory(const FileInMemory&) = delete;
    FileInMemory& operator=(const FileInMemory&) = delete;

    /// False, with errno set, when that fails.
    bool Write(std::string_view bytes) const
    {
        while (!bytes.empty()) {
            const ssize_t written = write(descriptor_, bytes.data(), bytes.size());
            if (written < 0 && errno != EINTR)
                return false;
            bytes.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
        }
        return true;
    }

    std::string Path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

    /// Gives it another path. False, with errno set, when that fails.
    bool Move()
    {
        const int other = fcntl(descriptor_, F_DUPFD_CLOEXEC, descriptor_ + 1);
        if (other < 0)
            return false;
        close(descriptor_);
        descriptor_ = other;
        return true;
    }

private:
    int descriptor_;
};

tl::unexpected<std::string> systemFault()
{
    return tl::unexpected<std::string>(std::generic_category().message(errno));
}

tl::unexpected<std::string> loaderFault()
{
    const char* const fault = dlerror();
    return tl::unexpected<std::string>(fault != nullptr ? fault : "unknown");
}

/// Whether something has been loaded by that path.
bool isLoaded(const std::string& path)
{
    void* const handle = dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (handle != nullptr)
        dlclose(handle);
    return handle != nullptr;
}

} // namespace

EmbeddedModule::~EmbeddedModule()
{
    for (void* const handle : {handle_, sharedHandle_}) {
        if (handle != nullptr)
            dlclose(handle);
    }
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
    FileInMemory file(name_);
    if (!file.Write(file_))
        return systemFault();
    // The loader knows what it has loaded by paths, and paths of descriptors come again.
    while (isLoaded(file.Path())) {
        if (!file.Move())
            return systemFault();
    }
    handle_ = dlopen(file.Path().c_str(), RTLD_NOW);
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
