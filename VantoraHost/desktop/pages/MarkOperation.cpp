#include "VantoraHost/desktop/pages/MarkOperation.h"

namespace vantora::desktop {

namespace {

PageSet run(int first, int last)
{
    return first >= 1 && first <= last ? PageSet(PageRun{first, last}) : PageSet();
}

} // namespace

PageSet marksAfter(MarkOperation operation, const PageSet& before, const MarkedDocument& document)
{
    switch (operation) {
    case MarkOperation::Toggle:
        return document.chosen.without(before).isEmpty() ? before.without(document.chosen)
                                                         : before.united(document.chosen);
    case MarkOperation::Add:
        return before.united(document.chosen);
    case MarkOperation::Remove:
        return before.without(document.chosen);
    case MarkOperation::Odd:
        return before.united(PageSet::everySecond(1, document.pages));
    case MarkOperation::Even:
        return before.united(PageSet::everySecond(2, document.pages));
    case MarkOperation::FromHere:
        return before.united(run(document.current, document.pages));
    case MarkOperation::ToHere:
        return before.united(run(1, document.current));
    case MarkOperation::All:
        return before.united(run(1, document.pages));
    case MarkOperation::Invert:
        return before.inverted(document.pages);
    case MarkOperation::None:
        return {};
    }
    return before;
}

} // namespace vantora::desktop
