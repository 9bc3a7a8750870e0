// What a PSF file holds, and how it is written. The writer is not the exact mirror of the reader: a value that is saved
// and loaded again has gained a CR LF, kept on purpose.
#pragma once

#include "document/EventTable.h"
#include "document/FuncObject.h"
#include "document/SharedText.h"

#include <array>
#include <string>

namespace tessaly {

struct PsfContent {
    std::string references;
    std::array<SharedText, EventCount> eventTexts;
    FuncObject functions;
};

// How a file is written: with all texts as they are held, or without the line breaks at their ends and those of the
// stored prototypes, so that saves without an edit add nothing to it.
enum class PsfForm { AsHeld, Normal };

} // namespace tessaly
