#include "SketchCase.h"

namespace {

using support::Sketch;
using support::SketchCase;
using testing::ElementsAre;

const std::string widget = "<< /Type /Annot /Subtype /Widget /Rect [0 0 9 9] ";
const std::string signedBy =
    "<< /Type /Sig /Filter /Adobe.PPKLite /ByteRange [0 1 2 3] /Contents <00> ";
const std::pair<std::string, std::string> look = {
    "look", "/Type /XObject /Subtype /Form /BBox [0 0 1 1]|(SECRET-LOOK) Tj"};

struct Case {
    SketchCase document;
    std::vector<std::string> warnings; // the fields that they name
};

std::string removedFrom(const std::string& field)
{
    return "deleting pages: the signature in field \"" + field +
           "\" no longer holds and was removed";
}

const Case cases[] = {
    {{"field on a page that stays",
      {{"", "/Annots [@field]"},
       "/AcroForm << /Fields [@field] /SigFlags 3 >> /Perms << /DocMDP @value >> /DSS << /Certs "
       "[@certificate] >>",
       {{"field", widget + "/FT /Sig /T (Approval) /V @value /AP << /N @look >> /Lock << /Type "
                           "/SigFieldLock /Action /All >> >>"},
        {"value", signedBy + "/Name (SECRET-NAME) /Reference [<< /Type /SigRef /TransformMethod "
                             "/DocMDP /TransformParams << /P 1 /V /1.2 >> >>] >>"},
        {"certificate", "|SECRET-CERTIFICATE"},
        look}},
      {{"Root/AcroForm/Fields/0/T", "(Approval)"},
       {"Root/AcroForm/Fields/0/V", "nothing"},
       {"Root/AcroForm/Fields/0/AP", "nothing"},
       {"Root/AcroForm/Fields/0/Lock/Action", "/All"},
       {"Root/AcroForm/SigFlags", "1"},
       {"p1/Annots", "array 1"},
       {"Root/Perms", "nothing"},
       {"Root/DSS", "nothing"}},
      {"SECRET", "/DocMDP", "/ByteRange"}},
     {removedFrom("Approval")}},
    {{"field on a removed page",
      {{"/Annots [@field]", ""},
       "/AcroForm << /Fields [@field @other] /SigFlags 3 >>",
       {{"field", widget + "/FT /Sig /T (Approval) /V @value /AP << /N @look >> >>"},
        {"other", "<< /FT /Tx /T (Other) >>"},
        {"value", signedBy + "/Name (SECRET-NAME) >>"},
        look}},
      {{"Root/AcroForm/Fields", "array 1"}, {"Root/AcroForm/SigFlags", "nothing"}},
      {"SECRET", "/ByteRange"}},
     {removedFrom("Approval")}},
    {{"type that is inherited and widgets of their own",
      {{"", "/Annots [@w1 @w2]"},
       "/AcroForm << /Fields [@top] >>",
       {{"top", "<< /FT /Sig /T (Contract) /Kids [@field] >>"},
        {"field", "<< /T (Buyer) /Parent @top /V @value /Kids [@w1 @w2] >>"},
        {"w1", widget + "/Parent @field /AP << /N @look >> >>"},
        {"w2", widget + "/Parent @field /AP << /N @look >> >>"},
        {"value", "<< /ByteRange [0 1 2 3] /Contents <00> /Name (SECRET-NAME) >>"},
        look}},
      {{"Root/AcroForm/Fields/0/Kids/0/V", "nothing"}, {"p1/Annots/1/AP", "nothing"}},
      {"SECRET", "/ByteRange"}},
     {removedFrom("Contract.Buyer")}},
    {{"value inside the field and a time stamp",
      {{"", "/Annots [@one @two]"},
       "/AcroForm << /Fields [@one @two] /SigFlags 1 >>",
       {{"one", widget + "/FT /Sig /T (One) /V " + signedBy + "/Name (SECRET) >> >>"},
        {"two", widget + "/FT /Sig /T (Two) /V @stamp >>"},
        {"stamp", "<< /Type /DocTimeStamp /SubFilter /ETSI.RFC3161 /Contents <00> >>"}}},
      {{"p1/Annots/0/V", "nothing"}, {"p1/Annots/1/V", "nothing"}},
      {"SECRET", "/DocTimeStamp"}},
     {removedFrom("One"), removedFrom("Two")}},
    {{"field that nobody signed",
      {{"", "/Annots [@field]"},
       "/AcroForm << /Fields [@field] /SigFlags 1 >> /DSS << >>",
       {{"field", widget + "/FT /Sig /T (Approval) /AP << /N @look >> >>"}, look}},
      {{"Root/AcroForm/Fields/0/AP/N", "stream"},
       {"Root/AcroForm/SigFlags", "1"},
       {"Root/DSS", "dictionary"}}},
     {}},
    {{"usage rights",
      {{"", ""},
       "/Perms @permissions",
       {{"permissions", "<< /UR3 @value >>"}, {"value", signedBy + "/Name (SECRET) >>"}}},
      {{"Root/Perms", "nothing"}},
      {"SECRET"}},
     {"deleting pages: the signature for the document's usage rights no longer holds and was "
      "removed"}},
};

TEST(Signatures, GoWithAWarningThatNamesTheirField)
{
    for (const auto& [given, names] : cases) {
        SCOPED_TRACE(given.name);
        support::expectFound(given);
        auto document = support::opened(given.document.built());
        ASSERT_TRUE(karvel::pages::deletePages(*document, {1, 1}).has_value());
        support::savedIn(*document);
        EXPECT_EQ(document->warnings(), names);
    }
}

TEST(Signatures, StayWhileNoPageIsRemoved)
{
    const std::string pdf = cases[0].document.document.built();
    auto document = support::opened(pdf);
    const std::string saved = support::savedIn(*document, karvel::saving::Way::Rewrite);
    EXPECT_EQ(support::firstDifference(pdf, saved), "");
    EXPECT_THAT(document->warnings(), ElementsAre());
}

} // namespace
