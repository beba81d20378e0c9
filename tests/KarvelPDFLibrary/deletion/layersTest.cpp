#include "SketchCase.h"

namespace {

using support::SketchCase;

std::string group(const std::string& name)
{
    return "<< /Type /OCG /Name (" + name + ") >>";
}

std::string onPage(const std::string& groups)
{
    return "/Resources << /Properties << " + groups + " >> >>";
}

const SketchCase cases[] = {
    {"used by one page each",
     {{onPage("/A @a"), onPage("/B @b")},
      "/OCProperties << /OCGs [@a @b @unused] /D << /Order [@a @b @unused] /ON [@a @b] /OFF [@a] "
      "/Locked [@a] /RBGroups [[@a @b] [@a]] /AS [<< /Event /View /OCGs [@a] >> << /Event /Print "
      "/OCGs [@a @b] >>] >> /Configs [@config] >>",
      {{"a", group("SECRET")},
       {"b", group("Kept")},
       {"unused", group("Never used")},
       {"config", "<< /Name (Other) /Order [@b [@a]] /ON @on >>"},
       {"on", "[@a @b]"}}},
     {{"Root/OCProperties/OCGs", "array 2"},
      {"Root/OCProperties/OCGs/0/Name", "(Kept)"},
      {"Root/OCProperties/OCGs/1/Name", "(Never used)"},
      {"Root/OCProperties/D/Order", "array 2"},
      {"Root/OCProperties/D/ON", "array 1"},
      {"Root/OCProperties/D/OFF", "array 0"},
      {"Root/OCProperties/D/Locked", "array 0"},
      {"Root/OCProperties/D/RBGroups", "array 1"},
      {"Root/OCProperties/D/RBGroups/0", "array 1"},
      {"Root/OCProperties/D/AS", "array 1"},
      {"Root/OCProperties/D/AS/0/Event", "/Print"},
      {"Root/OCProperties/Configs/0/Order", "array 1"},
      {"Root/OCProperties/Configs/0/ON", "array 1"}},
     {"SECRET"}},
    {"nested order",
     {{onPage("/A @a"), onPage("/B @b /C @c")},
      "/OCProperties << /OCGs [@a @b @c] /D << /Order [@a [@b [@c]] @a [(Label) @a @b] "
      "[(SECRET-LABEL) "
      "@a]] >> >>",
      {{"a", group("SECRET")}, {"b", group("B")}, {"c", group("C")}}},
     {{"Root/OCProperties/D/Order", "array 3"},
      {"Root/OCProperties/D/Order/0/Name", "(B)"},
      {"Root/OCProperties/D/Order/1/0/Name", "(C)"},
      {"Root/OCProperties/D/Order/2/0", "(Label)"},
      {"Root/OCProperties/D/Order/2", "array 2"}},
     {"SECRET"}},
    {"used in other ways too",
     {{onPage("/A @a /M @member"), "/Annots [<< /Type /Annot /Subtype /Text /Rect [0 0 9 9] /OC @a "
                                   ">>]"},
      "/OCProperties @properties",
      {{"properties", "<< /OCGs [@a @b] /D << /Order [@a @b] >> >>"},
       {"a", group("Kept")},
       {"b", group("SECRET")},
       {"member", "<< /Type /OCMD /OCGs [@b] >>"}}},
     {{"Root/OCProperties/OCGs", "array 1"}, {"Root/OCProperties/OCGs/0/Name", "(Kept)"}},
     {"SECRET"}},
    {"last group",
     {{onPage("/A @a"), ""},
      "/OCProperties << /OCGs [@a] /D << /Order [@a] /BaseState /ON >> >>",
      {{"a", group("SECRET")}}},
     {{"Root/OCProperties/OCGs", "array 0"}, {"Root/OCProperties/D/BaseState", "/ON"}},
     {"SECRET"}},
};

TEST(Layers, GoWithWhatUsedThem)
{
    support::expectFound(cases);
}

} // namespace
