#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/metadata/Dates.h"

#include <string>
#include <vector>

/// The information dictionary (ISO 32000-2, 14.3.3). Texts are UTF-8; keys are without their slash.
namespace karvel::metadata {

/// The standard entries by the codes of the interface.
enum class Entry : int {
    Title = 1,
    Author = 2,
    Subject = 3,
    Keywords = 4,
    CreationDate = 5,
    ModDate = 6,
    Creator = 7,
    Producer = 8,
};
constexpr int entryCount = 8;

/// An entry's text, empty when absent. A date comes in ISO 8601 form; one that cannot be read comes
/// as it stands.
std::string information(Document& document, Entry entry);

/// Sets an entry; a date is given in ISO 8601 or PDF form. An empty value removes the entry.
Outcome setInformation(Document& document, Entry entry, const std::string& value);

/// Sets a date entry.
Outcome setInformationDate(Document& document, Entry entry, const Date& date);

/// The keys of all entries, custom ones included, in key order.
std::vector<std::string> informationKeys(Document& document);

/// The text of any entry as it stands, empty when absent.
std::string customInformation(Document& document, const std::string& key);
Outcome setCustomInformation(Document& document, const std::string& key, const std::string& value);

/// Fails when there is no such entry.
Outcome removeCustomInformation(Document& document, const std::string& key);

/// Removes the whole dictionary.
void removeInformation(Document& document);

enum class Trapped : int { Unknown = 0, True = 1, False = 2 };
Trapped trapped(Document& document);
Outcome setTrapped(Document& document, Trapped state);

} // namespace karvel::metadata
