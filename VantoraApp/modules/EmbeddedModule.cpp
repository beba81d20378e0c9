#include "VantoraApp/modules/EmbeddedModule.h"

#include <QtCore/QFile>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>

#include <cerrno>
#include <system_error>

namespace {

/// A file in memory, which nobody else sees, until the end of this object.
class FileInMemory {
public:
    explicit FileInMemory(const char* name) { Open(memfd_create(name, MFD_CLOEXEC)); }

    /// False, with errno set, when that fails, or making the file has.
    bool Write(std::string_view bytes)
    {
        const auto size = static_cast<qint64>(bytes.size());
        return file_.isOpen() && file_.write(bytes.data(), size) == size;
    }

    std::string Path() const { return "/proc/self/fd/" + std::to_string(file_.handle()); }

    /// Gives it another path. False, with errno set, when that fails.
    bool Move()
    {
        const int other = fcntl(file_.handle(), F_DUPFD_CLOEXEC, file_.handle() + 1);
        if (other >= 0)
            file_.close();
        return Open(other);
    }

private:
    bool Open(int descriptor)
    {
        return descriptor >= 0 &&
               file_.open(descriptor, QIODevice::WriteOnly | QIODevice::Unbuffered,
                          QFileDevice::AutoCloseHandle);
    }

    QFile file_;
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
    bool isReady = file.Write(file_);
    // The loader knows what it has loaded by paths, and paths of descriptors come again.
    while (isReady && isLoaded(file.Path()))
        isReady = file.Move();
    if (!isReady)
        return systemFault();
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
