#include "SketchCase.h"

namespace {

using support::SketchCase;

const std::pair<std::string, std::string> image = {
    "image", "/Type /XObject /Subtype /Image /Width 6 /Height 1 /BitsPerComponent 8 /ColorSpace "
             "/DeviceGray|SECRET"};

const SketchCase cases[] = {
    {"named pages and templates",
     {{"", ""},
      "/Names << /Pages << /Names [(SECRET) @p1 (kept) @p2] >> /Templates << /Names [(form) "
      "@template] >> >>",
      {{"template", "<< /Type /Template /MediaBox [0 0 9 9] >>"}}},
     {{"Root/Names/Pages/Names", "array 2"},
      {"Root/Names/Pages/Names/1", "page 1"},
      {"Root/Names/Templates/Names", "array 2"}},
     {"SECRET"}},
    {"captured pages",
     {{"", ""},
      "/Names @names",
      {{"names",
        "<< /IDS << /Names [(SECRET-1) @one (both) @both] >> /URLS << /Kids [@leaf] >> >>"},
       {"leaf",
        "<< /Limits [(SECRET-URL) (url)] /Names [(SECRET-URL) [@one] (url) [@one @both]] >>"},
       {"one", "<< /S /SPS /ID (SECRET-1) /O [@p1] /T (SECRET-TITLE) >>"},
       {"both", "<< /S /SPS /ID (both) /O [@p1 @p2] /T (Kept) >>"}}},
     {{"Root/Names/IDS/Names", "array 2"},
      {"Root/Names/IDS/Names/1/O", "array 1"},
      {"Root/Names/IDS/Names/1/O/0", "page 1"},
      {"Root/Names/URLS/Kids/0/Names", "array 2"},
      {"Root/Names/URLS/Kids/0/Names/1", "array 1"},
      {"Root/Names/URLS/Kids/0/Limits/0", "(url)"}},
     {"SECRET"}},
    {"captured images",
     {{"/Resources << /XObject << /A @image >> >>", "/Resources << /XObject << /B @other >> >>"},
      "/Names << /IDS << /Names [(a) @one (b) @two] >> >>",
      {image,
       {"other",
        "/Type /XObject /Subtype /Image /Width 6 /Height 1 /BitsPerComponent 8 /ColorSpace "
        "/DeviceGray|stays!"},
       {"one", "<< /S /SIS /ID (a) /O [@image] /R [1] >>"},
       {"two", "<< /S /SIS /ID (b) /O [@other] /R [1] >>"}}},
     {{"Root/Names/IDS/Names", "array 2"}, {"Root/Names/IDS/Names/1/O/0", "stream"}},
     {"SECRET"}},
    {"nothing captured is left",
     {{"", ""},
      "/Names << /IDS << /Names [(SECRET) @one] >> >>",
      {{"one", "<< /S /SPS /O [@p1] >>"}}},
     {{"Root/Names/IDS", "nothing"}},
     {"SECRET"}},
    {"alternate presentations",
     {{"", ""},
      "/Names << /AlternatePresentations << /Names [(show) @show] >> >>",
      {{"show", "<< /Type /SlideShow /Subtype /Embedded /Resources << /Names [(SECRET) @slide] >> "
                "/StartResource (SECRET) >>"},
       {"slide", "|SECRET"}}},
     {{"Root/Names/AlternatePresentations", "nothing"}},
     {"SECRET"}},
    {"media, files and appearances that a removed page used",
     {{"/Annots [<< /Subtype /Screen /Rect [0 0 9 9] /A << /S /Rendition /R @medium >> >> << "
       "/Subtype /FileAttachment /Rect [0 0 9 9] /FS @file /AP << /N @icon >> >>]",
       "/Annots [<< /Subtype /FileAttachment /Rect [0 0 9 9] /FS @both >>]"},
      "/AF [@associated] /Names << /Renditions << /Names [(SECRET) @medium (script) @other] >> /AP "
      "<< /Names [(SECRET) @icon (script) @drawn] >> /EmbeddedFiles << /Names [(SECRET) @file "
      "(SECRET-2) << /F (SECRET) /EF << /F @data >> >> (both) @both (document) @associated (list) "
      "@listed] >> >>",
      {{"medium", "<< /S /MR /N (SECRET) >>"},
       {"other", "<< /S /MR /N (kept) >>"},
       {"icon", "/Subtype /Form /BBox [0 0 9 9]|SECRET"},
       {"drawn", "/Subtype /Form /BBox [0 0 9 9]|kept"},
       {"file", "<< /F (SECRET) /EF << /F @data >> >>"},
       {"data", "|SECRET"},
       {"both", "<< /F (both) /EF << /F @shared >> >>"},
       {"shared", "|shared"},
       {"associated", "<< /F (associated) /EF << /F @shared >> >>"},
       {"listed", "<< /F (listed) /EF << /F @plain >> >>"},
       {"plain", "|plain"}}},
     {{"Root/Names/Renditions/Names", "array 2"},
      {"Root/Names/Renditions/Names/1/N", "(kept)"},
      {"Root/Names/AP/Names", "array 2"},
      {"Root/Names/AP/Names/1", "stream"},
      {"Root/Names/EmbeddedFiles/Names", "array 6"},
      {"Root/Names/EmbeddedFiles/Names/0", "(both)"},
      {"Root/Names/EmbeddedFiles/Names/5/EF/F", "stream"}},
     {"SECRET"}},
    {"layer of an appearance that only scripts draw",
     {{"/Resources << /Properties << /L @layer >> >>", ""},
      "/OCProperties << /OCGs [@layer] /D << >> >> /Names << /AP << /Names [(script) @drawn] >> >>",
      {{"layer", "<< /Type /OCG /Name (layer) >>"},
       {"drawn", "/Subtype /Form /BBox [0 0 9 9] /OC @layer|kept"}}},
     {{"Root/OCProperties/OCGs", "array 1"}, {"Root/Names/AP/Names/1/OC/Name", "(layer)"}}},
    {"separations of a page",
     {{"/SeparationInfo << /Pages [@p1 @p2 @p3] /DeviceColorant /Cyan >>",
       "/SeparationInfo << /Pages [@p1 @p2 @p3] /DeviceColorant /Black >>",
       "/SeparationInfo @info"},
      "",
      {{"info", "<< /Pages [@p1 @p2 @p3] /DeviceColorant (Spot) >>"}}},
     {{"p1/SeparationInfo/Pages", "array 2"},
      {"p1/SeparationInfo/Pages/0", "page 1"},
      {"p2/SeparationInfo/Pages", "array 2"}}},
};

TEST(CollectedThings, LeaveTheListsTheyAreIn)
{
    support::expectFound(cases);
}

} // namespace
