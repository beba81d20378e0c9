#pragma once

#include "tests/KarvelPDFLibrary/blankness/LabelledPages.h"
#include "tests/KarvelPDFLibrary/blankness/Sheet.h"
#include "tests/support/PdfBuilder.h"

#include <functional>
#include <initializer_list>

namespace labelled {

constexpr double pointsPerMillimetre = 72 / 25.4;

/// One page that is being made.
struct Page {
    support::PdfBuilder& builder;
    double width = 105; // millimetres: A6, as smaller pages take less time
    double height = 148;
    std::string content = {};
    std::string resources = {}; // within /Resources
    std::string annotations = {};
};

/// Operands of a content stream.
std::string numbers(std::initializer_list<double> values);

/// Content that shows a text somewhere; `before` are operators before it.
std::string textAt(Random& random, double size, const std::string& before, const std::string& text);

/// An annotation with an appearance, and entries such as its flags.
void annotate(Page& page, const std::string& appearance, const std::string& entries);

struct PageRow {
    Kind kind;
    std::function<void(Page&, int index, Random&)> make;
};

/// Pages as programs draw them.
std::vector<PageRow> drawnRows();

/// Pages that are pictures of paper; the first of each kind is finer than the others.
std::vector<PageRow> scannedRows();

} // namespace labelled
