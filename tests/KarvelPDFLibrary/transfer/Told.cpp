#include "tests/KarvelPDFLibrary/transfer/Told.h"

#include "tests/support/Inspect.h"
#include "tests/support/Sketch.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <qpdf/JSON.hh>
#include <regex>
#include <sstream>

namespace told {

namespace {

JSON item(const JSON& dictionary, const std::string& wanted)
{
    JSON found = JSON::makeNull();
    dictionary.forEachDictItem([&](const std::string& key, JSON value) {
        if (key == wanted) {
            found = value;
        }
    });
    return found;
}

JSON jsonOf(const std::string& pdf, const std::string& part)
{
    const support::ScratchFolder scratch;
    const std::string all =
        support::runCommand("qpdf --json=2 --json-key=" + part + " " + scratch.write("a.pdf", pdf))
            .output;
    return item(JSON::parse(all), part);
}

std::string text(const JSON& value)
{
    std::string text;
    return value.getString(text) || value.getNumber(text) ? text : std::string();
}

std::string outlineOf(const JSON& entries)
{
    std::string all;
    entries.forEachArrayItem([&](JSON entry) {
        all += (all.empty() ? "" : " ") + text(item(entry, "title")) + ">" +
               text(item(entry, "destpageposfrom1"));
        const std::string below = outlineOf(item(entry, "kids"));
        all += below.empty() ? "" : " (" + below + ")";
    });
    return all;
}

} // namespace

std::string richDocument()
{
    support::Sketch sketch;
    sketch.pages = {
        "/Annots [@name1 @byName @byPage] /Resources << /Font << /F1 @font >> /Properties << /L "
        "@shown >> >>",
        "/Annots [@name2] /Resources << /Font << /F1 @font >> /Properties << /L @hidden >> >>",
        "/Annots [@last @back]"};
    sketch.catalog =
        "/AcroForm << /Fields [@name @group] /DA (/Helv 9 Tf 0 g) /DR << /Font << /Helv "
        "@font >> >> /CO [@last] >> /Names << /Dests @names >> /Outlines @outline "
        "/OCProperties << /OCGs [@shown @hidden] /D << /OFF [@hidden] /Order [@shown "
        "[(More) @hidden]] /RBGroups [[@shown @hidden]] >> >>";
    const std::string widget = "<< /Type /Annot /Subtype /Widget /Rect [10 10 90 30] ";
    const std::string link = "<< /Type /Annot /Subtype /Link /Rect [10 40 90 60] ";
    sketch.objects = {
        {"font", "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"},
        {"name", "<< /T (name) /FT /Tx /TU (value) /Kids [@name1 @name2] >>"},
        {"name1", widget + "/Parent @name /P @p1 >>"},
        {"name2", widget + "/Parent @name /P @p2 >>"},
        {"group", "<< /T (group) /Kids [@last] >>"},
        {"last", widget + "/T (last) /FT /Tx /Parent @group /P @p3 >>"},
        {"byName", link + "/Dest (two) >>"},
        {"byPage", link + "/A << /S /GoTo /D [@p3 /Fit] >> >>"},
        {"back", link + "/A << /S /GoTo /D (one) >> >>"},
        {"names", "<< /Names [(one) << /D [@p1 /Fit] >> (two) [@p2 /XYZ null null null]] >>"},
        {"outline", "<< /Type /Outlines /First @o1 /Last @o1 /Count 3 >>"},
        {"o1",
         "<< /Title (One) /Parent @outline /Dest [@p1 /Fit] /First @o2 /Last @o3 /Count 2 >>"},
        {"o2", "<< /Title (Two) /Parent @o1 /Dest (two) /Next @o3 >>"},
        {"o3", "<< /Title (Three) /Parent @o1 /A << /S /GoTo /D [@p3 /Fit] >> /Prev @o2 >>"},
        {"shown", "<< /Type /OCG /Name (shown) >>"},
        {"hidden", "<< /Type /OCG /Name (hidden) >>"},
    };
    return sketch.built();
}

std::vector<std::string> fields(const std::string& pdf)
{
    std::vector<std::pair<int, std::string>> found;
    item(jsonOf(pdf, "acroform"), "fields").forEachArrayItem([&](JSON field) {
        const std::string page = text(item(field, "pageposfrom1"));
        found.emplace_back(std::stoi(page), text(item(field, "fullname")) + "@" + page);
    });
    std::sort(found.begin(), found.end());
    std::vector<std::string> names;
    for (const auto& [page, name] : found) {
        names.push_back(name);
    }
    return names;
}

std::string outline(const std::string& pdf)
{
    return outlineOf(jsonOf(pdf, "outlines"));
}

std::vector<std::string> destinations(const std::string& pdf)
{
    const support::ScratchFolder scratch;
    std::istringstream lines(
        support::runCommand("pdfinfo -dests " + scratch.write("a.pdf", pdf)).output);
    const std::regex form("^ *(\\d+) .*\"(.*)\"$");
    std::vector<std::string> found;
    std::smatch parts;
    for (std::string line; std::getline(lines, line);) {
        if (std::regex_match(line, parts, form)) {
            found.push_back(parts[2].str() + ">" + parts[1].str());
        }
    }
    return found;
}

std::vector<std::string> links(const std::string& pdf, int page)
{
    std::vector<std::string> found;
    const std::string annotations = "p" + std::to_string(page) + "/Annots/";
    for (int i = 0; support::valueAt(pdf, annotations + std::to_string(i)) == "dictionary"; ++i) {
        const std::string path = annotations + std::to_string(i);
        if (support::valueAt(pdf, path + "/Subtype") != "/Link") {
            continue;
        }
        const bool isAction = support::valueAt(pdf, path + "/A") == "dictionary";
        std::string target = support::valueAt(pdf, path + (isAction ? "/A/D" : "/Dest"));
        if (target.rfind("array", 0) == 0) {
            target = support::valueAt(pdf, path + (isAction ? "/A/D/0" : "/Dest/0"));
        }
        found.push_back(target);
    }
    return found;
}

} // namespace told
