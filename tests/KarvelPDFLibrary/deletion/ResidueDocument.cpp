#include "ResidueDocument.h"

#include "tests/support/PdfBuilder.h"

#include <regex>

namespace support {

namespace {

/// Writes what belongs to the pages: in a text "%" stands for a page's number, "~" for that of the
/// page after and "^" for that of the page before, the last and the first being neighbours.
class Writer {
public:
    explicit Writer(int pages) : pages_(pages)
    {
        sketch_.pages.resize(static_cast<std::size_t>(pages));
    }

    void onEveryPage(const std::string& entries)
    {
        for (int page = 1; page <= pages_; ++page) {
            onPage(page, entries);
        }
    }
    void onPage(int page, const std::string& entries)
    {
        sketch_.pages[static_cast<std::size_t>(page - 1)] += filled(entries, page) + " ";
    }

    int pages() const { return pages_; }

    void objectOf(int page, const std::string& name, const std::string& text)
    {
        sketch_.objects.emplace_back(filled(name, page), filled(text, page));
    }

    /// An object for every page.
    void forEveryPage(const std::string& name, const std::string& text)
    {
        for (int page = 1; page <= pages_; ++page) {
            objectOf(page, name, text);
        }
    }

    /// One text for every page, one after the other.
    std::string all(const std::string& text) const
    {
        std::string joined;
        for (int page = 1; page <= pages_; ++page) {
            joined += filled(text, page) + " ";
        }
        return joined;
    }

    void object(const std::string& name, const std::string& text)
    {
        sketch_.objects.emplace_back(name, text);
    }
    void inCatalog(const std::string& entries) { sketch_.catalog += entries + " "; }

    Sketch sketch() const { return sketch_; }

private:
    std::string filled(const std::string& text, int page) const
    {
        std::string result;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] == '%') {
                result += std::to_string(page);
            } else if (text[i] == '~') {
                result += std::to_string(page % pages_ + 1);
            } else if (text[i] == '^') {
                result += std::to_string((page + pages_ - 2) % pages_ + 1);
            } else {
                result += text[i];
            }
        }
        return result;
    }

    int pages_;
    Sketch sketch_;
};

void addPageEntries(Writer& writer)
{
    writer.onEveryPage("/Metadata @xmp% /PieceInfo << /Private << /Private @private% >> "
                       "/Ahead << /Private << /To [@p~ /Fit] /Text (own~-ahead-on-%) >> >> >> "
                       "/Thumb @thumb% /VP [<< /Type /Viewport /BBox [0 0 9 9] /Name (own%-port) "
                       ">>] /AF [@associated%] /Tabs /S");
    writer.forEveryPage("xmp%", "/Type /Metadata /Subtype /XML|<x:xmpmeta>own%-xmp</x:xmpmeta>");
    writer.forEveryPage("private%", "<< /Text (own%-private) >>");
    writer.forEveryPage("thumb%", "/Width 12 /Height 1 /ColorSpace /DeviceGray /BitsPerComponent 8|"
                                  "own%-thumb..");
    writer.forEveryPage("associated%", "<< /Type /Filespec /F (own%-associated) /EF << /F "
                                       "@associatedfile% >> >>");
    writer.forEveryPage("associatedfile%", "/Type /EmbeddedFile|own%-associated-file.");
}

/// What programs keep for themselves, and pictures of all pages together.
void addDocumentEntries(Writer& writer)
{
    writer.inCatalog("/Metadata @documentxmp /PieceInfo << /OwnApp << /LastModified (D:2026) "
                     "/Private @pieces >> >> /OwnData << /Listed [" +
                     writer.all("<< /Page @p% /Text (own%-listed) >>") + "] /Kept (own data) >>");
    writer.object("documentxmp",
                  "/Type /Metadata /Subtype /XML|<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>"
                  "<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF "
                  "xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'><rdf:Description "
                  "rdf:about='' xmlns:p='http://ns.adobe.com/xap/1.0/'><p:Label>kept label"
                  "</p:Label><p:Thumbnails><rdf:Alt><rdf:li>own0-preview</rdf:li></rdf:Alt>"
                  "</p:Thumbnails></rdf:Description></rdf:RDF></x:xmpmeta><?xpacket end='w'?>");
    writer.object("pieces", "<< /Items [" + writer.all("@piece%") + "] /Name (kept piece) >>");
    writer.forEveryPage("piece%", "<< /Pages [1 [@p%]] /Text (own%-piece) /More << /Deep "
                                  "(own%-deep) >> /Data @piecedata% >>");
    writer.forEveryPage("piecedata%", "|own%-piecedata.");
}

void addContent(Writer& writer)
{
    writer.onEveryPage("/Contents @content% /Resources @resources");
    writer.forEveryPage("content%", "|BT /F1 24 Tf 72 700 Td (own%-text) Tj ET /X% Do /Both Do "
                                    "/Span /M% BDC EMC /OC /L% BDC EMC /OC /L0 BDC EMC /Pattern cs "
                                    "/P% scn 0 0 9 9 re f /S% sh /C% cs /K% cs /G% gs BT "
                                    "/T% 9 Tf ET");
    writer.object("resources", "<< /Font << /F1 << /Type /Font /Subtype /Type1 /BaseFont "
                               "/Helvetica >> " +
                                   writer.all("/T% @font%") + ">> /ColorSpace << " +
                                   writer.all("/C% [/ICCBased @profile%] /K% [/Separation "
                                              "/own%-ink /DeviceGray << /FunctionType 2 /N 1 "
                                              "/Domain [0 1] >>]") +
                                   ">> /ExtGState << " + writer.all("/G% << /Font [@font% 9] >>") +
                                   ">> /XObject << /Both @both " +
                                   writer.all("/X% @form% /Inner% @inner%") + ">> /Properties << " +
                                   writer.all("/M% << /Text (own%-properties) >> /L% @layer%") +
                                   "/L0 @everywhere " + ">> /Pattern << " +
                                   writer.all("/P% @pattern%") + ">> /Shading << " +
                                   writer.all("/S% << /Text (own%-shading) >>") + ">> >>");
    writer.forEveryPage("font%", "<< /Type /Font /Subtype /TrueType /BaseFont /own%-font "
                                 "/FontDescriptor << /Type /FontDescriptor /FontName /own%-font "
                                 "/FontFile2 @fontfile% >> >>");
    writer.forEveryPage("fontfile%", "|own%-fontfile.");
    writer.forEveryPage("profile%", "/N 3|own%-profile.");
    writer.object("both", "/Type /XObject /Subtype /Form /BBox [0 0 9 9]|(drawn by all pages) Tj");
    writer.forEveryPage("form%", "/Type /XObject /Subtype /Form /BBox [0 0 9 9]|BT (own%-form) Tj "
                                 "ET /Inner% Do");
    writer.forEveryPage("inner%", "/Type /XObject /Subtype /Form /BBox [0 0 9 9]|BT (own%-inner) "
                                  "Tj ET");
    writer.forEveryPage("pattern%", "/PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 9 9] "
                                    "/XStep 9 /YStep 9 /Resources << >>|BT (own%-pattern) Tj ET");
}

void addDestinations(Writer& writer)
{
    writer.inCatalog("/Names << /Dests @dests /Pages @named /IDS @ids /URLS @urls /EmbeddedFiles "
                     "<< /Names [(attached) @attached " +
                     writer.all("(own%-clipname) @spec% (own%-twin) << /F (own%-twinfile) /EF << "
                                "/F @associatedfile% >> >>") +
                     "] >> /Renditions << /Names [" + writer.all("(own%-rendition) @rendition%") +
                     "(scripted) << /Type /Rendition /S /MR /N (scripted media) >>] >> /AP << "
                     "/Names [(by scripts) @both " +
                     writer.all("(own%-icon) @icon%") +
                     "] >> >> /Dests @olddests /OpenAction @open");
    writer.object("attached", "<< /Type /Filespec /F (kept.txt) /EF << /F @attachedfile >> >>");
    writer.object("attachedfile", "/Type /EmbeddedFile|attached to the document");
    writer.object("dests", "<< /Kids [" + writer.all("@destleaf%") + "] >>");
    writer.forEveryPage("destleaf%", "<< /Limits [(own%-a) (own%-b)] /Names [(own%-a) [@p% /Fit] "
                                     "(own%-b) << /D @where% /X (own%-extra) >>] >>");
    writer.forEveryPage("where%", "[@p% /XYZ 0 0 0]");
    writer.object("olddests", "<< " + writer.all("/own%-old [@p% /Fit]") + ">>");
    writer.object("open", "<< /S /GoTo /D (own1-a) /X (own1-open) >>");
    std::string labels; // whose keys count from 0
    for (int page = 1; page <= writer.pages(); ++page) {
        const std::string number = std::to_string(page);
        labels += std::to_string(page - 1) + " << /P (own" + number + "-label) /S /D >> ";
    }
    writer.inCatalog("/PageLabels << /Nums [" + labels + "] >>");
}

void addOutline(Writer& writer)
{
    writer.inCatalog("/Outlines @outlines");
    writer.object("outlines", "<< /Type /Outlines /First @heading /Last @heading /Count 1 >>");
    writer.object("heading", "<< /Title (All pages) /Parent @outlines /First @entrya1 /Last "
                             "@lastentry >>");
    for (int page = 1; page <= writer.pages(); ++page) {
        const std::string before = page == 1 ? "" : " /Prev @entryd^";
        const std::string after = page == writer.pages() ? "@lastentry" : "@entrya~";
        writer.objectOf(page, "entrya%",
                        "<< /Title (own%-entry-a) /Parent @heading /Dest [@p% "
                        "/Fit] /SE @paragraph% /Next @entryb%" +
                            before + " >>");
        writer.objectOf(page, "entryb%",
                        "<< /Title (own%-entry-b) /Parent @heading /Dest (own%-b) "
                        "/Next @entryc% /Prev @entrya% >>");
        writer.objectOf(page, "entryc%",
                        "<< /Title (own%-entry-c) /Parent @heading /A << /S /GoTo "
                        "/D /own%-old >> /Prev @entryb% /Next @entryd% >>");
        writer.objectOf(page, "entryd%",
                        "<< /Title (own%-entry-d) /Parent @heading /SE @paragraph% /Prev "
                        "@entryc% /Next " +
                            after + " >>");
    }
    writer.object("lastentry", "<< /Title (A site) /Parent @heading /A << /S /URI /URI (x:y) >> "
                               "/Prev @entryd" +
                                   std::to_string(writer.pages()) + " >>");
}

void addAnnotations(Writer& writer)
{
    // Links, popups and replies stand on the next page. The lists of every other page are of
    // references only.
    for (int page = 1; page <= writer.pages(); ++page) {
        writer.onPage(
            page,
            std::string(
                "/Annots [@note% @clip% @link^ @popup^ @reply^ @field% @sharedwidget% @radio% "
                "@screen%") +
                (page % 2 == 0 ? "]"
                               : " << /Type /Annot /Subtype /Text /Rect [0 0 9 9] /Contents "
                                 "(own%-direct) >>]"));
    }
    writer.onEveryPage(
        "/LastModified (own%-modified) /AA << /O << /S /GoTo /D [@p~ /Fit] /X (own~-opened-on-%) "
        ">> >>");
    writer.forEveryPage("note%", "<< /Type /Annot /Subtype /Text /Rect [0 0 9 9] /P @p% /Popup "
                                 "@popup% /Contents (own%-note) /AP << /N @look% /D @icon% >> >>");
    writer.forEveryPage(
        "look%", "/Type /XObject /Subtype /Form /BBox [0 0 9 9] /OC @look%layer|BT (own%-look) Tj "
                 "ET");
    writer.forEveryPage("icon%", "/Type /XObject /Subtype /Form /BBox [0 0 9 9]|BT (own%-icon) Tj "
                                 "ET");
    writer.forEveryPage("screen%", "<< /Type /Annot /Subtype /Screen /Rect [0 0 9 9] /A << /S "
                                   "/Rendition /OP 0 /R @rendition% >> >>");
    writer.forEveryPage("rendition%", "<< /Type /Rendition /S /MR /N (own%-medium) /C << /Type "
                                      "/MediaClip /S /MCD /D << /Type /Filespec /F (own%-media) "
                                      "/EF << /F @medium% >> >> >> >>");
    writer.forEveryPage("medium%", "/Type /EmbeddedFile|own%-media-data.");
    writer.forEveryPage("popup%", "<< /Type /Annot /Subtype /Popup /Rect [0 0 9 9] /Parent @note% "
                                  "/Contents (own%-popup-on-~) >>");
    writer.forEveryPage("reply%", "<< /Type /Annot /Subtype /Text /Rect [0 0 9 9] /IRT @note% "
                                  "/Contents (own%-reply-on-~) >>");
    writer.forEveryPage("clip%", "<< /Type /Annot /Subtype /FileAttachment /Rect [0 0 9 9] /FS "
                                 "@spec% /Contents (own%-clip) >>");
    writer.forEveryPage("spec%", "<< /Type /Filespec /F (own%-file.txt) /EF << /F @file% >> >>");
    writer.forEveryPage("file%", "/Type /EmbeddedFile|own%-file-data.");
    writer.forEveryPage("link%", "<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /StructParent 10% "
                                 "/Contents (own%-link-on-~) /Dest [@p% /Fit] >>");
}

void addForm(Writer& writer)
{
    writer.inCatalog("/AcroForm @form");
    writer.object("form", "<< /DA (/F 9 Tf) /DR << >> /Fields [@group @shared @choice] /CO [" +
                              writer.all("@field%") + "] >>");
    writer.object("group", "<< /T (group) /Kids [" + writer.all("@branch%") + "] >>");
    writer.forEveryPage("branch%", "<< /T (own%-branch) /Parent @group /Kids [@field%] >>");
    writer.forEveryPage("field%", "<< /Type /Annot /Subtype /Widget /Rect [0 0 9 9] /P @p% /FT /Tx "
                                  "/T (own%-field) /TU (own%-tip) /V (own%-value) /Parent @branch% "
                                  "/AP << /N @fieldlook% >> /AA << /K << /S /JavaScript /JS "
                                  "(own%-script) >> >> >>");
    writer.forEveryPage("fieldlook%", "/Type /XObject /Subtype /Form /BBox [0 0 9 9]|BT "
                                      "(own%-fieldlook) Tj ET");
    writer.object("shared", "<< /T (shared) /FT /Tx /V (value) /Kids [" +
                                writer.all("@sharedwidget%") + "] >>");
    writer.forEveryPage("sharedwidget%", "<< /Type /Annot /Subtype /Widget /Rect [0 0 9 9] /Parent "
                                         "@shared /MK << /CA (own%-caption) >> >>");
    writer.object("choice", "<< /T (choice) /FT /Btn /Ff 49152 /V /Off /Opt [" +
                                writer.all("(own%-option)") + "] /Kids [" + writer.all("@radio%") +
                                "] >>");
    writer.forEveryPage("radio%",
                        "<< /Type /Annot /Subtype /Widget /Rect [0 0 9 9] /Parent @choice "
                        "/AS /Off /AP << /N << /own%-state @look% >> >> >>");
}

void addStructure(Writer& writer)
{
    writer.onEveryPage("/StructParents %");
    writer.inCatalog("/MarkInfo << /Marked true >> /StructTreeRoot @root");
    writer.object("root", "<< /Type /StructTreeRoot /K @document /ParentTree @parents /IDTree << "
                          "/Names [" +
                              writer.all("(own%-id) @paragraph%") + "] >> >>");
    writer.object("parents", "<< /Nums [" + writer.all("% [@paragraph% @cell% @spread]") +
                                 writer.all("10% @linkelement%") + "] >>");
    writer.object("document", "<< /Type /StructElem /S /Document /P @root /K [" +
                                  writer.all("@section%") + "@spread] >>");
    writer.forEveryPage("section%", "<< /Type /StructElem /S /Sect /P @document /T (own%-section) "
                                    "/K [@paragraph% @table% @linkelement%] >>");
    writer.forEveryPage("paragraph%", "<< /Type /StructElem /S /P /P @section% /Pg @p% /K 0 /ID "
                                      "(own%-id) /ActualText (own%-actual) /Alt (own%-alt) /E "
                                      "(own%-expansion) /Ref [@cell^] >>");
    writer.forEveryPage("table%", "<< /Type /StructElem /S /Table /P @section% /A << /O /Table "
                                  "/Summary (own%-summary) >> /K [@row%] >>");
    writer.forEveryPage("row%",
                        "<< /Type /StructElem /S /TR /P @table% /K [@cell% @emptycell%] >>");
    writer.forEveryPage("cell%", "<< /Type /StructElem /S /TD /P @row% /K << /Type /MCR /Pg @p% "
                                 "/MCID 1 >> /T (own%-cell) >>");
    writer.forEveryPage("emptycell%", "<< /Type /StructElem /S /TD /P @row% /T (own%-emptycell) "
                                      ">>");
    writer.forEveryPage("linkelement%",
                        "<< /Type /StructElem /S /Link /P @section% /Pg @p~ /K << "
                        "/Type /OBJR /Obj @link% >> /Alt (own%-linkelement-on-~) >>");
    writer.object("spread", "<< /Type /StructElem /S /P /P @document /Alt (on all pages) /K [" +
                                writer.all("<< /Type /MCR /Pg @p% /MCID 2 >>") + "] >>");
}

void addThreads(Writer& writer)
{
    writer.onEveryPage("/B [@bead% @single%]");
    writer.inCatalog("/Threads [@thread " + writer.all("@singlethread%") + "]");
    writer.object("thread", "<< /F @bead1 /I << /Title (A thread) >> >>");
    writer.forEveryPage("bead%", "<< /P @p% /V @bead^ /N @bead~ /R [0 0 9 9] /X (own%-bead) >>");
    writer.forEveryPage("singlethread%", "<< /F @single% /I << /Title (own%-thread) >> >>");
    writer.forEveryPage("single%", "<< /T @singlethread% /P @p% /V @single% /N @single% /R [0 0 9 "
                                   "9] >>");
}

} // namespace

void addLayers(Writer& writer)
{
    writer.inCatalog("/OCProperties << /OCGs [@everywhere " + writer.all("@layer% @look%layer") +
                     "] /D << /Order [@everywhere [" + writer.all("@layer%") + "] " +
                     writer.all("[(own%-layerlabel) @look%layer]") + "] /ON [" +
                     writer.all("@layer%") + "] >> >>");
    writer.object("everywhere", "<< /Type /OCG /Name (on every page) >>");
    writer.forEveryPage("layer%", "<< /Type /OCG /Name (own%-layer) >>");
    writer.forEveryPage("look%layer", "<< /Type /OCG /Name (own%-looklayer) >>");
}

void addCollectedThings(Writer& writer)
{
    writer.onEveryPage("/DPart @part%");
    writer.inCatalog("/DPartRoot << /DPartRootNode @parts >>");
    writer.object("parts", "<< /DParts [[" + writer.all("@part%") + "]] >>");
    writer.forEveryPage("part%", "<< /Start @p% /Parent @parts /DPM << /Name (own%-part) >> >>");
    writer.object("named", "<< /Names [" + writer.all("(own%-named) @p%") + "] >>");
    writer.object("ids", "<< /Names [" + writer.all("(own%-webid) @pageset%") + "] >>");
    writer.object("urls", "<< /Names [" + writer.all("(own%-url) [@pageset% @imageset%]") + "] >>");
    writer.forEveryPage("pageset%", "<< /Type /SpiderContentSet /S /SPS /ID (own%-webid) /O [@p%] "
                                    "/T (own%-webtitle) /CT (text/html) >>");
    writer.forEveryPage("imageset%", "<< /Type /SpiderContentSet /S /SIS /ID (own%-webimage) /O "
                                     "[@form%] >>");
}

Sketch residueDocument(int pages)
{
    Writer writer(pages);
    addPageEntries(writer);
    addDocumentEntries(writer);
    addContent(writer);
    addDestinations(writer);
    addOutline(writer);
    addAnnotations(writer);
    addForm(writer);
    addStructure(writer);
    addThreads(writer);
    addLayers(writer);
    addCollectedThings(writer);
    return writer.sketch();
}

std::string withLaterRevision(const std::string& pdf, int pages)
{
    std::smatch size;
    std::smatch root;
    std::regex_search(pdf, size, std::regex("/Size (\\d+)"));
    std::regex_search(pdf, root, std::regex("/Root (\\d+ 0 R)"));
    const std::size_t table = pdf.rfind("startxref\n");
    std::string file = pdf;
    std::string rows;
    int number = 0;
    for (int page = 1; page <= pages; ++page) {
        const std::string former = "(own" + std::to_string(page) + "-text) Tj";
        const std::size_t content = pdf.find(former);
        const std::size_t object = pdf.rfind(" 0 obj", content);
        const std::size_t line = pdf.rfind('\n', object) + 1;
        number = std::stoi(pdf.substr(line));
        // Both have the same length; the former is hidden behind the new one.
        std::string text = pdf.substr(line, pdf.find("endobj\n", content) + 7 - line);
        rows += std::to_string(number) + " 1\n" + PdfBuilder::tableRow(file.size());
        file += text;
        file.replace(content, 4, "old" + std::to_string(page));
    }
    const std::size_t start = file.size();
    return file + "xref\n" + rows + "trailer\n<< /Size " + size[1].str() + " /Root " +
           root[1].str() + " /Prev " +
           pdf.substr(table + 10, pdf.find('\n', table + 10) - table - 10) + " >>\nstartxref\n" +
           std::to_string(start) + "\n%%EOF\n";
}

std::string asHybridFile(const std::string& pdf)
{
    const std::size_t table = pdf.rfind("xref\n0 ", pdf.rfind("trailer"));
    const std::size_t firstRow = pdf.find('\n', table + 5) + 1;
    const int size = std::stoi(pdf.substr(table + 7));
    std::string rows = pdf.substr(firstRow, 20 * static_cast<std::size_t>(size));
    std::string header;
    std::string members;
    std::string entries;
    std::string index;
    int count = 0;
    for (int number = 1; number < size; ++number) {
        const std::size_t row = 20 * static_cast<std::size_t>(number);
        const std::size_t start = pdf.find("obj\n", std::stoul(rows.substr(row, 10))) + 4;
        const std::string body = pdf.substr(start, pdf.find("\nendobj", start) - start);
        const bool open = body.find("\nstream\n") != std::string::npos ||
                          body.find("/Type /Page") != std::string::npos ||
                          body.find("/Type /Catalog") != std::string::npos;
        if (open) {
            continue;
        }
        header += std::to_string(number) + " " + std::to_string(members.size()) + " ";
        members += body + "\n";
        index += std::to_string(number) + " 1 ";
        const int parts[] = {2, size >> 8, size & 255, count >> 8, count & 255};
        for (const int byte : parts) {
            entries += static_cast<char>(byte);
        }
        ++count;
        rows.replace(row, 20, "0000000000 65535 f \n");
    }
    std::string file = pdf.substr(0, table);
    const auto add = [&](int number, const std::string& dictionary, const std::string& data) {
        rows += PdfBuilder::tableRow(file.size());
        file += std::to_string(number) + " 0 obj\n<< " + dictionary + " /Length " +
                std::to_string(data.size()) + " >>\nstream\n" + data + "\nendstream\nendobj\n";
    };
    add(size,
        "/Type /ObjStm /N " + std::to_string(count) + " /First " + std::to_string(header.size()),
        header + members);
    const std::size_t references = file.size();
    const std::string newSize = std::to_string(size + 2);
    add(size + 1, "/Type /XRef /Size " + newSize + " /W [1 2 2] /Index [" + index + "]", entries);
    const std::size_t start = file.size();
    std::smatch root;
    std::regex_search(pdf, root, std::regex("/Root (\\d+ 0 R)"));
    return file + "xref\n0 " + newSize + "\n" + rows + "trailer\n<< /Size " + newSize + " /Root " +
           root[1].str() + " /XRefStm " + std::to_string(references) + " >>\nstartxref\n" +
           std::to_string(start) + "\n%%EOF\n";
}

std::set<std::string> ownWords(const std::string& pdf, const std::string& password)
{
    const std::string everything = everythingIn(pdf, password) + "\n" + pdf;
    static const std::regex word("(own|old)\\d+-[a-z]+(-[a-z]+)*(-\\d+)?");
    std::set<std::string> words;
    for (std::sregex_iterator at(everything.begin(), everything.end(), word), end; at != end;
         ++at) {
        words.insert(at->str());
    }
    return words;
}

bool belongsTo(const std::string& word, int page)
{
    const std::string number = std::to_string(page);
    const std::string on = "-on-" + number;
    if (word.substr(3, 2) == "0-") {
        return true; // of all pages together
    }
    const bool leads = word.substr(3, number.size() + 1) == number + "-";
    return leads || (word.size() > on.size() && word.substr(word.size() - on.size()) == on);
}

} // namespace support
