// The headers that a program block includes, looked for where the compiler finds them, and the names in them.
#pragma once

#include "platform/system/SequentialFiles.h"
#include "platform/text/CodePage.h"
#include "syntax/CDeclarations.h"

#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

class Headers {
public:
    // Both must outlive it. A header that is not UTF-8 is read in the code page.
    Headers(SequentialFiles& files, const CodePage& codePage) : mFiles(files), mCodePage(codePage) {}

    // What the compiler goes by. Folders of headers are in the file of the batch file's name with ".includes" behind
    // it, one a line; relative ones count from the batch file's folder, blank lines and those with "#" in front do not.
    // Then comes the folder of the document. What is included in quotes is looked for beside the including file first.
    struct Places {
        std::string compBat; // the beginning of a command line: the batch file may be in double quotes
        std::string cFile;
        std::string document; // "" for one without a name

        bool operator==(const Places&) const = default;
    };

    // What the files declare that IncludedNames gives, and all that these include. What is not there, cannot be read or
    // is too large has no names. Files are read once, until LookAgain. Good until the next call.
    std::span<const CName> Names(const std::vector<std::string>& included, const Places& places);

    // The files may be others now: those that are get read anew when they are asked for.
    void LookAgain() { mIsCurrent = false; }

private:
    struct Header {
        std::string text;
        std::vector<CName> names;
        std::vector<std::string> included;
    };

    struct Search {
        std::vector<std::string> folders;
        std::set<std::string> seen;
        std::size_t room = 0; // in bytes
    };

    std::vector<std::string> FoldersOf(const Places& places);
    std::string Find(const std::string& included, const std::string& beside, const Search& search) const;
    const Header& Read(const std::string& path, std::size_t room);
    void Add(const std::vector<std::string>& included, const std::string& beside, Search& search);

    SequentialFiles& mFiles;
    const CodePage& mCodePage;
    std::map<std::string, Header> mHeaders; // by path
    std::vector<std::string> mIncluded;
    Places mPlaces;
    std::vector<CName> mNames;
    bool mIsCurrent = false;
};

} // namespace tessaly
