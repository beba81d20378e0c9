#include "VantoraHost/verification/Kept.h"

#include <algorithm>

namespace vantora::verification {

namespace {

// Of what has to be there again, what isn't.
class Expectations {
public:
    Expectations(Findings& findings, Kind kind) : findings_(findings), kind_(kind) {}

    void present(const std::string& thing) { ++there_[thing]; }
    void expect(const std::string& thing, const std::string& what)
    {
        const auto found = there_.find(thing);
        if (found == there_.end() || found->second == 0) {
            findings_.add(kind_, 0, "", what);
        } else {
            --found->second;
        }
    }

private:
    Findings& findings_;
    Kind kind_;
    std::map<std::string, int> there_;
};

std::string described(const std::string& text, const Target& target)
{
    return text + '\n' + std::to_string(static_cast<int>(target.where)) + ' ' +
           std::to_string(target.place) + ' ' + target.more;
}

bool goesOn(const QPDFObjectHandle& entry)
{
    return !valueOf(valueOf(entry, "/A"), "/Next").isNull();
}

void compareOutlines(const Both& both, const Judgement& after)
{
    Expectations entries(both.findings, Kind::KeptDocument);
    for (const OutlineEntry& entry : after.outline()) {
        entries.present(described(entry.title, entry.target));
        entries.present(entry.title);
    }
    for (const OutlineEntry& entry : both.judgement.outline()) {
        const std::string what = "the outline entry " + quoted(entry.title);
        if (entry.judged.goes) {
            continue;
        }
        if (both.split.leadsToRemoved(entry.target)) { // it only has to be there
            entries.expect(goesOn(entry.judged.object) ? entry.title
                                                       : described(entry.title, Target{}),
                           what + " is gone or leads elsewhere");
        } else {
            entries.expect(described(entry.title, both.split.afterwards(entry.target)),
                           what + " is gone or leads elsewhere");
        }
    }
}

void compareFields(const Both& both, const Judgement& after)
{
    Expectations fields(both.findings, Kind::KeptField);
    const auto textOf = [](const Field& field) {
        return field.name + '\n' + (field.isSignature ? "" : field.value);
    };
    for (const Field& field : after.fields()) {
        fields.present(textOf(field));
    }
    for (const Field& field : both.judgement.fields()) {
        if (!field.goes) {
            fields.expect(textOf(field),
                          "the field " + quoted(field.name) + " is gone or has another value");
        }
    }
}

void compareNames(const Both& both)
{
    for (const auto& [name, destination] : both.targets.names()) {
        const Target target = both.targets.ofDestination(destination);
        if (target.where != Target::Where::Page || both.split.leadsToRemoved(target)) {
            continue;
        }
        const auto found = both.targetsAfter.names().find(name);
        const Target now = found == both.targetsAfter.names().end()
                               ? Target{}
                               : both.targetsAfter.ofDestination(found->second);
        if (now != both.split.afterwards(target)) {
            both.findings.add(Kind::KeptDocument, target.place + 1, "",
                              "the destination " + quoted(name) + " is gone or leads elsewhere");
        }
    }
}

std::set<std::string> attachmentsOf(PdfFile& file)
{
    std::set<std::string> names;
    for (auto& entry :
         treeEntries(valueOf(valueOf(file.catalog(), "/Names"), "/EmbeddedFiles"), "/Names")) {
        if (entry.first.isString()) {
            names.insert(entry.first.getStringValue());
        }
    }
    return names;
}

void compareAttachments(const Both& both)
{
    std::set<std::string> present = attachmentsOf(both.after);
    for (const NamedThing& gone : both.belongings.listedForRemoved()) {
        present.insert(gone.name);
    }
    for (const std::string& name : attachmentsOf(both.split.file())) {
        if (present.count(name) == 0) {
            both.findings.add(Kind::KeptDocument, 0, "",
                              "the attached file " + quoted(name) + " is gone");
        }
    }
}

void compareInformation(const Both& both)
{
    static const std::set<std::string> changing = {"/ModDate", "/Producer"};
    QPDFObjectHandle before = valueOf(both.split.file().qpdf().getTrailer(), "/Info");
    const QPDFObjectHandle after = valueOf(both.after.qpdf().getTrailer(), "/Info");
    for (const auto& [key, value] : before.isDictionary()
                                        ? before.getDictAsMap()
                                        : std::map<std::string, QPDFObjectHandle>()) {
        QPDFObjectHandle was = value;
        QPDFObjectHandle is = valueOf(after, key.c_str());
        if (changing.count(key) == 0 && was.isString() &&
            (!is.isString() || is.getStringValue() != was.getStringValue())) {
            both.findings.add(Kind::KeptDocument, 0, "",
                              "the information " + key.substr(1) + " is gone or has changed");
        }
    }
}

void compareCatalogs(const Both& both)
{
    QPDFObjectHandle before = both.split.file().catalog();
    std::set<std::string> keys = {"/ViewerPreferences", "/PageLayout", "/Lang",
                                  "/OutputIntents",     "/Metadata",   "/Version"};
    const bool outlineStays =
        std::any_of(both.judgement.outline().begin(), both.judgement.outline().end(),
                    [](const OutlineEntry& entry) { return !entry.judged.goes; });
    if (outlineStays || !isNamed(before, "/PageMode", "/UseOutlines")) {
        keys.insert("/PageMode");
    }
    if (both.judgement.structureStays()) {
        keys.insert({"/StructTreeRoot", "/MarkInfo"});
    }
    const QPDFObjectHandle opening = valueOf(before, "/OpenAction");
    QPDFObjectHandle goTo = isNamed(opening, "/S", "/GoTo") ? valueOf(opening, "/D") : opening;
    const Target target = QPDFObjectHandle(goTo).isDictionary() ? Target{Target::Where::Else, 0, {}}
                                                                : both.targets.ofDestination(goTo);
    if (target.where == Target::Where::Else ||
        (target.where == Target::Where::Page && !both.split.leadsToRemoved(target))) {
        keys.insert("/OpenAction");
    }
    for (const std::string& key : keys) {
        if (!valueOf(before, key.c_str()).isNull() &&
            valueOf(both.after.catalog(), key.c_str()).isNull()) {
            both.findings.add(Kind::KeptDocument, 0, "",
                              "the document's " + key.substr(1) + " is gone");
        }
    }
}

struct Protection {
    bool encrypted = false;
    int revision = 0;
    int permissions = 0;
    int version = 0;
    QPDF::encryption_method_e streams = QPDF::e_none;
    QPDF::encryption_method_e strings = QPDF::e_none;
    QPDF::encryption_method_e files = QPDF::e_none;
};

Protection protectionOf(PdfFile& file)
{
    Protection found;
    found.encrypted = file.qpdf().isEncrypted(found.revision, found.permissions, found.version,
                                              found.streams, found.strings, found.files);
    return found;
}

void compareProtection(const Both& both)
{
    constexpr unsigned permissionBits = 0xF3C; // ISO 32000-2, table 22
    const Protection before = protectionOf(both.split.file());
    const Protection after = protectionOf(both.after);
    const auto find = [&](const std::string& what) {
        both.findings.add(Kind::Encryption, 0, "", what);
    };
    if (!before.encrypted) {
        return;
    }
    if (!after.encrypted) {
        find("the document is no longer encrypted");
        return;
    }
    if (after.revision < before.revision || after.version < before.version ||
        after.streams != before.streams || after.strings != before.strings) {
        find("the document is encrypted by other means");
    }
    if ((static_cast<unsigned>(after.permissions) & ~static_cast<unsigned>(before.permissions) &
         permissionBits) != 0) {
        find("the document permits more than before");
    }
    if (!both.split.file().password().empty() && both.after.password().empty()) {
        find("the document opens without a password");
    }
}

} // namespace

void compareDocuments(const Both& both)
{
    const Split whole(both.after, {});
    const Judgement after(whole, both.targetsAfter);
    compareOutlines(both, after);
    compareFields(both, after);
    compareNames(both);
    compareAttachments(both);
    compareInformation(both);
    compareCatalogs(both);
    compareProtection(both);
}

} // namespace vantora::verification
