#include "VantoraHost/desktop/run/RunOutlook.h"

#include "VantoraHost/desktop/run/RunRemedy.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>

namespace vantora::desktop {

QString outlookText(const RunOutlook& outlook)
{
    if (!outlook.obstacle.isEmpty()) {
        return outlook.obstacle;
    }
    const RunPlan& plan = outlook.plan;
    QStringList sentences;
    if (plan.documents > 0) {
        sentences << QCoreApplication::translate("RunOutlook", "%1 will go from %2.",
                                                 "pages, documents")
                         .arg(QCoreApplication::translate("RunOutlook", "%n page(s)", nullptr,
                                                          asCount(plan.pages)),
                              QCoreApplication::translate("RunOutlook", "%n document(s)",
                                                          "after: will go from",
                                                          asCount(plan.documents)));
    }
    if (plan.replaced > 0) {
        sentences << QCoreApplication::translate("RunOutlook",
                                                 "%n file(s) that exist will be replaced.", nullptr,
                                                 asCount(plan.replaced));
    }
    if (!plan.refused.empty()) {
        const Error& first = plan.refused.front();
        sentences << QCoreApplication::translate("RunOutlook",
                                                 "%n document(s) can't be written: %1.",
                                                 "the first reason", asCount(plan.refused.size()))
                         .arg(shownName(first.file) + QStringLiteral(": ") + explained(first));
    }
    if (plan.untouched > 0) {
        sentences << QCoreApplication::translate(
            "RunOutlook", "%n document(s) without marked pages stay as they are.", nullptr,
            asCount(plan.untouched));
    }
    if (outlook.done > 0) {
        sentences << QCoreApplication::translate("RunOutlook", "%n document(s) are done.", nullptr,
                                                 asCount(outlook.done));
    }
    if (outlook.unreadable > 0) {
        sentences << QCoreApplication::translate("RunOutlook",
                                                 "%n document(s) that can't be read are left out.",
                                                 nullptr, asCount(outlook.unreadable));
    }
    return sentences.isEmpty()
               ? QCoreApplication::translate("RunOutlook", "There is nothing to do yet.")
               : sentences.join(' ');
}

} // namespace vantora::desktop
