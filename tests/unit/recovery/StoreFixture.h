// A window's store over files in memory, with two folders, and what the window holds.
#pragma once

#include "document/Members.h"
#include "recovery/KeptDocuments.h"
#include "recovery/RecoveryStore.h"
#include "tests/desktop/CountedFiles.h"
#include "tests/desktop/PrivateFiles.h"
#include "tests/unit/document/MemoryDocument.h"

#include <gtest/gtest.h>

namespace tessaly {

class StoreTest : public testing::Test, public MemoryDocument {
protected:
    static constexpr const char* First = "/state/recovery";
    static constexpr const char* Second = "/tmp/tessaly-1";
    static constexpr const char* File = "/home/Blink.PSF";
    static constexpr std::uint64_t Gone = 7;

    StoreTest() {
        own.processes[1] = "now";
        document.AddFunction("Blink", "void Blink()", "void Blink()\r\n{\r\n}");
        document.SaveFile(File);
    }

    RecoveryHost Host(const ProcessMark& process = {1, "now"}) {
        return {own,   counted, {First, Second}, process, [this] { return clock += 1000; }, [this] { return watch; },
                "1252"};
    }

    // What the window holds when `text` stands in the pane, where the member `item` is shown.
    WindowContent Holding(std::string_view text, const std::string& item = "functions/Blink") {
        WindowContent content{document, item, text};
        content.caret = 3;
        content.path = File;
        content.file = MarkOfFile(files, File);
        return content;
    }

    // The function's text in a copy.
    std::string BlinkIn(const Copy& copy) {
        VornSrcObj loaded(files, codePage);
        EXPECT_EQ(LoadCopy(files, copy, loaded), Status::Done);
        std::string prototype;
        std::string code;
        loaded.GetFunction("Blink", prototype, code);
        return code;
    }

    // The text of the newest copy, "" when there is none.
    std::string NewestText() {
        const std::vector<Copy> copies = store.Copies();
        return copies.empty() ? "" : BlinkIn(copies.front());
    }

    // A store of a program that has ended since.
    RecoveryStore Ended(std::uint64_t id = Gone) { return RecoveryStore(Host({id, "then"})); }

    memory::Faults faults;
    memory::PrivateFiles own{faults, files};
    memory::CountedFiles counted{faults, files};
    std::int64_t clock = 1'700'000'000'000;
    std::int64_t watch = 0;
    RecoveryStore store{Host()};
};

} // namespace tessaly
