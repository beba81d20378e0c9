#pragma once

#include <memory>

namespace vantora {

/// The calls of the system that working on documents takes. Those that act on files are among
/// them, but for those that change a file by its path without opening it; so are threads.
class SystemCallFilter {
public:
    SystemCallFilter();
    ~SystemCallFilter();
    SystemCallFilter(const SystemCallFilter&) = delete;
    SystemCallFilter& operator=(const SystemCallFilter&) = delete;

    /// Lets this process call the system for nothing else, for good; it is killed over it (SIGSYS).
    /// To be called in the process that the filter was made in. Where the system has no such
    /// filters, nothing happens.
    void enforce();

private:
    class Rules;
    std::unique_ptr<Rules> rules_;
};

} // namespace vantora
