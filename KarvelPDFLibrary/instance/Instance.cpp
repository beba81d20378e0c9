#include "KarvelPDFLibrary/instance/Instance.h"

#include <mutex>
#include <unordered_map>

namespace karvel::instances {

namespace {

std::mutex mutex;
std::unordered_map<int, std::shared_ptr<Instance>> byNumber;
int lastNumber = 0;

} // namespace

int create()
{
    auto instance = std::make_shared<Instance>();
    const std::lock_guard<std::mutex> lock(mutex);
    byNumber.emplace(++lastNumber, std::move(instance));
    return lastNumber;
}

bool release(int number)
{
    std::shared_ptr<Instance> released; // destroyed after the lock: closing documents takes time
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = byNumber.find(number);
    if (found == byNumber.end()) {
        return false;
    }
    released = std::move(found->second);
    byNumber.erase(found);
    return true;
}

std::shared_ptr<Instance> find(int number)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = byNumber.find(number);
    return found == byNumber.end() ? nullptr : found->second;
}

} // namespace karvel::instances
