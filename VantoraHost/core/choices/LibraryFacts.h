#pragma once

#include "VantoraHost/core/choices/ChosenPages.h"

#include <QtCore/QByteArray>

#include <map>
#include <set>
#include <string>
#include <vector>

class KarvelPDFLibraryCPDylibCPP1311;

namespace vantora {

/// Which pages show text that can't be read, as a sentence; none for no pages.
std::vector<std::string> unreadableTextRemarks(const std::set<int>& pages);

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
    bool hasUnreadableText(int page) override;
    Result<bool> isBlank(int page, bool strictly) override;
    Result<double> noise(int page) override;
    Result<bool> hasColour(int page) override;
    Result<int> duplicateOf(int page) override;

    /// Those of the pages that were asked for their text that show some that can't be read.
    const std::set<int>& unreadable() const { return unreadable_; }

    /// The same as a sentence; none when there are no such pages.
    std::vector<std::string> remarks() const { return unreadableTextRemarks(unreadable_); }

private:
    Result<int> findDuplicate(int page);

    template <class Answer>
    Result<Answer> checked(Answer answer, const char* otherwise);

    KarvelPDFLibraryCPDylibCPP1311& library_;
    std::string input_;

    std::set<int> unreadable_;

    // Pages looked at for duplicates: those with the same small picture, and the first of each
    // look.
    std::map<QByteArray, std::vector<int>> looks_;
    std::vector<int> duplicateOf_;
};

} // namespace vantora
