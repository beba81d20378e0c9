#pragma once

namespace vantora {

/// What becomes of a document all of whose pages are to go.
enum class IfEmpty {
    Blank, ///< it is left with one blank page, as the action leaves it
    Skip,  ///< it is left out: no output is written, and that is no failure
    Fail,
};

} // namespace vantora
