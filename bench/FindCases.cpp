// Finding a text in all of a document, which must be there while the user still looks at the key.
#include "bench/Cases.h"
#include "bench/Document.h"
#include "bench/Measure.h"
#include "ui/FindEverywhere.h"

#include <string>

namespace tessaly {

namespace {

constexpr std::size_t FunctionCount = 1'000;
constexpr std::size_t FunctionSize = 10'000; // bytes: 10 MB together

std::string Body(const std::string& name) {
    std::string body = "void " + name + "(void)\n{\n";
    while (body.size() < FunctionSize) {
        body += "    Print(\"%d of %d frames were sent.\\n\", sent, wanted); /* pr\xC3\xBC"
                "fen */\n";
    }
    return body + "    HalfPeriod = 500;\n}";
}

Outcome MeasureEverywhere(FindOptions options) {
    BenchDocument document;
    for (std::size_t number = 0; number < FunctionCount; ++number) {
        const std::string name = "Function" + std::to_string(number);
        document->AddFunction(name, "", Body(name));
    }
    const Stopwatch watch;
    const FoundPlaces found = FindEverywhere(*document, {}, "HalfPeriod", options, FunctionCount);
    const double seconds = watch.Seconds();
    Check(found.count == FunctionCount && found.places.size() == FunctionCount, "a place is missing");
    return {.seconds = seconds, .items = static_cast<std::int64_t>(found.count)};
}

} // namespace

void AddFindCases() {
    AddCase("find/any-case", 0, [] { return MeasureEverywhere({}); });
    AddCase("find/match-case", 0, [] { return MeasureEverywhere({.isCaseSensitive = true}); });
}

} // namespace tessaly
