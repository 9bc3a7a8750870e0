// A PSF file: its content, its reader and its writer. The writer is not the exact mirror of the reader: a value that is
// saved and loaded again has gained a CR LF, kept on purpose.
#pragma once

#include "document/EventTable.h"
#include "document/FuncObject.h"
#include "document/SharedText.h"

#include <array>
#include <string>

namespace tessaly {

class CodePage;
class EncodedOutput;
class InputFile;
class PsfReadObserver;

struct PsfContent {
    std::string references;
    std::array<SharedText, EventCount> eventTexts;
    FuncObject functions;
};

// Reads the whole file into `content`, which must have no functions, and closes it. What the file lacks keeps its
// value. True when the end tag ended an event's text. Throws on unreadable data and on a NumFuncs= value that is no
// number; what was read until then stays.
bool ReadPsf(InputFile& file, const CodePage& codePage, PsfContent& content, PsfReadObserver& observer);

// How a file is written: with all texts as they are held, or without the line breaks at their ends and those of the
// stored prototypes, so that saves without an edit add nothing to it.
enum class PsfForm { AsHeld, Normal };

// Writes a whole file. Throws what `output` throws.
void WritePsf(const PsfContent& content, EncodedOutput& output, PsfForm form = PsfForm::AsHeld);

} // namespace tessaly
