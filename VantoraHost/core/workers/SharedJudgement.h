#pragma once

#include "VantoraHost/core/documents/Batch.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <vector>

namespace vantora {

/// The processes that judge documents.
struct Judges {
    std::filesystem::path library;
    std::size_t count = 1;        ///< at a time
    std::uint64_t memory = 0;     ///< bytes for each; 0 for no limit
    std::chrono::seconds time{0}; ///< for each part of a document; 0 for no limit
    std::function<bool()> cancelled;
};

/// Judges the documents of a run before it begins, several processes at each, where that is faster
/// than leaving it to the workers: where choices take looking at pages, and there are fewer
/// documents than processes. Documents that can't be judged, or are too small for it to matter, are
/// left to the workers, which say what is wrong with them.
std::vector<JudgedDocument> judgeTogether(const ChoiceSet& choices, const Batch& batch,
                                          const Judges& judges);

} // namespace vantora
