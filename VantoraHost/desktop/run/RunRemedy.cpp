#include "VantoraHost/desktop/run/RunRemedy.h"

#include "VantoraHost/core/reports/Remedy.h"
#include "VantoraHost/desktop/sentences/Sentences.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtCore/QCoreApplication>

namespace vantora::desktop {

namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("RunRemedy", source);
}

} // namespace

QString remedyOf(Reason reason)
{
    switch (reason) {
    case Reason::InputMissing:
        return text(QT_TRANSLATE_NOOP("RunRemedy", "put it back, or remove it from the list"));
    case Reason::InputNotAFile:
    case Reason::NotPdf:
        return text(QT_TRANSLATE_NOOP("RunRemedy", "remove it from the list"));
    case Reason::Empty:
        return text(QT_TRANSLATE_NOOP("RunRemedy",
                                      "save the result elsewhere, where a blank page is left"));
    case Reason::PasswordNeeded:
    case Reason::PasswordWrong:
        return text(
            QT_TRANSLATE_NOOP("RunRemedy", "type its password below the list of documents"));
    case Reason::NotPermitted:
        return text(QT_TRANSLATE_NOOP("RunRemedy", "its owner's password lifts that"));
    case Reason::Signed:
        return text(QT_TRANSLATE_NOOP(
            "RunRemedy", "allow signed documents to be changed to go on without the signature"));
    case Reason::OutputExists:
        return text(QT_TRANSLATE_NOOP(
            "RunRemedy", "choose to replace it or to keep both, or name another folder"));
    case Reason::OutputIsInput:
        return text(QT_TRANSLATE_NOOP(
            "RunRemedy", "choose another folder, or to change the documents in place"));
    case Reason::OutputClash:
        return text(
            QT_TRANSLATE_NOOP("RunRemedy", "choose to keep both, or remove one from the list"));
    case Reason::OutputFolderMissing:
    case Reason::OutputFolderIsLink:
    case Reason::OutputNotAFile:
        return text(QT_TRANSLATE_NOOP("RunRemedy", "choose another folder"));
    case Reason::NotVerified:
        return text(QT_TRANSLATE_NOOP("RunRemedy",
                                      "it is written when results are not verified; look at it"));
    case Reason::OutOfMemory:
        return text(
            QT_TRANSLATE_NOOP("RunRemedy", "close other programs, or divide the document first"));
    case Reason::TimedOut:
    case Reason::Crashed:
        return text(
            QT_TRANSLATE_NOOP("RunRemedy", "the document may be damaged; get another copy of it"));
    case Reason::Killed:
        return text(
            QT_TRANSLATE_NOOP("RunRemedy", "something else ended the process; run it again"));
    case Reason::ActionListMissing:
    case Reason::FavouriteMissing:
    case Reason::SavedStepsUnusable:
        return text(QT_TRANSLATE_NOOP("RunRemedy", "save it anew"));
    default:
        return shownSentence(commonRemedy(reason));
    }
}

QString explained(const Error& error)
{
    const QString sentence = shownSentence(error.sentence);
    const QString remedy = remedyOf(error.reason);
    return remedy.isEmpty()
               ? sentence
               : QCoreApplication::translate("RunRemedy", "%1; %2", "what is wrong, what to do")
                     .arg(sentence, remedy);
}

} // namespace vantora::desktop
