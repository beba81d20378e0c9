#pragma once

#include <tl/expected.hpp>

#include <string>
#include <string_view>

/// A shared library whose file lies as bytes in the module that uses it. It is loaded from memory
/// when it is first needed: so an action stays one file, and whoever only processes documents with
/// it loads nothing of what its dialog depends on (`vantora_action(... DIALOG ...)`).
class EmbeddedModule {
public:
    /// `name` is how debuggers and messages call it. `sharedCode` is the file of a library that it
    /// depends on and that is found where the module that uses it finds its own.
    EmbeddedModule(const char* name, std::string_view file, const char* sharedCode)
        : name_(name), file_(file), sharedCode_(sharedCode)
    {
    }

    /// Unloads it.
    ~EmbeddedModule();

    EmbeddedModule(const EmbeddedModule&) = delete;
    EmbeddedModule& operator=(const EmbeddedModule&) = delete;

    /// A function that it exports, by its C name. The error is why it can't be loaded, which is
    /// tried again by the next call.
    tl::expected<void*, std::string> Function(const char* symbol);

private:
    tl::expected<void*, std::string> Load();

    const char* const name_;
    const std::string_view file_;
    const char* const sharedCode_;
    void* sharedHandle_ = nullptr;
    void* handle_ = nullptr;
};
