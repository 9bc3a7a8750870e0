// The reader's reports on a file: each call is a line of text, with the number of the line in the file.
#include "document/PsfReadObserver.h"

#include "tests/unit/document/MemoryDocument.h"
#include "tests/unit/document/PsfBuilder.h"

#include <gtest/gtest.h>
#include <vector>

namespace tessaly {
namespace {

class Transcript final : public PsfReadObserver {
public:
    explicit Transcript(const std::string& bytes) : mBytes(bytes) {}

    void Tag(PsfLine line) override { Add("tag", line); }
    void Count(PsfLine value) override { Add("count", value); }
    void Names(PsfLine value) override { Add("names", value); }
    void Function(PsfStep step, std::int32_t index, PsfLine line) override { Add(Step("function", step, index), line); }
    void Event(PsfStep step, std::int32_t index, PsfLine line) override { Add(Step("event", step, index), line); }
    void Ignored(PsfLine line) override { Add("ignored", line); }

    std::vector<std::string> calls;

private:
    static std::string Step(const std::string& section, PsfStep step, std::int32_t index) {
        const char* const steps[] = {"header", "prototype", "text", "ended", "lost"};
        return section + " " + std::to_string(index) + " " + steps[static_cast<int>(step)];
    }

    void Add(const std::string& what, PsfLine line) {
        const std::string before = mBytes.substr(0, static_cast<std::size_t>(line.offset));
        EXPECT_TRUE(before.ends_with("\r\n")) << "not where a line begins: " << line.text;
        std::size_t number = 1;
        for (std::size_t end = 0; (end = before.find("\r\n", end)) != std::string::npos; end += 2) {
            ++number;
        }
        calls.push_back(std::to_string(number) + " " + what + ": " + std::string(line.text));
    }

    const std::string& mBytes;
};

using Calls = std::vector<std::string>;

Calls CallsOf(const std::string& bytes) {
    MemoryDocument memory;
    Transcript transcript(bytes);
    memory.Load(bytes, &transcript);
    return transcript.calls;
}

// Only the calls behind the head, which has six lines.
Calls CallsBehindHead(const std::string& bytes) {
    Calls calls = CallsOf(PsfHead() + bytes);
    EXPECT_GE(calls.size(), 2U);
    calls.erase(calls.begin(), calls.begin() + 2);
    return calls;
}

TEST(PsfReadObserverTest, AGoodFileIsToldSectionBySection) {
    const Calls calls = CallsOf(PsfHead("int x;\r\n[no tag]") +
                                Lines({"NumFuncs= 2", "FuncNames=A,B", "[FuncCode]", "[A]", "ProtoType=p", "q",
                                       "FuncBody=a", "}", "[B]", "ProtoType=", "FuncBody=b", "[EventCode]", "[OnError]",
                                       "FuncBody=e", "[OnFrame]", "FuncBody=f", "[EndPSF]", "behind"}));
    EXPECT_EQ(calls, (Calls{"4 tag: [GVars]",
                            "7 tag: [GFuncs]",
                            "8 count:  2",
                            "9 names: A,B",
                            "10 tag: [FuncCode]",
                            "11 function 0 header: [A]",
                            "12 function 0 prototype: ProtoType=p",
                            "14 function 0 text: FuncBody=a",
                            "16 function 0 ended: [B]",
                            "16 function 1 header: [B]",
                            "17 function 1 prototype: ProtoType=",
                            "18 function 1 text: FuncBody=b",
                            "19 tag: [EventCode]",
                            "19 function 1 ended: [EventCode]",
                            "20 event 0 header: [OnError]",
                            "21 event 0 text: FuncBody=e",
                            "22 event 0 ended: [OnFrame]",
                            "22 event 1 header: [OnFrame]",
                            "23 event 1 text: FuncBody=f",
                            "24 event 1 ended: [EndPSF]"}));
}

TEST(PsfReadObserverTest, LinesThatCountForNothingAreTold) {
    EXPECT_EQ(
        CallsBehindHead(Lines({"one", "NumFuncs= 1", "FuncNames=A", "two", "[FuncCode]", "three", "[A]", "four",
                               "ProtoType=", "FuncBody=", "[EventCode]", "five", "[OnError]", "six", "FuncBody="})),
        (Calls{"7 ignored: one", "8 count:  1", "9 names: A", "10 ignored: two", "11 tag: [FuncCode]",
               "12 ignored: three", "13 function 0 header: [A]", "14 ignored: four",
               "15 function 0 prototype: ProtoType=", "16 function 0 text: FuncBody=", "17 tag: [EventCode]",
               "17 function 0 ended: [EventCode]", "18 ignored: five", "19 event 0 header: [OnError]",
               "20 ignored: six", "21 event 0 text: FuncBody="}));
}

TEST(PsfReadObserverTest, WithoutFunctionsTheirSectionsCountForNothing) {
    EXPECT_EQ(CallsBehindHead(Lines({"NumFuncs= 0", "[FuncCode]", "[A]", "[EventCode]"})),
              (Calls{"7 count:  0", "8 tag: [FuncCode]", "9 ignored: [A]", "10 tag: [EventCode]"}));
}

TEST(PsfReadObserverTest, ACountThatIsNoNumberIsTheLastLine) {
    EXPECT_EQ(CallsBehindHead(Lines({"NumFuncs=", "FuncNames=A"})), (Calls{"7 count: "}));
    EXPECT_EQ(CallsBehindHead(Lines({"NumFuncs=1 FuncNames=A"})), (Calls{"7 count: 1 FuncNames=A"}));
    EXPECT_EQ(CallsBehindHead(Lines({"FuncNames=NumFuncs=1"})), (Calls{"7 count: =NumFuncs=1"}));
}

TEST(PsfReadObserverTest, AFunctionThatDoesNotCountIsLost) {
    const std::string begin = Lines({"NumFuncs= 2", "FuncNames=A,B", "[FuncCode]"});
    const Calls endsAtTag = CallsBehindHead(begin + PsfFunction("A", "a") + Lines({"[EndPSF]", "[EventCode]"}));
    EXPECT_EQ(Calls(endsAtTag.begin() + 6, endsAtTag.end()),
              (Calls{"13 function 0 lost: [EndPSF]", "14 tag: [EventCode]", "14 function 1 ended: [EventCode]"}));
    EXPECT_EQ(CallsBehindHead(begin).back(), "9 function 0 lost: ");
    EXPECT_EQ(CallsBehindHead(begin + "[A]\r\n").back(), "10 function 0 lost: ");
    EXPECT_EQ(CallsBehindHead(begin + Lines({"[A]", "ProtoType="})).back(), "11 function 0 lost: ");
    EXPECT_EQ(CallsBehindHead(begin + PsfFunction("A", "a")).back(), "12 function 0 lost: ");
    EXPECT_EQ(CallsBehindHead(begin + PsfFunction("A", "a") + "[B]\r\n").back(), "13 function 1 lost: ");
}

TEST(PsfReadObserverTest, BehindTheLastOneItsOwnHeaderBeginsOneMore) {
    const Calls function =
        CallsBehindHead(Lines({"NumFuncs= 1", "FuncNames=A", "[FuncCode]"}) + PsfFunction("A", "a") + "[A]\r\n");
    EXPECT_EQ(Calls(function.end() - 2, function.end()),
              (Calls{"13 function 0 ended: [A]", "13 function 1 header: [A]"}));
    const Calls event = CallsBehindHead(Lines({"NumFuncs= 0", "[FuncCode]", "[EventCode]"}) +
                                        PsfEvents(0, EventCount - 1, false) + "[OnMsg]\r\n");
    EXPECT_EQ(Calls(event.end() - 2, event.end()), (Calls{"28 event 8 ended: [OnMsg]", "28 event 9 header: [OnMsg]"}));
}

TEST(PsfReadObserverTest, AfterTheEndTagTheNextEventsGoOnInTheSameText) {
    const Calls calls = CallsBehindHead(Lines({"NumFuncs= 0", "[FuncCode]", "[EventCode]", "[OnError]", "FuncBody=e",
                                               "[EndPSF]", "FuncBody=", "[OnKey]", "FuncBody=k"}));
    EXPECT_EQ(Calls(calls.begin() + 3, calls.end()),
              (Calls{"10 event 0 header: [OnError]", "11 event 0 text: FuncBody=e", "12 event 0 ended: [EndPSF]",
                     "14 event 1 ended: [OnKey]", "14 event 2 header: [OnKey]", "15 event 2 text: FuncBody=k"}));
}

class TwoBytes final : public PsfReadObserver {
public:
    std::size_t KeptSize(std::string_view) override { return 2; }
};

TEST(PsfReadObserverTest, TheDocumentGetsAsMuchOfATextAsIsAskedFor) {
    MemoryDocument memory;
    TwoBytes observer;
    const std::string functions = PsfFunction("A", "first") + PsfFunction("B", "second");
    EXPECT_EQ(memory.Load(PsfHead() + Lines({"NumFuncs= 2", "FuncNames=A,B", "[FuncCode]"}) + functions +
                              "[EventCode]\r\n" + PsfEvents(),
                          &observer),
              Status::Done);
    EXPECT_EQ(memory.Code(0) + memory.Code(1), "fise");
    EXPECT_EQ(memory.EventCode(OnMsgIndex).size(), 2U);
}

} // namespace
} // namespace tessaly
