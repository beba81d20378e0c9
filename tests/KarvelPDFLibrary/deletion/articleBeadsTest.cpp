#include "SketchCase.h"

namespace {

using support::SketchCase;

std::string bead(const std::string& page, const std::string& before, const std::string& after,
                 const std::string& rest = {})
{
    return "<< /Type /Bead /P @" + page + " /R [0 0 9 9] /V @" + before + " /N @" + after + " " +
           rest + " >>";
}

const SketchCase cases[] = {
    {"bead in the middle",
     {{"/B [@b1]", "/B [@b2]", "/B [@b3]"},
      "/Threads [@thread]",
      {{"thread", "<< /Type /Thread /F @b1 /I << /Title (Kept) >> >>"},
       {"b1", bead("p1", "b3", "b2", "/T @thread")},
       {"b2", bead("p2", "b1", "b3", "/X (SECRET)")},
       {"b3", bead("p3", "b2", "b1")}}},
     {{"Root/Threads/0/F/P", "page 1"},
      {"Root/Threads/0/F/N/P", "page 2"},
      {"Root/Threads/0/F/N/N/P", "page 1"},
      {"Root/Threads/0/F/V/P", "page 2"},
      {"Root/Threads/0/F/V/V/P", "page 1"}},
     {"SECRET"},
     {2}},
    {"first beads of a thread",
     {{"/B [@b1]", "/B @list", "/B [@b3]"},
      "/Threads @threads",
      {{"threads", "[@thread]"},
       {"list", "[@b2]"},
       {"thread", "<< /F @b1 /I << /Title (Kept) >> >>"},
       {"b1", bead("p1", "b3", "b2", "/T @thread /X (SECRET-1)")},
       {"b2", bead("p2", "b1", "b3", "/X (SECRET-2)")},
       {"b3", bead("p3", "b2", "b1")}}},
     {{"Root/Threads/0/F/P", "page 1"},
      {"Root/Threads/0/F/N/P", "page 1"},
      {"Root/Threads/0/F/V/P", "page 1"},
      {"Root/Threads/0/F/T/I/Title", "(Kept)"}},
     {"SECRET"},
     {2, 1}},
    {"thread that loses all its beads",
     {{"/B [@b1 @b2]", "/B [@b3]"},
      "/Threads [@thread @other]",
      {{"thread", "<< /F @b1 /I << /Title (SECRET) >> >>"},
       {"b1", bead("p1", "b2", "b2", "/T @thread")},
       {"b2", bead("p1", "b1", "b1")},
       {"other", "<< /F @b3 /I << /Title (Kept) >> >>"},
       {"b3", bead("p2", "b3", "b3", "/T @other")}}},
     {{"Root/Threads", "array 1"}, {"Root/Threads/0/I/Title", "(Kept)"}, {"p1/B", "array 1"}},
     {"SECRET"}},
    {"actions that lead to threads and beads that go",
     {{"/B [@b1]", "/B [@b2] /Annots [@link1 @link2 @link3]"},
      "/Threads [@thread @other]",
      {{"thread", "<< /F @b1 >>"},
       {"b1", bead("p1", "b1", "b1", "/T @thread")},
       {"other", "<< /F @b2 >>"},
       {"b2", bead("p2", "b2", "b2", "/T @other")},
       {"link1", "<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /A << /S /Thread /D @thread /X "
                 "(SECRET) >> >>"},
       {"link2", "<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /A @action >>"},
       {"action", "<< /S /Thread /D @other /B @b1 /Next << /S /URI /URI (Kept) >> >>"},
       {"link3",
        "<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /A << /S /Thread /D @other >> >>"}}},
     {{"p1/Annots", "array 2"}, {"p1/Annots/0/A/URI", "(Kept)"}, {"p1/Annots/1/A/D/F/P", "page 1"}},
     {"SECRET"}},
    {"bead that its page does not list",
     {{"", "/B [@b2]"},
      "/Threads [@thread]",
      {{"thread", "<< /F @b1 >>"},
       {"b1", bead("p1", "b2", "b2", "/T @thread /X (SECRET)")},
       {"b2", bead("p2", "b1", "b1")}}},
     {{"Root/Threads/0/F/P", "page 1"}, {"Root/Threads/0/F/N/P", "page 1"}},
     {"SECRET"}},
    {"bead that does not name its page",
     {{"/B [@b1]", "/B [@b2]"},
      "/Threads [@thread]",
      {{"thread", "<< /F @b1 >>"},
       {"b1", "<< /N @b2 /V @b2 /T @thread /X (SECRET) >>"},
       {"b2", bead("p2", "b1", "b1")}}},
     {{"Root/Threads/0/F/P", "page 1"}, {"Root/Threads/0/F/V/P", "page 1"}},
     {"SECRET"}},
    {"beads that lead nowhere",
     {{"/B [@b1]", "/B [@b2]"},
      "/Threads [@thread]",
      {{"thread", "<< /F @b1 >>"},
       {"b1", "<< /P @p1 /N @b2 /X (SECRET) >>"},
       {"b2", "<< /P @p2 /V @b1 >>"}}},
     {{"Root/Threads/0/F/P", "page 1"}, {"Root/Threads/0/F/V", "nothing"}},
     {"SECRET"}},
    {"beads that never come round",
     {{"/B [@b1 @b2 @b3]", ""},
      "/Threads [@thread]",
      {{"thread", "<< /F @b1 >>"},
       {"b1", bead("p1", "b3", "b2", "/T @thread /X (SECRET)")},
       {"b2", bead("p1", "b1", "b3")},
       {"b3", bead("p1", "b2", "b2")}}},
     {{"Root/Threads", "nothing"}},
     {"SECRET"}},
};

TEST(ArticleBeads, LeaveTheirRing)
{
    support::expectFound(cases);
}

} // namespace
