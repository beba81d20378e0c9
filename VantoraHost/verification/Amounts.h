#pragma once

#include "VantoraHost/verification/Split.h"

namespace vantora::verification {

/// Counts what a file has beside its pages, into one of each amount's two numbers. The judgement is
/// of the same file.
void countInto(Amounts& amounts, std::size_t Amount::*number, PdfFile& file,
               const Judgement& judgement);

/// The labels of the pages that go, in runs; none where the file has no labels.
std::vector<LabelledPages> labelsOfRemoved(const Split& split);

} // namespace vantora::verification
