#include "VantoraApp/CActionUtils.h"

#include <cstdlib>
#include <fuzzer/FuzzedDataProvider.h>
#include <iostream>

namespace {

void require(bool holds, const char* law)
{
    if (!holds) {
        std::cerr << "broken: " << law << '\n';
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzedDataProvider given(data, size);
    const int pageCount = given.ConsumeIntegralInRange(0, 100000);
    const bool leaveOutOdd = given.ConsumeBool();
    const bool leaveOutEven = given.ConsumeBool();
    const std::string bytes = given.ConsumeRemainingBytesAsString();
    const QString text = QString::fromUtf8(bytes.data(), static_cast<int>(bytes.size()));
    CActionUtils::ValidatePageRange(text, true);
    CActionUtils::ValidateSplitPageRange(text);
    QList<int> pages;
    CActionUtils::GetPageList(text, pageCount, leaveOutOdd, leaveOutEven, &pages);
    for (int i = 0; i < pages.size(); ++i) {
        const int page = pages[i];
        require(i == 0 || pages[i - 1] < page, "pages ascend and are not repeated");
        require(page <= pageCount, "no page lies behind the last one");
        require(!leaveOutOdd || page % 2 == 0, "odd pages are left out where asked");
        require(!leaveOutEven || page % 2 != 0, "even pages are left out where asked");
    }
    QList<int> runs;
    CActionUtils::CollectPageList(&pages, &runs);
    int left = pages.size();
    for (int run = 0; run < runs.size(); run += 2) {
        left -= runs[run + 1];
        require(left >= 0 && pages[left] == runs[run], "runs are those of the pages, from the end");
    }
    require(left == 0, "every page is in a run");
    return 0;
}
