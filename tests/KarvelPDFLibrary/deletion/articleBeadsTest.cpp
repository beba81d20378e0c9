#include "SketchCase.h"

namespace {

using support::SketchCase;

std::string bead(const std::string& page, const std::string& before, const std::string& after,
                 const std::string& rest = {})
{
    return "<< /Type /Bead /P @" + page + " /R [0 0 9 9] /V @" + before + " /N @" + after + " " +
           rest + " >>";
}

class ArticleBeads : public support::DeletedFrom {};

TEST_P(ArticleBeads, LeaveTheirRing)
{
    support::expectFound(GetParam());
}

const SketchCase cases[] = {
    {"bead_in_the_middle",
     {{"/B [@b1]", "/B [@b2]", "/B [@b3]"},
      "/Threads [@thread]",
      {{"thread", "<< /Type /Thread /F @b1 /I << /Title (Kept) >> >>"},
       {"b1", bead("p1", "b3", "b2", "/T @thread")},
       {"b2", bead("p2", "b1", "b3", "/X (SECRET)")},
       {"b3", bead("p3", "b2", "b1")}}},
     {2},
     {{"Root/Threads/0/F/P", "page 1"},
      {"Root/Threads/0/F/N/P", "page 2"},
      {"Root/Threads/0/F/N/N/P", "page 1"},
      {"Root/Threads/0/F/V/P", "page 2"},
      {"Root/Threads/0/F/V/V/P", "page 1"}},
     {"SECRET"}},
    {"first_beads_of_a_thread",
     {{"/B [@b1]", "/B @list", "/B [@b3]"},
      "/Threads @threads",
      {{"threads", "[@thread]"},
       {"list", "[@b2]"},
       {"thread", "<< /F @b1 /I << /Title (Kept) >> >>"},
       {"b1", bead("p1", "b3", "b2", "/T @thread /X (SECRET-1)")},
       {"b2", bead("p2", "b1", "b3", "/X (SECRET-2)")},
       {"b3", bead("p3", "b2", "b1")}}},
     {2, 1},
     {{"Root/Threads/0/F/P", "page 1"},
      {"Root/Threads/0/F/N/P", "page 1"},
      {"Root/Threads/0/F/V/P", "page 1"},
      {"Root/Threads/0/F/T/I/Title", "(Kept)"}},
     {"SECRET"}},
    {"thread_that_loses_all_its_beads",
     {{"/B [@b1 @b2]", "/B [@b3]"},
      "/Threads [@thread @other]",
      {{"thread", "<< /F @b1 /I << /Title (SECRET) >> >>"},
       {"b1", bead("p1", "b2", "b2", "/T @thread")},
       {"b2", bead("p1", "b1", "b1")},
       {"other", "<< /F @b3 /I << /Title (Kept) >> >>"},
       {"b3", bead("p2", "b3", "b3", "/T @other")}}},
     {1},
     {{"Root/Threads", "array 1"}, {"Root/Threads/0/I/Title", "(Kept)"}, {"p1/B", "array 1"}},
     {"SECRET"}},
    {"no_thread_left",
     {{"/B [@b1]", ""},
      "/Threads [@thread]",
      {{"thread", "<< /F @b1 /I << /Title (SECRET) >> >>"},
       {"b1", bead("p1", "b1", "b1", "/T @thread")}}},
     {1},
     {{"Root/Threads", "nothing"}},
     {"SECRET"}},
    {"actions_that_lead_to_threads_and_beads_that_go",
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
     {1},
     {{"p1/Annots", "array 2"}, {"p1/Annots/0/A/URI", "(Kept)"}, {"p1/Annots/1/A/D/F/P", "page 1"}},
     {"SECRET"}},
    {"bead_that_its_page_does_not_list",
     {{"", "/B [@b2]"},
      "/Threads [@thread]",
      {{"thread", "<< /F @b1 >>"},
       {"b1", bead("p1", "b2", "b2", "/T @thread /X (SECRET)")},
       {"b2", bead("p2", "b1", "b1")}}},
     {1},
     {{"Root/Threads/0/F/P", "page 1"}, {"Root/Threads/0/F/N/P", "page 1"}},
     {"SECRET"}},
    {"bead_that_does_not_name_its_page",
     {{"/B [@b1]", "/B [@b2]"},
      "/Threads [@thread]",
      {{"thread", "<< /F @b1 >>"},
       {"b1", "<< /N @b2 /V @b2 /T @thread /X (SECRET) >>"},
       {"b2", bead("p2", "b1", "b1")}}},
     {1},
     {{"Root/Threads/0/F/P", "page 1"}, {"Root/Threads/0/F/V/P", "page 1"}},
     {"SECRET"}},
    {"beads_that_lead_nowhere",
     {{"/B [@b1]", "/B [@b2]"},
      "/Threads [@thread]",
      {{"thread", "<< /F @b1 >>"},
       {"b1", "<< /P @p1 /N @b2 /X (SECRET) >>"},
       {"b2", "<< /P @p2 /V @b1 >>"}}},
     {1},
     {{"Root/Threads/0/F/P", "page 1"}, {"Root/Threads/0/F/V", "nothing"}},
     {"SECRET"}},
    {"beads_that_never_come_round",
     {{"/B [@b1 @b2 @b3]", ""},
      "/Threads [@thread]",
      {{"thread", "<< /F @b1 >>"},
       {"b1", bead("p1", "b3", "b2", "/T @thread /X (SECRET)")},
       {"b2", bead("p1", "b1", "b3")},
       {"b3", bead("p1", "b2", "b2")}}},
     {1},
     {{"Root/Threads", "nothing"}},
     {"SECRET"}},
};

INSTANTIATE_TEST_SUITE_P(Deletion, ArticleBeads, testing::ValuesIn(cases),
                         [](const auto& info) { return info.param.name; });

} // namespace
