#pragma once

#include "VantoraHost/desktop/run/RunPlan.h"

#include <QtCore/QString>

namespace vantora::desktop {

/// What is known about the run that could start now.
struct RunOutlook {
    RunPlan plan;               ///< empty when there is an obstacle
    QString obstacle;           ///< why there can be no run, as a sentence; empty for none
    std::size_t unreadable = 0; ///< listed documents that can't take part
    std::size_t done = 0;       ///< that the last run has done, and nothing has changed since
};

/// What a run is going to do, in sentences.
QString outlookText(const RunOutlook& outlook);

} // namespace vantora::desktop
