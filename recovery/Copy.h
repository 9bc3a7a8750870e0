// A copy of a document: an ordinary PSF file with its origin beside it, in a folder of the user's own.
// Only intact ones are ever given out: the origin is whole, and the PSF is the one that the origin was written for.
#pragma once

#include "document/Status.h"
#include "platform/system/CodePages.h"
#include "platform/system/PrivateFiles.h"
#include "recovery/Origin.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

class SequentialFiles;
class VornSrcObj;

// What a window holds: the document, and over it what stands in the pane.
struct WindowContent {
    const VornSrcObj& document; // is not changed
    std::string item;           // the member in the pane, as FindMember takes it; "" for none
    std::string_view paneText;  // its text as it stands there
    std::uint64_t caret = 0;
    std::string path = {};             // the document's file; "" for a document without a name
    std::optional<FileMark> file = {}; // that file when it was loaded or saved
    std::int32_t language = 0;
};

struct Copy {
    std::string path; // of the PSF
    std::string originPath;
    Origin origin;
};

// `bytes` = what a save would write now, with the pane's text in its place; a function that the document does not have
// comes behind its others. Their room is used again. Throws std::bad_alloc.
void GetSavedBytes(const WindowContent& content, std::string& bytes);

// What `content` tells about its origin; the rest keeps its defaults.
Origin OriginOf(const WindowContent& content);

// The paths of the copy STEM in `folder`, whether it is there or not.
Copy CopyAt(const std::string& folder, const std::string& stem);

// Writes `bytes` as STEM.PSF into `folder`, and then the origin, whose `copy` is their mark, as STEM.origin. After an
// error there may be no copy of that name.
std::error_code WriteCopy(PrivateFiles& own, const std::string& folder, const std::string& stem, std::string_view bytes,
                          const Origin& origin, Flushing flushing);

// The same in a folder that MakeFolder made, and into the files of the copy that is there: it costs less.
std::error_code RewriteCopy(PrivateFiles& own, const std::string& folder, const std::string& stem,
                            std::string_view bytes, const Origin& origin, Flushing flushing);

// The intact copy STEM in `folder`.
std::optional<Copy> ReadCopy(SequentialFiles& files, const std::string& folder, const std::string& stem);

// All intact copies in `folder`, the newest first. None where the folder cannot be listed.
std::vector<Copy> ReadCopies(SequentialFiles& files, const PrivateFiles& own, const std::string& folder);

// Sorts by time and number, the newest first.
void SortNewestFirst(std::vector<Copy>& copies);

// Removes both files of a copy.
std::error_code RemoveCopy(PrivateFiles& own, const Copy& copy);

// The code page that a copy was written in; null for the system's, and where this system does not have it.
std::unique_ptr<CodePage> CodePageOf(const Origin& origin);

// Loads `document` from a copy: what SaveFile and LoadFile add to each text is taken off again. LoadFailed, and the
// document as it was, when the copy is damaged by now.
Status LoadCopy(SequentialFiles& files, const Copy& copy, VornSrcObj& document);

// Whether the document that was saved as `bytes` is the one in the file `path`, or the default one with "". `document`
// tells the code page alone. A file that cannot be loaded only is it when it has the same bytes.
bool IsTextOf(SequentialFiles& files, const std::string& path, const std::string& bytes, const VornSrcObj& document);

} // namespace tessaly
