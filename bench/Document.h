// The document under test, as the programs set it up on this system.
#pragma once

#include "bench/Measure.h"
#include "document/VornSrcObj.h"
#include "platform/system/SequentialFiles.h"
#include "platform/text/SingleByteCodePage.h"

#include <string>

namespace tessaly {

class BenchDocument {
public:
    // An empty document.
    BenchDocument();

    // One that was loaded from `path`, which must succeed.
    explicit BenchDocument(const std::string& path);

    VornSrcObj& operator*() { return mDocument; }
    VornSrcObj* operator->() { return &mDocument; }

private:
    SystemFiles mFiles;
    SingleByteCodePage mCodePage;
    VornSrcObj mDocument;
};

enum class WriteOperation { Save, Generate };

// Writes the document to `path`, which must succeed, and removes the file again. The seconds and the bytes of the
// writing alone.
Outcome MeasureWrite(VornSrcObj& document, WriteOperation operation, const std::string& path);

} // namespace tessaly
