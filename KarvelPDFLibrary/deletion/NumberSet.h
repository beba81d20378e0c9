#pragma once

#include <cstddef>
#include <vector>

namespace karvel::deletion {

/// A set of object numbers, for those that are asked for often.
class NumberSet {
public:
    bool has(int number) const
    {
        const auto position = static_cast<std::size_t>(number);
        return position < members_.size() && members_[position];
    }

    /// Returns whether the number was not in the set before.
    bool insert(int number)
    {
        const auto position = static_cast<std::size_t>(number);
        if (position >= members_.size()) {
            members_.resize(position + 1);
        }
        const bool isNew = !members_[position];
        members_[position] = true;
        return isNew;
    }

    void erase(int number)
    {
        if (has(number)) {
            members_[static_cast<std::size_t>(number)] = false;
        }
    }

private:
    std::vector<bool> members_;
};

} // namespace karvel::deletion
