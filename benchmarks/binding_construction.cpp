#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"

#include <benchmark/benchmark.h>
#include <string>

using Binding = KarvelPDFLibraryCPDylibCPP1311;

namespace {

std::wstring path()
{
    const std::string bytes = PDF_LIBRARY;
    return {bytes.begin(), bytes.end()};
}

void constructAndDestroy(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        const Binding binding(path());
        if (!binding.LibraryLoaded()) {
            state.SkipWithError("the PDF library is not complete");
            break;
        }
    }
    state.SetItemsProcessed(state.iterations());
}

/// A binding that opens the library and closes it again, as the font picker does.
void LoadAndConstruct(benchmark::State& state)
{
    constructAndDestroy(state);
}

/// A further binding while the library is open: 859 lookups and a new instance.
void ConstructWhileOpen(benchmark::State& state)
{
    const Binding first(path());
    constructAndDestroy(state);
}

void CallOperation(benchmark::State& state)
{
    Binding binding(path());
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(binding.LastErrorCode());
    }
}

BENCHMARK(LoadAndConstruct)->Unit(benchmark::kMicrosecond);
BENCHMARK(ConstructWhileOpen)->Unit(benchmark::kMicrosecond);
BENCHMARK(CallOperation)->Unit(benchmark::kNanosecond);

} // namespace

BENCHMARK_MAIN();
