#pragma once

namespace vantora {

/// English sentences with places for what differs, %1 and so on. What belongs together in them is
/// found by it; what may be longer or shorter stands in a place.
struct SentenceTemplates {
    const char* const* first;
    const char* const* last;

    const char* const* begin() const { return first; }
    const char* const* end() const { return last; }
};

SentenceTemplates sentencesOfCore();
SentenceTemplates sentencesOfLibrary();
SentenceTemplates sentencesOfCommands();

} // namespace vantora
