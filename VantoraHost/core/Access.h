#pragma once

namespace vantora {

/// What is to be done with a document, which its owner may not permit; what comes later needs what
/// comes before it as well.
enum class Access {
    Read,
    RemovePages,
    Change, ///< anything: what exactly is not known
};

/// As in "its owner does not permit ...".
constexpr const char* accessName(Access access)
{
    return access == Access::Read          ? "reading it"
           : access == Access::RemovePages ? "removing pages"
                                           : "changing it";
}

} // namespace vantora
