#include "VantoraHost/core/language/SentenceTemplates.h"

#include <QtCore/QtGlobal>

#include <iterator>

namespace vantora {

namespace {

// The PDF library, and what verifies its work.
constexpr const char* templatesOfLibrary[] = {
    QT_TRANSLATE_NOOP("Sentences", "repaired: %1 (and %2 more, see --json)"),
    QT_TRANSLATE_NOOP("Sentences", "repaired: %1"),
    QT_TRANSLATE_NOOP("Sentences", "lost of page %1: %2"),
    QT_TRANSLATE_NOOP("Sentences",
                      "it cannot be read, and is left out, and perhaps others with it"),
    QT_TRANSLATE_NOOP("Sentences", "it cannot be read, and is left out"),
    QT_TRANSLATE_NOOP("Sentences", "content that cannot be read is missing"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "its content breaks off or cannot be decoded to its end, and is kept as it is"),
    QT_TRANSLATE_NOOP("Sentences", "its page tree leads to what is no page, so that viewers may "
                                   "call page %1 by another number and another page be meant"),
    QT_TRANSLATE_NOOP("Sentences", "its page tree leads to what is no page, so that viewers may "
                                   "call page %1 by another number"),
    QT_TRANSLATE_NOOP("Sentences", "page %1, which cannot be read, was removed; viewers that leave "
                                   "it out give the pages behind it lower numbers"),
    QT_TRANSLATE_NOOP("Sentences", "page %1 and 1 other cannot be recovered"),
    QT_TRANSLATE_NOOP("Sentences", "page %1 and %2 others cannot be recovered"),
    QT_TRANSLATE_NOOP("Sentences", "page %1 cannot be recovered"),
    QT_TRANSLATE_NOOP("Sentences", "none of the pages that are left can be recovered"),
    QT_TRANSLATE_NOOP("Sentences", "the content of page %1 cannot be recovered"),
    QT_TRANSLATE_NOOP("Sentences", "page %1 cannot be read"),
    QT_TRANSLATE_NOOP("Sentences", "page %1 cannot be shown"),
    QT_TRANSLATE_NOOP("Sentences", "page %1 cannot be rendered"),
    QT_TRANSLATE_NOOP("Sentences", "cannot be shown"),
    QT_TRANSLATE_NOOP("Sentences", "too large to be shown from memory"),
    QT_TRANSLATE_NOOP("Sentences", "the document has no page tree"),
    QT_TRANSLATE_NOOP("Sentences", "the document has no pages"),
    QT_TRANSLATE_NOOP("Sentences", "damaged: its page tree lists the same pages again more often "
                                   "than a file of its size can mean"),
    QT_TRANSLATE_NOOP("Sentences", "the page tree refers to one of its nodes twice"),
    QT_TRANSLATE_NOOP("Sentences", "the page tree has a node without children"),
    QT_TRANSLATE_NOOP("Sentences",
                      "the page tree has an entry that is no page; viewers may count one there"),
    QT_TRANSLATE_NOOP("Sentences",
                      "the page tree lists an object that is something else as a page"),
    QT_TRANSLATE_NOOP("Sentences", "the cross-reference table was rebuilt while the file was read"),
    QT_TRANSLATE_NOOP("Sentences", "not a PDF, or damaged beyond repair (%1)"),
    QT_TRANSLATE_NOOP("Sentences", "the password is missing or wrong"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "damaged: it is encrypted, or was, but what says how is lost; an undamaged copy is needed"),
    QT_TRANSLATE_NOOP("Sentences", "is encrypted in a way that is not supported (crypt filter %1)"),
    QT_TRANSLATE_NOOP("Sentences", "is encrypted in a way that is not supported (%1)"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "damaged: its cross-reference data have more entries than a file of its size can need"),
    QT_TRANSLATE_NOOP("Sentences", "damaged: it speaks of object %1, but has only %2"),
    QT_TRANSLATE_NOOP("Sentences", "the file is empty"),
    QT_TRANSLATE_NOOP("Sentences", "the file cannot be read: %1"),
    QT_TRANSLATE_NOOP("Sentences", "the file became shorter while it was read"),
    QT_TRANSLATE_NOOP("Sentences", "the file was changed by another program while it was read"),
    QT_TRANSLATE_NOOP("Sentences", "is a folder"),
    QT_TRANSLATE_NOOP("Sentences", "is not a regular file"),
    QT_TRANSLATE_NOOP("Sentences", "the file exists"),
    QT_TRANSLATE_NOOP("Sentences", "its temporary file was moved or replaced by another program"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "alternate presentations of the document, which may show removed pages, were removed"),
    QT_TRANSLATE_NOOP(
        "Sentences", "the form's XFA data was left as it is and may hold content of removed pages"),
    QT_TRANSLATE_NOOP("Sentences", "the form's XFA data, which describes removed pages too, was "
                                   "removed; the form's fields on other pages stay"),
    QT_TRANSLATE_NOOP("Sentences", "metadata of the document that cannot be read were removed, "
                                   "since they may show removed pages"),
    QT_TRANSLATE_NOOP("Sentences", "resources that removed pages share with others were kept, "
                                   "since it cannot be told what else uses them"),
    QT_TRANSLATE_NOOP("Sentences", "the signature in field \"%1\" no longer holds and was removed"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "the signature for the document's usage rights no longer holds and was removed"),
    QT_TRANSLATE_NOOP("Sentences", "%1 of %2 pages went, but %3 % of the size stays, since "
                                   "something else holds what only they showed: %4"),
    QT_TRANSLATE_NOOP("Sentences", "not saved, since %1 still leads to a removed page"),
    QT_TRANSLATE_NOOP("Sentences", "the values of 1 form field that removed pages showed, too"),
    QT_TRANSLATE_NOOP("Sentences", "the values of %1 form fields that removed pages showed, too"),
    QT_TRANSLATE_NOOP("Sentences", "1 attached file"),
    QT_TRANSLATE_NOOP("Sentences", "%1 attached files"),
    QT_TRANSLATE_NOOP("Sentences", "the document's XMP metadata"),
    QT_TRANSLATE_NOOP("Sentences", "the document's information: %1"),
    QT_TRANSLATE_NOOP("Sentences", "1 script of the document"),
    QT_TRANSLATE_NOOP("Sentences", "%1 scripts of the document"),
    QT_TRANSLATE_NOOP("Sentences", "the titles of 1 article thread"),
    QT_TRANSLATE_NOOP("Sentences", "the titles of %1 article threads"),
    QT_TRANSLATE_NOOP("Sentences", "no page would remain"),
    QT_TRANSLATE_NOOP("Sentences", "out of memory"),
    QT_TRANSLATE_NOOP("Sentences", "there is not enough memory"),
    QT_TRANSLATE_NOOP("Sentences", "a result is too large"),
    QT_TRANSLATE_NOOP("Sentences", "unknown failure"),
    QT_TRANSLATE_NOOP("Sentences", "a stream cannot be decoded within reason"),
    QT_TRANSLATE_NOOP("Sentences", "a stream is packed in an unusual way"),
    QT_TRANSLATE_NOOP("Sentences", "content that several pages share cannot be read"),
    QT_TRANSLATE_NOOP("Sentences", "the source ends early"),
    QT_TRANSLATE_NOOP("Sentences", "the document is too large to be linearised"),
    QT_TRANSLATE_NOOP("Sentences", "no reason given"),
    QT_TRANSLATE_NOOP("Sentences", "%1 cannot be loaded: %2"),
    QT_TRANSLATE_NOOP("Sentences", "%1 of its streams can't be decoded, such as that in %2"),
    QT_TRANSLATE_NOOP("Sentences", "of some objects more revisions are left than are looked into"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "%1 objects that its table doesn't list can't be read, such as that at byte %2"),
    QT_TRANSLATE_NOOP("Sentences", "the outline entry \"%1\" is gone or leads elsewhere"),
    QT_TRANSLATE_NOOP("Sentences", "the field \"%1\" is gone or has another value"),
    QT_TRANSLATE_NOOP("Sentences", "the destination \"%1\" is gone or leads elsewhere"),
    QT_TRANSLATE_NOOP("Sentences", "the attached file \"%1\" is gone"),
    QT_TRANSLATE_NOOP("Sentences", "the information %1 is gone or has changed"),
    QT_TRANSLATE_NOOP("Sentences", "the document's %1 is gone"),
    QT_TRANSLATE_NOOP("Sentences", "the document is no longer encrypted"),
    QT_TRANSLATE_NOOP("Sentences", "the document is encrypted by other means"),
    QT_TRANSLATE_NOOP("Sentences", "the document permits more than before"),
    QT_TRANSLATE_NOOP("Sentences", "the document opens without a password"),
    QT_TRANSLATE_NOOP("Sentences", "its boxes or its rotation have changed"),
    QT_TRANSLATE_NOOP("Sentences", "its label was \"%1\" and is \"%2\""),
    QT_TRANSLATE_NOOP("Sentences", "its content has changed"),
    QT_TRANSLATE_NOOP("Sentences",
                      "whether the content of page %1 is the same, which can't be decoded"),
    QT_TRANSLATE_NOOP("Sentences", "%1 links are gone or lead elsewhere"),
    QT_TRANSLATE_NOOP("Sentences", "%1 links lead to what is no page any more, or where none did"),
    QT_TRANSLATE_NOOP("Sentences", "%1 annotations are gone or changed, such as \"%2\""),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "what pages show: poppler can't open one of the files, or counts its pages differently"),
    QT_TRANSLATE_NOOP("Sentences", "what page %1 shows, which can't be rendered"),
    QT_TRANSLATE_NOOP("Sentences", "its text has changed"),
    QT_TRANSLATE_NOOP("Sentences", "it looks different"),
    QT_TRANSLATE_NOOP("Sentences", "the file's bytes"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "texts and data of removed pages that are the document's or kept pages' as well: %1"),
    QT_TRANSLATE_NOOP("Sentences", "streams of removed pages that can't be decoded, and were "
                                   "looked for as they stand in the file: %1"),
    QT_TRANSLATE_NOOP("Sentences", "%1 texts begin like too many others to be looked for"),
    QT_TRANSLATE_NOOP("Sentences",
                      "content that can't be decoded may use any of its page's resources"),
    QT_TRANSLATE_NOOP("Sentences", "%1 bytes that were in %2"),
    QT_TRANSLATE_NOOP("Sentences", "the text of page %1 can't be read"),
    QT_TRANSLATE_NOOP("Sentences", "a page that the document doesn't list"),
    QT_TRANSLATE_NOOP("Sentences", "the document's names"),
    QT_TRANSLATE_NOOP("Sentences", "the page labels"),
    QT_TRANSLATE_NOOP("Sentences", "the page that stands for none is not blank"),
    QT_TRANSLATE_NOOP("Sentences", "the document can't be verified: %1"),
    QT_TRANSLATE_NOOP("Sentences", "it can't be verified: %1"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "can't be verified: its %1 pages are counted otherwise by libqpdf, which finds %2"),
    QT_TRANSLATE_NOOP("Sentences", "can't be verified: %1"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "texts of removed pages: poppler can't open the document, or counts its pages differently"),
    QT_TRANSLATE_NOOP("Sentences", "the document should have %1 pages and has %2"),
    QT_TRANSLATE_NOOP("Sentences", "cannot be read"),
    QT_TRANSLATE_NOOP("Sentences", "cannot be read: %1"),
    QT_TRANSLATE_NOOP("Sentences", "is encrypted, and none of the passwords opens it"),
    QT_TRANSLATE_NOOP("Sentences", "the document cannot be read"),
    QT_TRANSLATE_NOOP("Sentences", "the document cannot be read: %1"),
    QT_TRANSLATE_NOOP("Sentences", "the document is encrypted and needs a password"),
    QT_TRANSLATE_NOOP("Sentences", "the document is encrypted, and none of the passwords opens it"),
    QT_TRANSLATE_NOOP("Sentences", "damaged: page %1 cannot be read"),
    QT_TRANSLATE_NOOP("Sentences", "1 further text"),
    QT_TRANSLATE_NOOP("Sentences", "%1 further texts"),
    QT_TRANSLATE_NOOP("Sentences", "%1, 1 further text"),
    QT_TRANSLATE_NOOP("Sentences", "%1, %2 further texts"),
    QT_TRANSLATE_NOOP("Sentences", "an AES key of an unexpected length"),
    QT_TRANSLATE_NOOP("Sentences", "%1 of page %2 in object %3: %4"),
    QT_TRANSLATE_NOOP("Sentences", "%1 of page %2: %3"),
    QT_TRANSLATE_NOOP("Sentences", "%1 in object %2: %3"),
};

} // namespace

SentenceTemplates sentencesOfLibrary()
{
    return {std::begin(templatesOfLibrary), std::end(templatesOfLibrary)};
}

} // namespace vantora
