#pragma once

#include <string>
#include <vector>

/// What the binding asked of the dynamic loader. The test program is linked so that its calls of
/// dlopen, dlsym and dlclose pass through here on their way.
struct LoaderSpy {
    struct Opened {
        std::string path;
        int flags;
    };
    std::vector<Opened> opened;
    std::vector<std::string> lookups;
    int closed = 0;

    /// An export that dlsym does not find, although the library has it.
    std::string hidden;
};

LoaderSpy& loaderSpy();
