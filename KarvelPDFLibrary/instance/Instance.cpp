#include "KarvelPDFLibrary/instance/Instance.h"

#include <map>
#include <mutex>

namespace karvel::instances {

namespace {

struct Registry {
    std::mutex mutex;
    std::map<int, std::shared_ptr<Instance>> byNumber; // holds no memory when it is empty
    int lastNumber = 0;
};

/// Never destroyed: when a caller leaves without releasing its instance, their documents would be
/// destroyed at exit, after objects that libqpdf shares between all documents.
union Kept {
    Registry registry;
    Kept() : registry() {}
    ~Kept() {}
};

Registry& registry()
{
    static Kept only;
    return only.registry;
}

} // namespace

int create()
{
    auto instance = std::make_shared<Instance>();
    Registry& all = registry();
    const std::lock_guard<std::mutex> lock(all.mutex);
    all.byNumber.emplace(++all.lastNumber, std::move(instance));
    return all.lastNumber;
}

bool release(int number)
{
    std::shared_ptr<Instance> released; // destroyed after the lock: closing documents takes time
    Registry& all = registry();
    const std::lock_guard<std::mutex> lock(all.mutex);
    const auto found = all.byNumber.find(number);
    if (found == all.byNumber.end()) {
        return false;
    }
    released = std::move(found->second);
    all.byNumber.erase(found);
    return true;
}

std::shared_ptr<Instance> find(int number)
{
    Registry& all = registry();
    const std::lock_guard<std::mutex> lock(all.mutex);
    const auto found = all.byNumber.find(number);
    return found == all.byNumber.end() ? nullptr : found->second;
}

} // namespace karvel::instances
