#pragma once

#include "VantoraHost/core/choices/ChosenPages.h"

#include <string>

class KarvelPDFLibraryCPDylibCPP1311;

namespace vantora {

/// What choices ask, answered from the document that is open and selected in the library. Errors
/// name `input`.
class LibraryFacts : public PageFacts {
public:
    LibraryFacts(KarvelPDFLibraryCPDylibCPP1311& library, std::string input)
        : library_(library), input_(std::move(input))
    {
    }

    int count() override;
    Result<QString> label(int page) override;
    Result<ShownSize> size(int page) override;
    Result<QString> text(int page) override;
    Result<std::vector<OutlineEntry>> outline() override;

private:
    template <class Answer>
    Result<Answer> checked(Answer answer, const char* otherwise);

    KarvelPDFLibraryCPDylibCPP1311& library_;
    std::string input_;
};

} // namespace vantora
