#include "KarvelPDFLibrary/deletion/Synchronize.h"
#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "KarvelPDFLibrary/saving/Save.h"

#include <benchmark/benchmark.h>
#include <ctime>
#include <iostream>

/// deletion_benchmark FILE...: how much of the processor time for deleting every odd page of a
/// document goes into putting right what refers to the pages: the CPU column of the first line, the
/// Time column of the second. make_inputs.py makes documents for it.
namespace {

using namespace karvel;

template <typename Value>
Result<Value> needed(Result<Value> result)
{
    if (!result) {
        std::cerr << "deletion_benchmark: error: " << result.error().text << '\n';
        std::exit(1);
    }
    return result;
}

std::unique_ptr<Document> withoutOddPages(const std::string& path)
{
    auto document = needed(Document::load(*needed(io::openFile(path)), {}));
    const int last = (*document)->pageCount() - 1; // one page has to stay
    for (int page = last % 2 == 0 ? last - 1 : last; page >= 1; page -= 2) {
        needed(pages::deletePages(**document, {page, 1}));
    }
    return std::move(*document);
}

void deleteAndSave(benchmark::State& state, const std::string& path)
{
    saving::SaveOptions options;
    options.objectStreams = saving::ObjectStreams::Keep;
    options.streamData = saving::StreamData::Keep;
    for (auto _ : state) {
        benchmark::DoNotOptimize(needed(saving::toString(*withoutOddPages(path), options)));
    }
}

void putReferencesRight(benchmark::State& state, const std::string& path)
{
    for (auto _ : state) {
        const auto document = withoutOddPages(path);
        const std::clock_t start = std::clock();
        needed(deletion::synchronize(*document, deletion::Degree::Recorded));
        state.SetIterationTime(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    for (int i = 1; i < argc; ++i) {
        const std::string path = argv[i];
        const std::string name = path.substr(path.rfind('/') + 1);
        benchmark::RegisterBenchmark(("load, delete, save " + name).c_str(), deleteAndSave, path)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("of that the references " + name).c_str(), putReferencesRight,
                                     path)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::RunSpecifiedBenchmarks();
}
