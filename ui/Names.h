// The names that a text of the document may use: its own, those of the other members, and those of the headers.
#pragma once

#include "document/VornSrcObj.h"
#include "editing/Names.h"
#include "ui/Headers.h"

#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

class Names {
public:
    // Both must outlive it.
    Names(SequentialFiles& files, const CodePage& codePage) : headers(files, codePage) {}

    // What is known at `place` of the text of `member` in the pane; see Members. Functions have the prototype that the
    // C file declares for them. Good until the next call.
    KnownNames At(const TextLines& lines, Place place, const VornSrcObj& document, std::string_view member,
                  const Headers::Places& places);

    Headers headers;

private:
    void TakeReferences(std::string text);
    void TakeFunctions(const VornSrcObj& document, std::string_view member);

    std::vector<CName> mOwn;
    std::string mReferencesText;
    std::vector<CName> mReferences;
    std::vector<std::string> mIncluded;
    std::string mPrototypes; // that mFunctions were made of
    std::vector<CName> mFunctions;
};

} // namespace tessaly
