// Two versions of a document brought together, member by member.
#pragma once

#include "document/VornSrcObj.h"

#include <string>
#include <vector>

namespace tessaly::psf {

// Puts into `result`, a new document, what `ours` and `theirs` made of `base`. Functions that only `theirs` added come
// behind those of `ours`. When `theirs` alone changed the order of functions, that order counts. A name with which
// another one begins stands in front of it, as it must. Where both changed one text it is merged line by line.
// Returns the members whose texts have conflicts, in the order of the document. One that one side deleted and the other
// changed is kept and has one. So has a name that both added with other capitals: the two texts are one member then.
std::vector<std::string> MergeDocuments(const VornSrcObj& base, const VornSrcObj& ours, const VornSrcObj& theirs,
                                        VornSrcObj& result);

} // namespace tessaly::psf
