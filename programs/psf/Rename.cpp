// psf rename: the function in the list, its section and its stored prototype. Its code is the user's.
#include "platform/text/Ascii.h"
#include "programs/psf/Commands.h"
#include "programs/psf/base/Saving.h"

namespace tessaly::psf {

namespace {

bool IsWordCharacter(char c) {
    return IsLetter(c) || IsDigit(c) || c == '_' || (c & 0x80) != 0;
}

// `text` with the word `newWord` wherever it has the word `oldWord`.
std::string WithWord(std::string_view text, std::string_view oldWord, std::string_view newWord) {
    std::string result;
    for (std::size_t position = 0; position < text.size();) {
        std::size_t end = position;
        while (end < text.size() && IsWordCharacter(text[end])) {
            ++end;
        }
        const std::string_view word = text.substr(position, end - position);
        result += word == oldWord && !word.empty() ? newWord : word;
        if (end < text.size()) {
            result += text[end++];
        }
        position = end;
    }
    return result;
}

// A document in whose table a function has another name, at the same place. The status says why there is none.
Status Renamed(const VornSrcObj& document, const std::string& oldName, const std::string& newName, VornSrcObj& result) {
    const FuncObject& functions = document.Functions();
    result.Init();
    result.UpdateVarCode(document.VarCode());
    bool isFound = false;
    FuncObject others;
    for (std::int32_t i = 0; i < functions.GetCount(); ++i) {
        const bool isIt = functions.NameAt(i) == oldName;
        isFound = isFound || isIt;
        const std::string prototype(functions.PrototypeAt(i));
        const Status status =
            InMemory(result.AddFunction(isIt ? newName : functions.NameAt(i),
                                        isIt ? WithWord(prototype, oldName, newName) : prototype, functions.CodeAt(i)));
        if (status != Status::Done) {
            return status;
        }
        if (!isIt) {
            InMemory(others.AddFunction(functions.NameAt(i), "", ""));
        }
    }
    if (others.FindCollision(newName)) { // it could not be added either
        return Status::NameCollision;
    }
    for (std::int32_t i = 0; i < EventCount; ++i) {
        result.UpdateEventCodeByIndex(i, document.EventCodeAt(i));
    }
    return isFound ? Status::Done : Status::NotFound;
}

} // namespace

int Rename(Session& session, const std::string& file, const std::string& oldName, const std::string& newName) {
    if (!IsFunctionName(newName)) {
        return WrongUsage;
    }
    return ChangeDocument(session, file, [&](VornSrcObj& document) {
        VornSrcObj result = session.NewDocument();
        const Status status = Renamed(document, oldName, newName, result);
        if (status == Status::Done) {
            document.TakeContent(std::move(result));
        } else if (status == Status::NotFound) {
            PrintError(file + ": there is no function \"" + oldName + "\"");
        } else {
            PrintError(file + ": \"" + newName + "\" collides with another function: one name begins with the other");
        }
        return ExitStatus(status);
    });
}

} // namespace tessaly::psf
