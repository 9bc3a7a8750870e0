// The list of names that comes up while the user types, which must be there before the next key.
#include "bench/Cases.h"
#include "bench/Document.h"
#include "bench/Measure.h"
#include "bench/TestData.h"
#include "editing/Completion.h"
#include "editing/ParameterHint.h"
#include "platform/text/Utf16.h"
#include "ui/Names.h"

namespace tessaly {

namespace {

constexpr std::int32_t FunctionCount = 1'000;
constexpr std::size_t LineCount = 10'000;

// Lines that are alike, and one at the end.
class LongText final : public TextLines {
public:
    explicit LongText(std::u16string last) : mLast(std::move(last)) {}

    std::size_t Count() const override { return LineCount; }
    std::u16string Line(std::size_t index) const override {
        return index + 1 < LineCount ? u"    int sent = SendFrame(&frame, 1); // the answer" : mLast;
    }
    CLineState StateBefore(std::size_t /*index*/) const override { return CLineState::Code; }
    Place End() const { return {LineCount - 1, mLast.size()}; }

private:
    std::u16string mLast;
};

struct Bench {
    explicit Bench(const std::string& path) : document(path) {}

    KnownNames Known(const LongText& text) {
        return names.At(text, text.End(), *document, "events/OnKey", {TESSALY_KIT "/compile.sh", "", ""});
    }

    BenchDocument document;
    SystemFiles files;
    SingleByteCodePage codePage{Windows1252HighHalf()};
    Names names{files, codePage};
};

Outcome MeasureList(const std::string& path, bool isChanged) {
    Bench bench(path);
    const LongText text(u"    sen");
    bench.Known(text);
    if (isChanged) {
        bench.document->AddFunction("AddedLast", "", "void AddedLast(void)\n{\n}");
    }
    const Stopwatch watch;
    const std::optional<Completion> list = CompletionAt(text, text.End(), bench.Known(text));
    const double seconds = watch.Seconds();
    Check(list && list->names.front()->name == "sent", "the list lacks a name");
    return {.seconds = seconds, .items = static_cast<std::int64_t>(list->names.size())};
}

Outcome MeasureHint(const std::string& path) {
    Bench bench(path);
    const LongText text(u"    SendFrame(&frame, ");
    bench.Known(text);
    const Stopwatch watch;
    const std::optional<ParameterHint> hint = ParameterHintAt(text, text.End(), bench.Known(text));
    const double seconds = watch.Seconds();
    Check(hint && hint->begin > 0, "there is no hint");
    return {.seconds = seconds, .items = 1};
}

} // namespace

void AddCompletionCases(const BenchFiles& files) {
    const std::string path = files.disk + "/completion.PSF";
    RunInChild([path] {
        WriteGrowthPsf(path, FunctionCount, NameOrder::Random);
        return Outcome();
    });
    AddCase("complete/list", 0, [path] { return MeasureList(path, false); });
    AddCase("complete/changed", 0, [path] { return MeasureList(path, true); });
    AddCase("complete/hint", 0, [path] { return MeasureHint(path); });
}

} // namespace tessaly
