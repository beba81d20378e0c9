#pragma once

#include "KarvelPDFLibrary/base/Error.h"

#include <atomic>

namespace karvel {

/// The function that each module exports; it returns the one object that the module is there for.
constexpr const char* moduleEntry = "karvelModule";

/// Loads a module by the name of its file, which lies beside the library, and finds its entry.
Result<void*> moduleEntryIn(const char* file);

/// A part of the library in a file of its own, which is loaded when it is first needed and stays:
/// loading what it depends on takes long beside deleting pages. `Interface` is what its entry
/// returns a pointer to.
template <class Interface>
class Module {
public:
    explicit constexpr Module(const char* file) : file_(file) {}

    /// Loaded at the first call. May be called from any thread; one that failed is tried again.
    Result<Interface*> loaded()
    {
        if (Interface* known = interface_.load(std::memory_order_acquire)) {
            return known;
        }
        return moduleEntryIn(file_).map([this](void* entry) {
            Interface* found = reinterpret_cast<Interface* (*)()>(entry)();
            interface_.store(found, std::memory_order_release);
            return found;
        });
    }

private:
    const char* file_;
    std::atomic<Interface*> interface_ = nullptr; // of two threads both find the same
};

} // namespace karvel
