#include "SketchCase.h"

namespace {

using support::SketchCase;

const SketchCase cases[] = {
    {"parts of records",
     {{"/DPart @one", "/DPart @one", "/DPart @two", "/DPart @three", "/DPart @three",
       "/DPart @three"},
      "/DPartRoot << /Type /DPartRoot /DPartRootNode @top >>",
      {{"top", "<< /Type /DPart /DParts [[@first] [@three]] >>"},
       {"first", "<< /Type /DPart /Parent @top /DParts [[@one @two]] >>"},
       {"one", "<< /Type /DPart /Parent @first /Start @p1 /End @p2 /DPM << /Name (SECRET-1) >> >>"},
       {"two", "<< /Type /DPart /Parent @first /Start @p3 /DPM << /Name (SECRET-2) >> >>"},
       {"three", "<< /Type /DPart /Parent @top /Start @p4 /End @p6 /DPM << /Name (Kept) >> >>"}}},
     {{"Root/DPartRoot/DPartRootNode/DParts/0", "array 0"},
      {"Root/DPartRoot/DPartRootNode/DParts/1/0/DPM/Name", "(Kept)"},
      {"Root/DPartRoot/DPartRootNode/DParts/1/0/Start", "page 1"},
      {"Root/DPartRoot/DPartRootNode/DParts/1/0/End", "page 2"}},
     {"SECRET"},
     {4, 3, 2, 1}},
    {"last page of a part",
     {{"", "", ""},
      "/DPartRoot << /DPartRootNode @top >>",
      {{"top", "<< /DParts [[@one]] >>"}, {"one", "<< /Start @p1 /End @p3 >>"}}},
     {{"Root/DPartRoot/DPartRootNode/DParts/0/0/Start", "page 1"},
      {"Root/DPartRoot/DPartRootNode/DParts/0/0/End", "page 2"}},
     {},
     {3}},
    {"no part left",
     {{"", ""},
      "/DPartRoot @root",
      {{"root", "<< /DPartRootNode @top >>"},
       {"top", "<< /DParts [[@one]] >>"},
       {"one", "<< /Start @p1 /DPM << /Name (SECRET) >> >>"}}},
     {{"Root/DPartRoot", "nothing"}},
     {"SECRET"}},
};

TEST(DocumentParts, LoseTheirRemovedPages)
{
    support::expectFound(cases);
}

} // namespace
