#pragma once

#include "ForwarderRows.h"
#include "LoaderSpy.h"
#include "Recording.h"

#include <cstdlib>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <memory>
#include <utility>

/// A clean recording library, kept open so that the recording outlives the binding under test.
class BindingTest : public testing::Test {
protected:
    using Binding = KarvelPDFLibraryCPDylibCPP1311;

    BindingTest() : handle(dlopen(RECORDING_LIBRARY, RTLD_NOW | RTLD_LOCAL))
    {
        if (handle == nullptr) {
            ADD_FAILURE() << dlerror();
            std::abort();
        }
        record = reinterpret_cast<Recording* (*)()>(dlsym(handle, "recording"))();
        *record = Recording();
        loaderSpy() = LoaderSpy();
    }

    ~BindingTest() override { dlclose(handle); }

    static std::wstring path()
    {
        const std::string bytes = RECORDING_LIBRARY;
        return {bytes.begin(), bytes.end()};
    }

    static std::unique_ptr<Binding> load() { return std::make_unique<Binding>(path()); }

    /// The calls since the last look.
    std::vector<std::string> calls() const { return std::exchange(record->calls, {}); }

    Recording* record = nullptr;

private:
    void* handle;
};

inline Outcome emptyOutcome(Kind kind)
{
    const Outcome empty[] = {0, 0.0, std::wstring(), std::string()};
    return empty[static_cast<int>(kind)];
}
