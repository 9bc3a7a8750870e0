// The PSF writer. It is not the exact mirror of the reader: every value that is saved and loaded again has
// gained a CR LF, kept on purpose.
#pragma once

namespace tessaly {

class EncodedOutput;
class VornSrcObj;

// Writes the whole document. Throws what `output` throws.
void WritePsf(const VornSrcObj& document, EncodedOutput& output);

} // namespace tessaly
