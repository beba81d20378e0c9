#pragma once

#include "KarvelPDFLibrary/deletion/Removal.h"

/// One operation for each kind of thing that refers to pages or belongs to them, each in the file
/// of its name. They run once a removal, in the order of Synchronize.cpp, while the removed pages'
/// dictionaries can still be read.
namespace karvel::deletion {

class Usage;

/// Annotations of removed pages, with their popups and the replies to them on other pages.
void removeAnnotations(Removal& removal);

/// Fields of the form that lost all their widgets, the form's XFA data where the form works
/// without it, and what is left of a form without fields. To
/// be called after removeAnnotations().
void removeFormFields(Removal& removal);

/// Signatures, which no longer hold in a document that lost pages, with all that claims that they
/// do; each with a warning that names its field. To be called after removeFormFields().
void removeSignatures(Removal& removal);

/// Beads of removed pages, and article threads that are left without any.
void removeArticleBeads(Removal& removal);

/// Named destinations that lead to removed pages, in the name tree and the old dictionary.
void removeNamedDestinations(Removal& removal);

/// Links and actions that lead to removed pages, wherever they stand.
void removeActions(Removal& removal);

/// Content of removed pages in the structure tree, and elements that are left without any. To be
/// called when all annotations that go are known.
void removeStructure(Removal& removal);

/// Outline entries whose target went.
void removeOutlineEntries(Removal& removal);

/// Destinations that name a page that stays by its number.
void renumberDestinations(Removal& removal);

/// Resources that removed pages share with others and that nothing else uses.
void removeSharedResources(Removal& removal);

/// Document parts that lost all their pages; others begin and end with pages that stay.
void removeDocumentParts(Removal& removal);

/// Optional content groups that are not used any more.
void removeLayers(Removal& removal, const Usage& usage);

/// Named pages, captured web content, media, attachments and appearances with names, alternate
/// presentations and separations of removed pages.
void removeCollectedThings(Removal& removal, const Usage& usage);

/// Pictures of pages in the document's metadata.
void removePreviews(Removal& removal);

/// Notes what stays of the document as a whole and may repeat what removed pages said: attachments,
/// metadata, scripts, titles. To be called when all is gone that goes.
void noteWhatIsLeft(Removal& removal);

/// Every page that remains keeps the label it had.
void keepPageLabels(Removal& removal);

} // namespace karvel::deletion
