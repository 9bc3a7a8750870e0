// Any sequence of operations on a document, whose files fail now and then, beside a plain list of functions. Both hold
// the same behind every operation; what fails changes nothing and leaves no file open.
#include "document/VornSrcObj.h"
#include "fuzz/Check.h"
#include "platform/text/CaseFold.h"
#include "platform/text/SingleByteCodePage.h"
#include "tests/desktop/SequentialFiles.h"

#include <algorithm>
#include <cstdint>
#include <fuzzer/FuzzedDataProvider.h>

namespace {

using namespace tessaly;

constexpr const char* NamePieces[] = {"a", "A", "B", "b1", "Main", "main", "", ",", "\xC3\xA4", "\xC3\x84", "["};
constexpr const char* Pieces[] = {"void f()\r\n{\r\n}", "{",  "int x;", "[EndPSF]",     "\r\n[OnKey]\r\n",
                                  "FuncBody=",          "\n", "\r",     "\xE2\x82\xAC", "[GVars]\r\n",
                                  "\r\n[FuncCode]\r\n"};

class Session {
public:
    explicit Session(FuzzedDataProvider& input) : mInput(input) {}

    void Run() {
        Resume();
        while (mInput.remaining_bytes() > 0) {
            switch (mInput.ConsumeIntegralInRange(0, 8)) {
            case 0:
                Add();
                break;
            case 1:
                Update();
                break;
            case 2:
                Delete();
                break;
            case 3:
                mReferences = Text();
                CHECK(mDocument.UpdateVarCode(mReferences) == Status::Done);
                break;
            case 4:
                UpdateEvent();
                break;
            case 5:
                Save();
                break;
            case 6:
                Build();
                break;
            case 7:
                Load();
                break;
            default:
                CHECK(mDocument.Init() == Status::Done);
                Resume();
                break;
            }
            Compare();
        }
    }

private:
    struct Function {
        std::string name, prototype, code;
    };

    std::string Joined(const char* const* pieces, std::size_t count, int most) {
        std::string text;
        for (int i = mInput.ConsumeIntegralInRange(0, most); i > 0; --i) {
            text += pieces[mInput.ConsumeIntegralInRange<std::size_t>(0, count - 1)];
        }
        return text;
    }
    std::string Name() { return Joined(NamePieces, std::size(NamePieces), 2); }
    std::string Text() { return Joined(Pieces, std::size(Pieces), 6); }

    std::vector<Function>::iterator Find(const std::string& name) {
        return std::find_if(mFunctions.begin(), mFunctions.end(), [&](const Function& f) { return f.name == name; });
    }

    void Add() {
        const Function added = {Name(), Text(), Text()};
        const bool collides = std::any_of(mFunctions.begin(), mFunctions.end(), [&](const Function& f) {
            return FoldCase(f.name).starts_with(FoldCase(added.name));
        });
        const Status status = mDocument.AddFunction(added.name, added.prototype, added.code);
        CHECK(status == (collides ? Status::NameCollision : Status::Done));
        if (!collides) {
            mFunctions.push_back(added);
        }
    }

    void Update() {
        const Function changed = {Name(), Text(), Text()};
        const Status status = mDocument.UpdateFunction(changed.name, changed.prototype, changed.code);
        CHECK(status == (mFunctions.empty() ? Status::NotFound : Status::Done));
        if (const auto found = Find(changed.name); found != mFunctions.end()) {
            *found = changed;
        }
    }

    void Delete() {
        const std::string name = Name();
        const bool empty = mFunctions.empty();
        const auto found = Find(name);
        const bool missing = found == mFunctions.end();
        const Status status = mDocument.DeleteFunction(name);
        CHECK(status == (empty ? Status::UnexpectedError : missing ? Status::NotFound : Status::Done));
        if (!missing) {
            mFunctions.erase(found);
        }
    }

    void UpdateEvent() {
        const auto index = mInput.ConsumeIntegralInRange<std::int32_t>(0, EventCount - 1);
        mEvents[static_cast<std::size_t>(index)] = Text();
        CHECK(mDocument.UpdateEventCodeByIndex(index, mEvents[static_cast<std::size_t>(index)]) == Status::Done);
    }

    // Has one of the next calls fail, or none.
    void MayFail(memory::SequentialFiles::Call first, memory::SequentialFiles::Call second) {
        mFiles.readSize = mInput.ConsumeIntegralInRange<std::size_t>(1, 64);
        const memory::SequentialFiles::Call calls[] = {first, second, memory::SequentialFiles::Call::Close};
        mFiles.FailAt(mInput.PickValueInArray(calls), mInput.ConsumeIntegralInRange<std::size_t>(0, 6));
    }

    void Save() {
        mFiles.FailAt(memory::SequentialFiles::Call::Open, 0);
        CHECK(mDocument.SaveFile("whole") == Status::Done);
        MayFail(memory::SequentialFiles::Call::Open, memory::SequentialFiles::Call::Write);
        mFiles.contents.erase("saved");
        const Status status = mDocument.SaveFile("saved");
        CHECK(mFiles.contents["whole"].starts_with(mFiles.contents["saved"]));
        CHECK(status == Status::UnexpectedError || mFiles.contents["whole"] == mFiles.contents["saved"]);
    }

    void Build() {
        mFiles.FailAt(memory::SequentialFiles::Call::Open, 0);
        const bool brace = std::any_of(mFunctions.begin(), mFunctions.end(),
                                       [](const Function& f) { return f.code.starts_with("{"); });
        CHECK(mDocument.BuildCCodeFile("whole") == (brace ? Status::GenerationFailed : Status::Done));
        MayFail(memory::SequentialFiles::Call::Open, memory::SequentialFiles::Call::Write);
        mFiles.contents.erase("built");
        const Status status = mDocument.BuildCCodeFile("built");
        CHECK(mFiles.contents["whole"].starts_with(mFiles.contents["built"]));
        CHECK(status == Status::GenerationFailed || mFiles.contents["whole"] == mFiles.contents["built"]);
    }

    // What was saved is read again; where nothing fails, twice alike.
    void Load() {
        if (!mFiles.contents.contains("saved")) {
            return;
        }
        MayFail(memory::SequentialFiles::Call::Open, memory::SequentialFiles::Call::Read);
        const Status status = mDocument.LoadFile("saved");
        CHECK(status == Status::Done || status == Status::LoadFailed);
        CHECK(mDocument.LoadedOK() == (status == Status::Done));
        mFiles.FailAt(memory::SequentialFiles::Call::Open, 0);
        if (status == Status::Done) {
            VornSrcObj other(mFiles, mCodePage);
            CHECK(other.LoadFile("saved") == Status::Done);
            other.SaveFile("other");
            mDocument.SaveFile("whole");
            CHECK(mFiles.contents["other"] == mFiles.contents["whole"]);
        }
        Resume();
    }

    // Goes on with what the document holds now.
    void Resume() {
        mReferences = mDocument.VarCode();
        for (std::int32_t i = 0; i < EventCount; ++i) {
            mEvents[static_cast<std::size_t>(i)] = mDocument.EventCodeAt(i);
        }
        mFunctions.clear();
        for (std::int32_t i = 0; i < mDocument.GetFunctionCount(); ++i) {
            const FuncObject& functions = mDocument.Functions();
            mFunctions.push_back({std::string(functions.NameAt(i)), std::string(functions.PrototypeAt(i)),
                                  std::string(functions.CodeAt(i))});
        }
    }

    void Compare() {
        CHECK(mFiles.OpenCount() == 0);
        CHECK(mDocument.VarCode() == mReferences);
        for (std::int32_t i = 0; i < EventCount; ++i) {
            CHECK(mDocument.EventCodeAt(i) == mEvents[static_cast<std::size_t>(i)]);
        }
        CHECK(mDocument.GetFunctionCount() == static_cast<std::int32_t>(mFunctions.size()));
        std::int32_t index = 0;
        for (const Function& function : mFunctions) {
            CHECK(mDocument.Functions().NameAt(index) == function.name);
            std::string prototype;
            std::string code;
            CHECK(mDocument.GetFunction(function.name, prototype, code) == Status::Done);
            CHECK(prototype == function.prototype && code == function.code);
            ++index;
        }
    }

    FuzzedDataProvider& mInput;
    memory::SequentialFiles mFiles;
    SingleByteCodePage mCodePage{Windows1252HighHalf()};
    VornSrcObj mDocument{mFiles, mCodePage};
    std::string mReferences;
    std::array<std::string, EventCount> mEvents;
    std::vector<Function> mFunctions;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    Session(input).Run();
    return 0;
}
