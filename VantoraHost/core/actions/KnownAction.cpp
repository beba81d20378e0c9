#include "VantoraHost/core/actions/KnownAction.h"

#include "VantoraHost/core/actions/DeletePagesOptions.h"

#include <algorithm>

namespace vantora {

std::vector<std::string> KnownAction::keys() const
{
    std::vector<std::string> keys;
    for (const KnownOption& option : options) {
        keys.emplace_back(option.key);
    }
    return keys;
}

const KnownOption* KnownAction::option(const std::string& key) const
{
    const auto found = std::find_if(options.begin(), options.end(),
                                    [&](const KnownOption& one) { return key == one.key; });
    return found == options.end() ? nullptr : &*found;
}

const KnownAction* knownAction(const std::string& name)
{
    const KnownAction& deletePages = deletepages::description();
    return name == deletePages.name ? &deletePages : nullptr;
}

} // namespace vantora
