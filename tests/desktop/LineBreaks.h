// A shown text with its line breaks, for a pane that does not tell which breaks an edit touched.
#pragma once

#include "platform/text/LineBreaks.h"

namespace tessaly::memory {

std::size_t CountBreaks(std::string_view text);

// In place of `removed` stands `added`, from `start` on, in bytes.
struct Difference {
    std::size_t start = 0;
    std::string removed;
    std::string added;
};

class LineBreaks {
public:
    // Takes a new text with any breaks: CR LF, a lone LF, a lone CR. Without memory for it the old one stays, and
    // std::bad_alloc is thrown.
    void Set(std::string_view text);

    // The text for the control, every break a single LF.
    const std::string& Shown() const { return mShown; }

    // Tells that the control now shows `shown`, with breaks as single LFs. To be called after every change by the
    // user. What stands at the front and at the end as before keeps its breaks; every break between is CR LF. The texts
    // do not tell which of two neighbouring breaks was added or removed. The first counts as the old one.
    // Returns in what the texts differ; no character is taken apart.
    Difference Edit(std::string_view shown);

    // The text with its breaks: exactly what was set, if nothing was edited.
    std::string Text() const { return mBreaks.Apply(mShown); }

private:
    std::string mShown;
    BreakList mBreaks;
};

} // namespace tessaly::memory
